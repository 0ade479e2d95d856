#include "common/printers.h"
#include "support/nstrings.h"

#include <gtest/gtest.h>

using namespace vm20;

namespace {

struct CommaRow
{
    int line;
    const char *why;
    QStringList items;
    QString text;
};

// Items and the exact text they are written as; every row must also read back.
const CommaRow WrittenRows[] = {
    {__LINE__, "plain items are joined bare", {"a", "b", "c"}, "a,b,c"},
    {__LINE__, "a blank forces quotes", {"a b", "c"}, "\"a b\",c"},
    {__LINE__, "a comma forces quotes", {"a,b"}, "\"a,b\""},
    {__LINE__, "inner quotes are doubled", {"say \"hi\""}, "\"say \"\"hi\"\"\""},
    {__LINE__, "a tab is a blank too", {"a\tb"}, "\"a\tb\""},
    {__LINE__, "empty items between others stay bare", {"a", "", "b"}, "a,,b"},
    {__LINE__, "a single empty item needs visible quotes", {""}, "\"\""},
    {__LINE__, "a trailing empty item ends in a comma", {"a", ""}, "a,"},
    {__LINE__, "a leading empty item starts with a comma", {"", "a"}, ",a"},
    {__LINE__, "an apostrophe is no reason to quote", {"O'Brien"}, "O'Brien"},
    {__LINE__, "non-Latin text passes untouched", {"Straße", "日本"}, "Straße,日本"},
    {__LINE__, "no items, no text", {}, ""},
};

class CommaTextTest : public ::testing::TestWithParam<CommaRow>
{
};

TEST_P(CommaTextTest, WritesTheExpectedTextAndReadsItBack)
{
    const CommaRow &row = GetParam();
    SCOPED_TRACE(testing::Message() << "line " << row.line << ": " << row.why);
    EXPECT_EQ(ListToCommaText(row.items), row.text);
    EXPECT_EQ(ComposeCommaText(row.text), row.items);
}

INSTANTIATE_TEST_SUITE_P(Rows, CommaTextTest, ::testing::ValuesIn(WrittenRows));

TEST(CommaText, ReadsHandWrittenTextsAsTheFrameworkDoes)
{
    const struct {
        int line;
        const char *why;
        QString text;
        QStringList items;
    } rows[] = {
        {__LINE__, "leading and trailing blanks are skipped", "  a , b  ", {"a", "b"}},
        {__LINE__, "an unquoted blank separates items", "a b", {"a", "b"}},
        {__LINE__, "a comma after blanks is still one separator", "a ,b", {"a", "b"}},
        {__LINE__, "a comma then blanks then the end adds nothing", "a, ", {"a"}},
        {__LINE__, "a closing quote ends the item; the rest is a new item", "\"ab\"cd", {"ab", "cd"}},
        {__LINE__, "an unterminated quote runs to the end", "\"ab,c", {"ab,c"}},
        {__LINE__, "two commas keep an empty item", "a,,b", {"a", "", "b"}},
        {__LINE__, "quoted empties are items", "\"\",\"\"", {"", ""}},
        {__LINE__, "a line break is a blank", "a\r\nb", {"a", "b"}},
        {__LINE__, "blanks only is no item", "   ", {}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(testing::Message() << "line " << row.line << ": " << row.why);
        EXPECT_EQ(ComposeCommaText(row.text), row.items);
    }
}

TEST(CommaText, RoundTripsAwkwardItemsInBulk)
{
    const QString pieces[] = {"", " ", ",", "\"", "\"\"", "a", " a", "a ", "x,y", "'", "\t", "é"};
    for (const QString &first : pieces) {
        for (const QString &second : pieces) {
            const QStringList items{first, second, first + second};
            EXPECT_EQ(ComposeCommaText(ListToCommaText(items)), items) << ListToCommaText(items).toStdString();
        }
    }
}

TEST(NameValueLines, LooksUpTheFirstLineWhoseNameMatchesWithoutCase)
{
    const QStringList lines{"Plain text", "Name=first", "NAME=second", "Key==x=y", "=anonymous", "Änderung=1"};
    EXPECT_EQ(ValueOf(lines, "name"), "first");
    EXPECT_EQ(ValueOf(lines, "key"), "=x=y") << "only the first '=' separates";
    EXPECT_EQ(ValueOf(lines, ""), "anonymous");
    EXPECT_EQ(ValueOf(lines, "äNDERUNG"), "1") << "case folding beyond ASCII";
    EXPECT_FALSE(HasName(lines, "Plain text")) << "a line without '=' names nothing";
    EXPECT_EQ(IndexOfName(lines, "missing"), -1);
}

TEST(NameValueLines, SettingReplacesInPlaceOrAppendsAndKeepsEmptyValues)
{
    QStringList lines{"A=1", "B=2"};
    SetValueOf(lines, "b", "3");
    SetValueOf(lines, "C", "");
    EXPECT_EQ(lines, (QStringList{"A=1", "b=3", "C="}));
}

} // namespace
