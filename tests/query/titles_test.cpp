// The titles store: the older title forms.
#include "common/printers.h"
#include "query/titles.h"

#include <gtest/gtest.h>

using namespace vm20;

namespace {

TEST(TQueryTitlesTest, TakesOldTitlesByPositionAndKeepsTextsForEmptyOnes)
{
    TQueryTitles titles;
    titles.LoadOldTitlesFromStrings({"Title0= Show rows where @ apply ", "Title2=", "Title9=Fields:"});
    EXPECT_EQ(titles.GetTitle("ttlFilter"), "Show rows where @ apply");
    EXPECT_EQ(titles.GetTitle("ttlAll"), "all");
    EXPECT_EQ(titles.GetTitle("ttlFields"), "Fields:");
    titles.MergeDFMTitles({"x", "", "alle"});
    EXPECT_EQ(titles.GetTitle("ttlFilter"), "x");
    EXPECT_EQ(titles.GetTitle("ttlBracket"), "@ of the following apply");
    EXPECT_EQ(titles.GetTitle("ttlAll"), "alle");
    titles.LoadDefTitles();
    EXPECT_EQ(titles.Lines(), TQueryTitles::DefaultTitles());
}

} // namespace
