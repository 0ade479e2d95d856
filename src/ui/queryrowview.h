#pragma once
// The controls of one condition-tree row on the panel: the numbered button,
// the check box, the logical-operator label and up to five labels. The row
// itself stays in the query; the view only shows it.
#include "ui/rowgeometry.h"

#include <QColor>
#include <QRect>
#include <QSize>
#include <QString>

#include <array>
#include <memory>
#include <vector>

class QCheckBox;
class QPainter;
class QWidget;

namespace vm20 {

class TDropDownLabel;
class TDropDownPopup;
class TFilterBracket;
class TFilterRow;
class TNQueryPanel;
class TNRndBtn;

class TQueryRowView
{
public:
    // Builds the row's controls on the panel's viewport; a bracket title
    // without "@" raises ENQueryPanelError when `strictTitles`, else the row
    // shows the whole title.
    TQueryRowView(TNQueryPanel *panel, TFilterRow *row, bool strictTitles);
    ~TQueryRowView();
    TQueryRowView(const TQueryRowView &) = delete;
    TQueryRowView &operator=(const TQueryRowView &) = delete;

    // Lets go of the controls without freeing them: the panel frees all
    // controls at once with the widget that holds them.
    void Abandon();

    TFilterRow *Row() const { return FRow; }
    TNRndBtn *Button() const { return FButton.get(); }
    // rsFirstLabel .. rsMiddleLabel; nullptr for an empty slot.
    TDropDownLabel *Slot(int index) const;
    TDropDownPopup *LogOpLabel() const { return FLogOp.get(); }
    QCheckBox *CheckBox() const { return FCheckBox.get(); }

    // The drop-down labels in display order (logical-operator label included
    // where it shows), which the current-control index counts.
    std::vector<TDropDownLabel *> Controls() const;
    bool ShowsLogOp() const;
    int CurrentControlIndex() const { return FCurrentControl; }
    void SetCurrentControlIndex(int index) { FCurrentControl = index; }
    TDropDownLabel *CurrentControl() const;
    // The first visible drop-down label, -1 when none.
    int FirstCurControl() const;
    // The next (previous) visible drop-down label after (before) the current
    // one; the current index when there is none.
    int NextCurControl() const;
    int PrevCurControl() const;

    int RowNum() const { return FRowNum; }
    int Depth() const { return FDepth; }
    QString RowID() const { return FRowID; }
    // Numbers the row; it is placed when it comes into view or is asked
    // where it stands.
    void SetRowNum(int rowNum, int depth, const QString &rowID);
    void PlaceRow();
    // Places the row unless it already stands where the panel's last
    // layout or scroll puts it.
    void EnsurePlaced() const;
    // Whether the row is shown (it may still be scrolled out of view).
    bool Visible() const { return FVisible; }
    void SetVisible(bool value);
    // A shown row has widgets on screen only while it meets the viewport:
    // scrolling then moves a screenful of widgets, not all of them.
    bool InView() const { return FInView; }
    void SetInView(bool value);
    // ContentEdge as it would be unscrolled, without placing the row;
    // `showsLogOp` as ShowsLogOp says (the caller walking the tree knows it).
    int UnscrolledContentEdge(bool showsLogOp) const;
    QRect GetRowRect() const;
    int GetTop() const;
    int GetHeight() const;
    int GetLeft() const;
    int GetRowLevel() const { return FDepth; }
    // The right edge of the rightmost control (the leftmost left, right to left).
    int ContentEdge() const;
    void Highlight(TDropDownLabel *label);
    void CloseEdit(bool accept);

    // What the model lacks for this row ("field", "operator", ...), empty
    // when the row resolves.
    const QString &Missing() const { return FMissing; }
    // The row as a sentence: its labels' texts.
    QString Sentence() const;

private:
    void BuildBracket(bool strictTitles);
    void BuildSimpleCondition();
    void BuildCustomCondition();
    void BuildValues(int firstSlot, const QStringList &texts);
    TDropDownLabel *MakeText(int slot, const QString &text);
    void ApplyColor(QWidget *label, const QColor &color);
    void SetUnresolvedLook();
    void FillListOnDrop(TDropDownLabel *label, int index);
    TRowPlacement Placement(bool showsLogOp) const;
    QString ButtonCaption() const;
    void ApplyVisibility();

    TNQueryPanel *FPanel;
    TFilterRow *FRow;
    // Holds the widgets while the row is out of view (freed after them).
    std::unique_ptr<QWidget> FBin;
    std::unique_ptr<TNRndBtn> FButton;
    std::array<std::unique_ptr<TDropDownLabel>, RowSlotCount> FSlots;
    std::unique_ptr<TDropDownPopup> FLogOp;
    std::unique_ptr<QCheckBox> FCheckBox;
    int FRowNum = -1;
    int FDepth = 0;
    QString FRowID;
    bool FVisible = false;
    bool FInView = false;
    QSize FButtonSize;
    int FPlacedStamp = -1;
    bool FCaptionStale = false;
    int FCurrentControl = -1;
    QString FMissing;
};

} // namespace vm20
