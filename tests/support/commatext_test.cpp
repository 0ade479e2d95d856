#include "common/printers.h"
#include "support/nstrings.h"

#include <gtest/gtest.h>

using namespace vm20;

namespace {

TEST(CommaText, WritesTheFrameworkFormAndReadsItBack)
{
    const struct { int line; const char *why; QStringList items; QString text; } rows[] = {
        {__LINE__, "plain items are joined bare", {"a", "b", "c"}, "a,b,c"},
        {__LINE__, "a blank or a comma forces quotes", {"a b", "c,d"}, "\"a b\",\"c,d\""},
        {__LINE__, "a control character counts as a blank", {"a\tb"}, "\"a\tb\""},
        {__LINE__, "a single empty item needs visible quotes", {""}, "\"\""},
        {__LINE__, "a trailing empty item ends in a comma", {"a", ""}, "a,"},
        {__LINE__, "an apostrophe is no reason to quote", {"O'Brien", "Straße"}, "O'Brien,Straße"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(testing::Message() << "line " << row.line << ": " << row.why);
        EXPECT_EQ(ListToCommaText(row.items), row.text);
        EXPECT_EQ(ComposeCommaText(row.text), row.items);
    }
}

TEST(CommaText, ReadsHandWrittenTextsAsTheFrameworkDoes)
{
    const struct { int line; const char *why; QString text; QStringList items; } rows[] = {
        {__LINE__, "blanks around items are skipped", "  a , b  ", {"a", "b"}},
        {__LINE__, "an unquoted blank separates items", "a b\r\nc", {"a", "b", "c"}},
        {__LINE__, "a closing quote ends the item; the rest is a new item", "\"ab\"cd", {"ab", "cd"}},
        {__LINE__, "an unterminated quote runs to the end", "\"ab,c", {"ab,c"}},
        {__LINE__, "a leading comma is an empty first item", ",a", {"", "a"}},
        {__LINE__, "blanks only is no item", "   ", {}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(testing::Message() << "line " << row.line << ": " << row.why);
        EXPECT_EQ(ComposeCommaText(row.text), row.items);
    }
}

TEST(NameValueLines, FindTheFirstMatchingNameWithoutCaseAndReplaceInPlace)
{
    QStringList lines{"Plain text", "Name=first", "NAME=second", "Key==x=y", "Änderung=1"};
    EXPECT_EQ(ValueOf(lines, "name"), "first");
    EXPECT_EQ(ValueOf(lines, "key"), "=x=y") << "only the first '=' separates";
    EXPECT_EQ(ValueOf(lines, "äNDERUNG"), "1") << "case folding beyond ASCII";
    EXPECT_FALSE(HasName(lines, "Plain text")) << "a line without '=' names nothing";
    SetValueOf(lines, "nAME", "3");
    SetValueOf(lines, "Empty", "");
    EXPECT_EQ(lines, (QStringList{"Plain text", "nAME=3", "NAME=second", "Key==x=y", "Änderung=1", "Empty="}));
}

} // namespace
