#include "ui/geometry.h"

#include <gtest/gtest.h>

namespace vm20 {
namespace {

TEST(PopupColumns, MaxItemCountCutsEveryTenthItem)
{
    const std::vector<bool> values(25, false);
    const std::vector<bool> breaks = MaxItemCountBreaks(values, 10);
    std::vector<int> at;
    for (std::size_t i = 0; i < breaks.size(); ++i)
        if (breaks[i])
            at.push_back(int(i));
    EXPECT_EQ(ColumnLengths(25, at), (std::vector<int>{10, 10, 5}));
}

TEST(PopupColumns, FitToScreenSplitsByScreenRows)
{
    struct Row { int line; int count; int perColumn; TNPopupSplitType type; std::vector<int> lengths; const char *why; };
    const Row rows[] = {
        {__LINE__, 100, 40, pstBalanced, {34, 34, 32}, "balanced columns come out equally long"},
        {__LINE__, 100, 40, pstFillFirst, {40, 40, 20}, "fill-first fills each column to the screen"},
        {__LINE__, 39, 40, pstBalanced, {39}, "a menu that fits keeps one column"},
        {__LINE__, 80, 40, pstFillFirst, {40, 40}, "an exact fill asks for no empty third column"},
        {__LINE__, 5, 0, pstBalanced, {1, 1, 1, 1, 1}, "a screen shorter than one row still shows one per column"},
    };
    for (const Row &r : rows) {
        SCOPED_TRACE(testing::Message() << "line " << r.line << ": " << r.why);
        EXPECT_EQ(ColumnLengths(r.count, FitToScreenBreaks(r.count, r.perColumn, r.type)), r.lengths);
    }
}

} // namespace
} // namespace vm20
