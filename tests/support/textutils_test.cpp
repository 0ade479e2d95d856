#include "common/printers.h"
#include "support/nstrings.h"

#include <gtest/gtest.h>

using namespace vm20;

namespace {

TEST(Format, FillsPlaceholdersInOrder)
{
    const struct { int line; const char *why; QString pattern; std::initializer_list<QVariant> args; QString expected;
    } rows[] = {
        {__LINE__, "text and number", "No path between table \"%s\" and %d", {"A", 7}, "No path between table \"A\" and 7"},
        {__LINE__, "percent escaped", "100%% of %s", {"x"}, "100% of x"},
        {__LINE__, "missing arguments leave the placeholder", "%s-%s", {"a"}, "a-%s"},
        {__LINE__, "unknown directives stay as written", "%x %s", {"a"}, "%x a"},
        {__LINE__, "a lone percent at the end", "50%", {}, "50%"},
        {__LINE__, "arguments are not re-scanned", "%s %s", {"%s", "b"}, "%s b"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(testing::Message() << "line " << row.line << ": " << row.why);
        EXPECT_EQ(Format(row.pattern, row.args), row.expected);
    }
}

TEST(Quoting, DoublesQuotesAndUndoesIt)
{
    EXPECT_EQ(QuotedStr("O'Brien"), "'O''Brien'");
    EXPECT_EQ(QuotedStr("", QLatin1Char('"')), "\"\"");
    const QString samples[] = {"", "'", "''", "a'b'c", "plain"};
    for (const QString &s : samples)
        EXPECT_EQ(DequotedStr(QuotedStr(s)), s);
    EXPECT_EQ(DequotedStr("'open"), "'open") << "unquoted text unchanged";
    EXPECT_EQ(DequotedStr("'"), "'") << "a lone quote is not a quoted empty text";
}

TEST(IsValidIdent, AcceptsLettersDigitsAndUnderscoreOnly)
{
    for (const char *ok : {"a", "_", "Order_1", "Größe", "_9"})
        EXPECT_TRUE(IsValidIdent(QString::fromUtf8(ok))) << ok;
    for (const char *bad : {"", "1a", "a b", "a-b", "a.b", "\"a\"", "x²"})
        EXPECT_FALSE(IsValidIdent(QString::fromUtf8(bad))) << bad;
}

} // namespace
