#pragma once
// One row of the result column panel: a numbered button, the column's
// formula around its field label, and the sort label. The row shows a
// result column; it keeps no column data of its own.
#include "ui/dropdownpopup.h"
#include "ui/rndbtn.h"

#include <QLabel>
#include <QPointer>
#include <QString>

#include <memory>
#include <vector>

namespace vm20 {

class TNResultFieldsPanel;
class TResultField;
class TResultFieldRows;
class TResultFieldRow;
class TDSField;

class TRFRowButton : public TNRndBtn
{
    Q_OBJECT
public:
    TRFRowButton(TResultFieldRow *row, QWidget *parent);
    TResultFieldRow *Row() const { return FRow; }

private:
    TResultFieldRow *FRow;
};

class TResultFieldRow
{
public:
    TResultFieldRow(TResultFieldRows *rows, TResultField *field);
    ~TResultFieldRow();
    TResultFieldRow(const TResultFieldRow &) = delete;
    TResultFieldRow &operator=(const TResultFieldRow &) = delete;

    TNResultFieldsPanel *RFPanel() const;
    int RowIndex() const;
    QString RowNumStr() const { return QString::number(RowIndex() + 1); }
    TResultField *RField() const { return FRField; }
    void SetRField(TResultField *value);
    int Sorting() const;
    void SetSorting(int value);
    bool Visible() const { return FVisible; }
    void SetVisible(bool value);

    TRFRowButton *Button() const { return FButton.get(); }
    QLabel *TextLabel1() const { return FTextLabel1; }
    TDropDownList *FieldLabel() const { return FFieldLabel; }
    QLabel *TextLabel2() const { return FTextLabel2; }
    TDropDownPopup *SortLabel() const { return FSortLabel; }
    // The mark shown in place of a field the panel's model does not have
    // (the column keeps it; the row only says so), and that column's caption.
    QLabel *MissingLabel() const { return FMissingLabel; }
    const QString &Missing() const { return FMissing; }

    // Rebuilds the texts and the field label and puts every control in place.
    void PlaceRow();
    // Moves the row's controls to their places without rebuilding them.
    void Arrange();
    // Matches the colours fixed at build time to the panel's palette.
    void RefreshColors();
    // Where the row's last control ends, in unscrolled left-to-right pixels.
    int Extent() const { return FExtent; }
    void CreateFieldLabel();
    void AddRootFields();
    void AddGroupedFields();
    // Takes the labels' choices into the result column.
    void RefreshResultField();
    void AfterDropUpLabel(bool accepted);
    // What the row reads like, for screen readers.
    QString Sentence() const;

private:
    // The column, when the list still holds it (a list changed in code
    // without telling its listeners must not leave the row dangling).
    TResultField *LiveField() const;
    QLabel *NewTextLabel(const QString &text);
    // The field the column shows when the panel's model has it.
    const TDSField *ModelField(const TResultField *column) const;
    void FreeLabels();

    TResultFieldRows *FRows;
    TResultField *FRField;
    std::unique_ptr<TRFRowButton> FButton;
    QPointer<QLabel> FTextLabel1;
    QPointer<QLabel> FTextLabel2;
    QPointer<TDropDownList> FFieldLabel;
    QPointer<QLabel> FMissingLabel;
    QString FMissing;
    QPointer<TDropDownPopup> FSortLabel;
    bool FVisible = false;
    int FExtent = 0;
};

class TResultFieldRows
{
public:
    explicit TResultFieldRows(TNResultFieldsPanel *panel) : FRFPanel(panel) {}
    TNResultFieldsPanel *RFPanel() const { return FRFPanel; }
    int Count() const { return int(FItems.size()); }
    TResultFieldRow *Items(int index) const;   // ERFPanelError outside the list
    TResultFieldRow *AddRow(TResultField *field);
    TResultFieldRow *InsertRow(int index, TResultField *field);
    void Delete(int index);
    void Move(int from, int to);
    void Clear() { FItems.clear(); }
    int IndexOf(const TResultFieldRow *row) const;
    bool Visible() const { return FVisible; }
    void SetVisible(bool value);

private:
    TNResultFieldsPanel *FRFPanel;
    std::vector<std::unique_ptr<TResultFieldRow>> FItems;
    bool FVisible = false;
};

} // namespace vm20
