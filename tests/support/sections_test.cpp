#include "common/printers.h"
#include "support/nstrings.h"

#include <gtest/gtest.h>

using namespace vm20;

namespace {

const QStringList Text{
    "[Main]",            // 0
    "QueryName=Orders",  // 1
    "Version=3.6",       // 2
    "",                  // 3
    " [ Cond1 ] ",       // 4  blanks around the header and the name
    "Field=1",           // 5
    "[Cond2]",           // 6  a header right after a section ends it
    "Field=2",           // 7
    "  ",                // 8  blank-only line ends the section
    "Stray=1",           // 9  outside any section for the reader
    "[cond2]",           // 10 a second section of the same name
    "Field=late",        // 11
};

TEST(XReadSLSectionValues, ReadsSectionsInOrderAndReturnsWhereTheNextOneMayStart)
{
    const struct { int line; const char *why; int start; QString section; QStringList values; int next; } rows[] = {
        {__LINE__, "an empty line ends the section and is consumed", 0, "Main", {"QueryName=Orders", "Version=3.6"}, 4},
        {__LINE__, "the header line is trimmed and its name compared without case", 4, "COND1", {"Field=1"}, 6},
        {__LINE__, "the next header ends a section and is not consumed", 6, "Cond2", {"Field=2"}, 9},
        {__LINE__, "the search starts at the given line", 9, "Cond2", {"Field=late"}, 12},
        {__LINE__, "a section before the start is not found", 4, "Main", {}, -1},
        {__LINE__, "a negative start reads from the top", -3, "main", {"QueryName=Orders", "Version=3.6"}, 4},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(testing::Message() << "line " << row.line << ": " << row.why);
        QStringList values{"left over"};
        EXPECT_EQ(XReadSLSectionValues(row.start, Text, row.section, values), row.next);
        EXPECT_EQ(values, row.values);
    }
}

TEST(IsSectionHeader, RecognisesOnlyBracketedLines)
{
    QString name;
    EXPECT_TRUE(IsSectionHeader("  [Field:1.SQL] ", &name));
    EXPECT_EQ(name, "Field:1.SQL");
    for (const char *line : {"[Main", "x=[Main]", "["})
        EXPECT_FALSE(IsSectionHeader(line)) << line;
}

TEST(TSectionIndex, FindsSectionsByNameAndKeepsTheFirstOfTwins)
{
    const TSectionIndex index(Text);
    EXPECT_EQ(index.SectionNames(), (QStringList{"Main", "Cond1", "Cond2"}));
    EXPECT_TRUE(index.Contains("cond1"));
    EXPECT_FALSE(index.Contains("Stray"));
    EXPECT_EQ(index.Lines("Main"), (QStringList{"QueryName=Orders", "Version=3.6", ""}));
    EXPECT_EQ(index.Lines("CONd2"), (QStringList{"Field=2", "  ", "Stray=1"}));
    EXPECT_EQ(index.Values("Cond2"), (QStringList{"Field=2", "Stray=1"}));
    EXPECT_EQ(index.Values("Missing"), QStringList());
}

TEST(TSectionIndex, OutlivesTheListItWasBuiltFrom)
{
    const TSectionIndex index = [] { return TSectionIndex(QStringList{"[A]", "x=1"}); }();
    EXPECT_EQ(index.Values("a"), QStringList{"x=1"});
}

} // namespace
