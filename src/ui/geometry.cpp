#include "ui/geometry.h"

#include <QFontMetrics>
#include <QString>

#include <algorithm>

namespace vm20 {

std::vector<int> FitToScreenBreaks(int itemCount, int perColumn, TNPopupSplitType splitType)
{
    std::vector<int> breaks;
    perColumn = std::max(perColumn, 1);
    const int extraColumns = itemCount / perColumn;
    int step = perColumn;
    if (splitType == pstBalanced) {
        const int columns = extraColumns + 1;
        const int rounded = itemCount % columns == 0 ? itemCount : columns + itemCount - itemCount % columns;
        step = rounded / columns;
    }
    for (int i = 1; i <= extraColumns; ++i) {
        // A count that fills its last column exactly asks for an empty column.
        if (step * i < itemCount && step > 0)
            breaks.push_back(step * i);
    }
    return breaks;
}

std::vector<bool> MaxItemCountBreaks(const std::vector<bool> &isGroupItem, int maxItemCount)
{
    std::vector<bool> breaks(isGroupItem.size(), false);
    int groups = 0;
    int values = 0;
    for (std::size_t i = 0; i < isGroupItem.size(); ++i) {
        int &counter = isGroupItem[i] ? groups : values;
        ++counter;
        if (maxItemCount >= 1 && counter > maxItemCount) {
            breaks[i] = true;
            counter = 1;
        }
    }
    return breaks;
}

std::vector<int> ColumnLengths(int itemCount, const std::vector<int> &breaks)
{
    std::vector<int> lengths;
    int start = 0;
    for (int b : breaks) {
        lengths.push_back(b - start);
        start = b;
    }
    if (itemCount > start || lengths.empty())
        lengths.push_back(itemCount - start);
    return lengths;
}

QRect PlaceListBox(const TListBoxPlacement &p)
{
    int w = p.list.width();
    int h = p.list.height();
    const int x = p.rightToLeft ? p.labelTopLeft.x() + p.labelWidth - w : p.labelTopLeft.x();
    int y = p.labelTopLeft.y() + p.textHeight + 2;
    if (y + h >= p.availableHeight) {
        const int above = p.labelTopLeft.y();
        if (p.availableHeight - y <= above) {
            if (above - 4 <= h) {
                y = 2;
                h = above - 4;
            } else {
                y = above - h;
            }
        } else {
            h = p.availableHeight - y - 2;
        }
    }
    const int limit = p.useForm ? 300 : p.availableWidth - x - 2;
    w = std::min(w, limit);
    return QRect(x, y, std::max(w, 0), std::max(h, 0));
}

QSize EditorSize(const QFontMetrics &metrics, const QString &text, int frameHeight)
{
    return QSize(metrics.horizontalAdvance(text + QLatin1Char('W')) + 6, metrics.height() + frameHeight);
}

int EditorLeft(int labelLeft, int labelWidth, int editorWidth, bool rightToLeft)
{
    return rightToLeft ? labelLeft + labelWidth - editorWidth : labelLeft;
}

} // namespace vm20
