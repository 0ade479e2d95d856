#include "ui/rowgeometry.h"

#include <algorithm>

namespace vm20 {

int RowTop(int headerTop, int rowNum, int buttonHeight, int rowSpace)
{
    return headerTop + rowNum * (buttonHeight + 3 + rowSpace);
}

int RowLeft(int headerLeft, int tabSpace, int depth)
{
    return headerLeft + tabSpace * depth;
}

namespace {

// Lays controls out from a running cursor: rightwards from the row's left,
// or leftwards from its right edge in right-to-left mode.
class Cursor
{
public:
    Cursor(int start, int top, bool rightToLeft) : FX(start), FTop(top), FRtl(rightToLeft) {}

    QRect Place(int width, int height)
    {
        const QRect r(FRtl ? FX - width : FX, FTop, width, height);
        FX += FRtl ? -width : width;
        return r;
    }
    void Skip(int gap) { FX += FRtl ? -gap : gap; }

private:
    int FX;
    int FTop;
    bool FRtl;
};

} // namespace

TRowGeometry PlaceRowGeometry(const TRowPlacement &p)
{
    TRowGeometry g;
    QSize button = p.button;
    if (button.width() < button.height())
        button.setWidth(button.height());
    int top = p.root ? p.headerTop : RowTop(p.headerTop, p.rowNum, button.height(), p.rowSpace);
    int left = p.root ? p.headerLeft : RowLeft(p.headerLeft, p.tabSpace, p.depth);
    top -= p.scroll.y();
    left -= p.scroll.x();
    if (p.rightToLeft)
        left = p.clientWidth - left - 5;

    const int checkTop = top + (p.rowHeight - p.checkBox.height()) / 2;
    const int checkLeft = p.rightToLeft ? p.clientWidth - p.headerLeft - p.checkBox.width() - 5
                                        : p.headerLeft - p.scroll.x();
    g.checkBox = QRect(QPoint(checkLeft, checkTop), p.checkBox);

    Cursor cursor(left, top, p.rightToLeft);
    g.button = cursor.Place(button.width(), button.height());
    if (p.hideButton)
        cursor.Skip(-button.width());
    cursor.Skip(p.elemSpace);
    if (p.logOp == lopBefore) {
        g.logOp = cursor.Place(p.logOpWidth, p.rowHeight);
        cursor.Skip(p.elemSpace);
    }
    for (int slot : SlotDisplayOrder) {
        const int width = p.slotWidths[std::size_t(slot)];
        if (width < 0)
            continue;
        g.slotRects[std::size_t(slot)] = cursor.Place(width, p.rowHeight);
        // An empty leading text takes no gap, except right to left.
        if (slot != rsFirstLabel || width > 0 || p.rightToLeft)
            cursor.Skip(p.elemSpace);
    }
    if (p.logOp == lopAfter)
        g.logOp = cursor.Place(p.logOpWidth, p.rowHeight);
    return g;
}

std::pair<int, int> RowsInView(int count, int headerTop, int buttonHeight, int rowSpace, int scrollY, int viewHeight)
{
    // Row tops grow with the display position: the first position at which
    // a test starts to hold is found by halving.
    const auto firstWhere = [count](const auto &holds) {
        int low = 0;
        int high = std::max(count, 0);
        while (low < high) {
            const int middle = low + (high - low) / 2;
            if (holds(middle))
                high = middle;
            else
                low = middle + 1;
        }
        return low;
    };
    const int begin = firstWhere([&](int i) { return RowTop(headerTop, i, buttonHeight, rowSpace) + buttonHeight + 2 > scrollY; });
    const int end = firstWhere([&](int i) { return RowTop(headerTop, i, buttonHeight, rowSpace) - 2 >= scrollY + viewHeight; });
    return {begin, std::max(begin, end)};
}

QRect RowRect(const QRect &button, int panelWidth)
{
    return QRect(0, button.top() - 2, panelWidth, button.height() + 4);
}

QPoint PlaceAddRowLabel(const TAddRowPlacement &p)
{
    const int left = p.rightToLeft ? p.lastButton.left() + p.lastButton.width() - p.labelWidth
                                   : p.lastButton.left();
    const int top = p.rootEmptyAndHidden ? p.headerTop + 2
                                         : p.lastButton.top() + p.lastButton.height() + p.rowSpace + 2;
    return QPoint(left, top);
}

} // namespace vm20
