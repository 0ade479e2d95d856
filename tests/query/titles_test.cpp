// The titles store: defaults and the older title forms.
#include "common/printers.h"
#include "query/titles.h"

#include <gtest/gtest.h>

using namespace vm20;

namespace {

TEST(TQueryTitlesTest, StartsWithTheFiftyEightDefaultLines)
{
    TQueryTitles titles;
    ASSERT_EQ(titles.Lines().size(), 58);
    EXPECT_EQ(titles.Lines()[24], "[Result Fields Editor]");
    EXPECT_EQ(titles.GetTitle("ttlMgsDeleteField"), "Delete Field \"%s\"?");
    EXPECT_EQ(titles.GetTitle("TTLFILTER"), "Choose records where @ of the following apply");
    EXPECT_EQ(titles.GetTitle("ttlNoSuchTitle"), "");
}

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
