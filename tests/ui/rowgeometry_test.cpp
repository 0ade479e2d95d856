#include "ui/rowgeometry.h"

#include <gtest/gtest.h>

namespace vm20 {
namespace {

TRowPlacement Condition(int rowNum, int depth)
{
    TRowPlacement p;
    p.rowNum = rowNum;
    p.depth = depth;
    p.button = QSize(17, 17);
    p.rowHeight = 15;
    p.slotWidths = {40, 30, 20, -1, -1};
    p.checkBox = QSize(13, 13);
    p.clientWidth = 400;
    return p;
}

TEST(RowGeometry, RowsStandWhereNumberAndDepthPutThem)
{
    struct Row { int line; TRowPlacement p; QPoint button; const char *why; };
    TRowPlacement scrolled = Condition(2, 1);
    scrolled.scroll = QPoint(7, 30);
    TRowPlacement root = Condition(0, 0);
    root.root = true;
    root.button = QSize(0, 15);
    TRowPlacement rtl = Condition(2, 1);
    rtl.rightToLeft = true;
    const Row rows[] = {
        {__LINE__, Condition(2, 1), {25, 51}, "row 2 on level 1: 5 + 2 x (17 + 3 + 3), 5 + 20"},
        {__LINE__, Condition(5, 3), {65, 5 + 5 * 23}, "row \"1.2.1\" is indented three tabs"},
        {__LINE__, Condition(0, 1), {25, 5}, "with the root hidden the first row is row 0"},
        {__LINE__, scrolled, {18, 21}, "scroll positions are subtracted"},
        {__LINE__, root, {5, 5}, "the root sits at the header margins"},
        {__LINE__, rtl, {400 - 25 - 5 - 17, 51}, "right to left mirrors the left edge"},
    };
    for (const Row &r : rows) {
        SCOPED_TRACE(testing::Message() << "line " << r.line << ": " << r.why);
        EXPECT_EQ(PlaceRowGeometry(r.p).button.topLeft(), r.button);
    }
    EXPECT_EQ(PlaceRowGeometry(root).button.size(), QSize(15, 15)) << "a captionless root button is square";
}

TEST(RowGeometry, ControlsFollowTheButtonInDisplayOrder)
{
    struct Row { int line; TRowPlacement p; int slot; int left; const char *why; };
    TRowPlacement twoValues = Condition(1, 1);
    twoValues.slotWidths = {40, 30, 20, 25, 10};
    TRowPlacement emptyLead = Condition(1, 1);
    emptyLead.slotWidths = {0, 30, 60, -1, -1};
    TRowPlacement emptyLeadRtl = emptyLead;
    emptyLeadRtl.rightToLeft = true;
    TRowPlacement hidden = Condition(1, 1);
    hidden.hideButton = true;
    TRowPlacement before = Condition(1, 1);
    before.logOp = lopBefore;
    before.logOpWidth = 22;
    const Row rows[] = {
        {__LINE__, Condition(1, 1), rsFirstLabel, 25 + 17 + 5, "the field follows the button"},
        {__LINE__, Condition(1, 1), rsFirstValue, 47 + 40 + 5 + 30 + 5, "the value follows the operator"},
        {__LINE__, twoValues, rsMiddleLabel, 127 + 20 + 5, "the middle text stands between the values"},
        {__LINE__, twoValues, rsSecondValue, 152 + 10 + 5, "the second value comes last"},
        {__LINE__, emptyLead, rsSecondLabel, 47, "an empty leading text takes no gap"},
        {__LINE__, emptyLeadRtl, rsSecondLabel, 400 - 25 - 5 - 17 - 5 - 5 - 30, "right to left it does"},
        {__LINE__, hidden, rsFirstLabel, 25 + 5, "a hidden button leaves only the gap"},
        {__LINE__, before, rsFirstLabel, 47 + 22 + 5, "the logical operator before the condition"},
    };
    for (const Row &r : rows) {
        SCOPED_TRACE(testing::Message() << "line " << r.line << ": " << r.why);
        EXPECT_EQ(PlaceRowGeometry(r.p).slotRects[std::size_t(r.slot)].left(), r.left);
    }
    TRowPlacement after = Condition(1, 1);
    after.logOp = lopAfter;
    after.logOpWidth = 22;
    EXPECT_EQ(PlaceRowGeometry(after).logOp.left(), 127 + 20 + 5) << "the logical operator after the condition";
}

TEST(RowGeometry, CheckBoxesFormOneColumnInTheMargin)
{
    TRowPlacement deep = Condition(4, 3);
    TRowPlacement rtl = Condition(4, 3);
    rtl.rightToLeft = true;
    const QRect box = PlaceRowGeometry(deep).checkBox;
    EXPECT_EQ(box.topLeft(), QPoint(5, 5 + 4 * 23 + 1)) << "left margin, centred on the text line";
    EXPECT_EQ(PlaceRowGeometry(rtl).checkBox.left(), 400 - 5 - 13 - 5);
}

TEST(RowGeometry, AddRowLabelGoesUnderTheLastRow)
{
    struct Row { int line; TAddRowPlacement p; QPoint at; const char *why; };
    const QRect last(45, 74, 20, 17);
    const Row rows[] = {
        {__LINE__, {last, 100, false, 5, 3, false}, {45, 74 + 17 + 3 + 2}, "below the last button"},
        {__LINE__, {last, 100, false, 5, 3, true}, {65 - 100, 96}, "right-aligned to it right to left"},
        {__LINE__, {QRect(), 100, true, 5, 3, false}, {0, 7}, "an empty query with its root hidden"},
    };
    for (const Row &r : rows) {
        SCOPED_TRACE(testing::Message() << "line " << r.line << ": " << r.why);
        EXPECT_EQ(PlaceAddRowLabel(r.p), r.at);
    }
}

} // namespace
} // namespace vm20
