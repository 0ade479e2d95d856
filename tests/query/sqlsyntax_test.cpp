// The stored integer form of the options and the enumeration names.
#include "common/printers.h"
#include "query/sqlsyntax.h"

#include <gtest/gtest.h>

#include <array>

using namespace vm20;

namespace {

struct OptionRow
{
    TSQLOption option;
    const char *name;
    int stored;   // 0: never stored
};

// One row per option, in ordinal order; the size check keeps it complete.
constexpr std::array<OptionRow, SQLOptionCount> OptionRows = {{
    {soASCIIRFields, "soASCIIRFields", 0},
    {soSelectDistinct, "soSelectDistinct", 2},
    {soQuoteAliases, "soQuoteAliases", 8},
    {soBracketJoins, "soBracketJoins", 16},
    {soBracketConditions, "soBracketConditions", 32},
    {soSortByNames, "soSortByNames", 64},
    {soFilter, "soFilter", 0},
}};

TEST(TSQLOptionsTest, StoresEachOptionAsItsFixedBit)
{
    for (const OptionRow &row : OptionRows) {
        EXPECT_EQ(SQLOptionsToInt({row.option}), row.stored) << row.name;
        EXPECT_EQ(IntToSQLOptions(row.stored).contains(row.option), row.stored != 0) << row.name;
        EXPECT_EQ(SQLOptionToStr(row.option), row.name);
        EXPECT_EQ(StrToSQLOption(QString::fromLatin1(row.name).toUpper()), int(row.option));
    }
}

TEST(TSQLOptionsTest, DropsTheUnstoredOptionsAndBits)
{
    TSQLOptions all;
    for (const OptionRow &row : OptionRows)
        all.include(row.option);
    EXPECT_EQ(SQLOptionsToInt(all), 122);
    EXPECT_EQ(IntToSQLOptions(127),
              TSQLOptions({soSelectDistinct, soQuoteAliases, soBracketJoins, soBracketConditions, soSortByNames}));
    EXPECT_EQ(IntToSQLOptions(1 | 4 | 128), TSQLOptions());
}

TEST(TSQLSyntaxTest, NamesEverySyntax)
{
    constexpr std::array<const char *, SQLSyntaxCount> names = {"ssSQL1", "ssSQL2", "ssOracle", "ssAccess",
                                                                "ssNexusDB"};
    for (int i = 0; i < SQLSyntaxCount; ++i) {
        EXPECT_EQ(SQLSyntaxToStr(TSQLSyntax(i)), names[std::size_t(i)]);
        EXPECT_EQ(StrToSQLSyntax(names[std::size_t(i)]), i);
    }
    EXPECT_EQ(StrToSQLSyntax("ssSQL3"), -1);
}

} // namespace
