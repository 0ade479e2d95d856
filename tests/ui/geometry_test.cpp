#include "ui/geometry.h"

#include <gtest/gtest.h>

namespace vm20 {
namespace {

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

namespace vm20 {
namespace {

TEST(ListBoxPlacement, DropsBelowTheTextOrOpensUpwardWhenThereIsNoRoom)
{
    struct Row { int line; int top; int listHeight; bool useForm; bool rtl; QRect placed; const char *why; };
    // A label 50 wide at x 100 in a host 400 x 300, text 15 high, list 120 wide.
    const Row rows[] = {
        {__LINE__, 20, 100, false, false, QRect(100, 37, 120, 100), "room below: just under the text"},
        {__LINE__, 20, 100, false, true, QRect(30, 37, 120, 100), "right to left: right edges meet"},
        {__LINE__, 250, 100, false, false, QRect(100, 150, 120, 100), "no room below: ends at the label's top"},
        {__LINE__, 120, 250, false, false, QRect(100, 137, 120, 161), "more room below: stays below, cut short"},
        {__LINE__, 200, 250, false, false, QRect(100, 2, 120, 196), "taller than the room above: fills it"},
        {__LINE__, 20, 100, true, false, QRect(100, 37, 120, 100), "a form host ignores the host's width"},
    };
    for (const Row &r : rows) {
        SCOPED_TRACE(testing::Message() << "line " << r.line << ": " << r.why);
        TListBoxPlacement p;
        p.labelTopLeft = QPoint(100, r.top);
        p.labelWidth = 50;
        p.textHeight = 15;
        p.list = QSize(120, r.listHeight);
        p.availableHeight = 300;
        p.availableWidth = r.useForm ? 0 : 400;
        p.useForm = r.useForm;
        p.rightToLeft = r.rtl;
        EXPECT_EQ(PlaceListBox(p), r.placed);
    }
}

TEST(ListBoxPlacement, WidthIsCutAtTheHostsEdgeOrAtThreeHundredOnAForm)
{
    TListBoxPlacement p;
    p.labelTopLeft = QPoint(300, 10);
    p.textHeight = 15;
    p.list = QSize(500, 50);
    p.availableHeight = 300;
    p.availableWidth = 400;
    EXPECT_EQ(PlaceListBox(p).width(), 98);
    p.useForm = true;
    EXPECT_EQ(PlaceListBox(p).width(), 300);
}

} // namespace
} // namespace vm20
