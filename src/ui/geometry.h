#pragma once
// Pure layout rules of the drop-down labels: numbers in, numbers out, so that
// they can be checked without a screen.
#include <QPoint>
#include <QRect>
#include <QSize>

#include <vector>

class QFontMetrics;
class QString;

namespace vm20 {

enum TNPopupSplitType : int { pstBalanced, pstFillFirst };

// Indexes (from 0) of the items of one menu level that start a new column
// when the screen holds perColumn rows; ascending, all below itemCount.
std::vector<int> FitToScreenBreaks(int itemCount, int perColumn, TNPopupSplitType splitType);

// For the items of a pop-up label in the order they are added: whether each
// starts a new column under maxItemCount (0: never). Group items (sub-menu
// headers) and value items count separately, and neither count restarts at
// a change of group.
std::vector<bool> MaxItemCountBreaks(const std::vector<bool> &isGroupItem, int maxItemCount);

// Lengths of the columns that the given breaks cut itemCount items into.
std::vector<int> ColumnLengths(int itemCount, const std::vector<int> &breaks);

// Where a list box drops: below the label's text, or above the label when
// there is no more room below than above.
struct TListBoxPlacement
{
    QPoint labelTopLeft;  // in the host's coordinates
    int labelWidth = 0;
    int textHeight = 0;   // height of "A" in the label's font
    QSize list;           // the size the list wants
    int availableHeight = 0;
    int availableWidth = 0; // the host's client width; ignored with a form host
    bool useForm = false;
    bool rightToLeft = false;
};
QRect PlaceListBox(const TListBoxPlacement &p);

// The text box that grows with its text: the width of the text and one "W"
// plus 6; the height of one line plus what the box's frame needs.
QSize EditorSize(const QFontMetrics &metrics, const QString &text, int frameHeight);

// The editor's left edge: the label's left, or right-aligned to the label
// when the editor runs right to left.
int EditorLeft(int labelLeft, int labelWidth, int editorWidth, bool rightToLeft);

} // namespace vm20
