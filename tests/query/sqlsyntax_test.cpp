// The stored integer form of the options and the enumeration names.
#include "common/printers.h"
#include "query/sqlsyntax.h"

#include <gtest/gtest.h>

using namespace vm20;

namespace {

// The stored integer form is a file format: each option keeps its bit.
TEST(TSQLOptionsTest, StoresEachOptionAsItsFixedBitAndDropsTheOthers)
{
    const struct { TSQLOption option; int stored; } rows[] = {
        {soSelectDistinct, 2}, {soQuoteAliases, 8}, {soBracketJoins, 16}, {soBracketConditions, 32},
        {soSortByNames, 64},
    };
    TSQLOptions all;
    for (const auto &row : rows) {
        EXPECT_EQ(SQLOptionsToInt({row.option}), row.stored) << row.stored;
        EXPECT_EQ(IntToSQLOptions(row.stored), TSQLOptions{row.option}) << row.stored;
        all.include(row.option);
    }
    EXPECT_EQ(SQLOptionsToInt(all + TSQLOptions{soASCIIRFields, soFilter}), 122) << "two options are never stored";
    EXPECT_EQ(IntToSQLOptions(127), all);
    EXPECT_EQ(IntToSQLOptions(1 | 4 | 128), TSQLOptions());
}

TEST(TSQLSyntaxTest, NamesReadBackWithoutRegardToCase)
{
    EXPECT_EQ(SQLOptionToStr(soBracketJoins), "soBracketJoins");
    EXPECT_EQ(StrToSQLOption("SOFILTER"), int(soFilter));
    EXPECT_EQ(SQLSyntaxToStr(ssNexusDB), "ssNexusDB");
    for (int i = 0; i < SQLSyntaxCount; ++i)
        EXPECT_EQ(StrToSQLSyntax(SQLSyntaxToStr(TSQLSyntax(i)).toLower()), i);
    EXPECT_EQ(StrToSQLSyntax("ssSQL3"), -1);
}

} // namespace
