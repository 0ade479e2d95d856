#pragma once
// Pure placement rules of the condition panel's rows: numbers in, rectangles
// out, so that they can be checked without a screen. Coordinates are the
// panel viewport's pixels.
#include <QPoint>
#include <QRect>
#include <QSize>

#include <array>
#include <utility>

namespace vm20 {

// The five control slots of a row, by index.
enum TRowSlot : int {
    rsFirstLabel = 0,
    rsSecondLabel = 1,
    rsFirstValue = 2,
    rsSecondValue = 3,
    rsMiddleLabel = 4
};
inline constexpr int RowSlotCount = 5;
// The order in which the slots stand in a row.
inline constexpr std::array<int, RowSlotCount> SlotDisplayOrder = {rsFirstLabel, rsSecondLabel, rsFirstValue,
                                                                   rsMiddleLabel, rsSecondValue};

// Where the logical-operator label stands in a row.
enum TLogOpPlace { lopNone, lopBefore, lopAfter };

struct TRowPlacement
{
    int headerTop = 5;
    int headerLeft = 5;
    int tabSpace = 20;
    int rowSpace = 3;
    int elemSpace = 5;
    // Display number (the root is 0 unless it is hidden) and nesting depth.
    int rowNum = 0;
    int depth = 0;
    bool root = false;
    // The button's natural size; a button narrower than high is widened.
    QSize button;
    bool hideButton = false;  // aoHideRowButtons on a row that is not the root
    TLogOpPlace logOp = lopNone;
    int logOpWidth = 0;
    // Widths of the slotRects; -1 for an empty slot.
    std::array<int, RowSlotCount> slotWidths = {-1, -1, -1, -1, -1};
    int rowHeight = 0;        // height of the panel font's "A" + 1
    QSize checkBox;
    QPoint scroll;            // the scroll bars' positions
    bool rightToLeft = false;
    int clientWidth = 0;
};

struct TRowGeometry
{
    QRect button;
    QRect logOp;              // empty when the row has no logical-operator label
    std::array<QRect, RowSlotCount> slotRects;  // empty for an empty slot
    QRect checkBox;
};

// The unscrolled top-left corner of a row.
int RowTop(int headerTop, int rowNum, int buttonHeight, int rowSpace);
int RowLeft(int headerLeft, int tabSpace, int depth);

TRowGeometry PlaceRowGeometry(const TRowPlacement &p);

// The display positions [first, last) of the rows whose band meets a
// viewport `viewHeight` high scrolled down by `scrollY`, out of `count` rows
// standing one under the other from `headerTop`.
std::pair<int, int> RowsInView(int count, int headerTop, int buttonHeight, int rowSpace, int scrollY, int viewHeight);

// The band a row highlights: the panel's whole width, 2 pixels beyond the
// button above and below.
QRect RowRect(const QRect &button, int panelWidth);

// The "click to add" label under the last row.
struct TAddRowPlacement
{
    QRect lastButton;         // the last shown row's button
    int labelWidth = 0;
    bool rootEmptyAndHidden = false;
    int headerTop = 5;
    int rowSpace = 3;
    bool rightToLeft = false;
};
QPoint PlaceAddRowLabel(const TAddRowPlacement &p);

} // namespace vm20
