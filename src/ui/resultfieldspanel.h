#pragma once
// A scrolling panel on which an end user lists the result columns of a query:
// one sentence-like row per column, a "click to add" label under the last row,
// a menu per row to delete or move it. The panel views a result column list
// it is given and follows changes made to that list in code.
#include "model/dbstructure.h"
#include "query/resultfieldobserver.h"
#include "ui/queryhistory.h"
#include "ui/resultfieldrow.h"
#include "ui/rfpappearance.h"

#include <QAbstractScrollArea>
#include <QMenu>
#include <QPointer>
#include <QStringList>

#include <functional>
#include <memory>

namespace vm20 {

class TDropDownLabel;
class TNQuery;
class TRFieldList;

class TNResultFieldsPanel : public QAbstractScrollArea, private TRFieldListObserver
{
    Q_OBJECT
public:
    using TRFPanelChangeEvent = std::function<void(QObject *Sender)>;

    explicit TNResultFieldsPanel(QWidget *parent = nullptr);
    ~TNResultFieldsPanel() override;

    TNCustomDBStructure *DBStruct() const { return FDBStruct; }
    void SetDBStruct(TNCustomDBStructure *value);
    TRFieldList *ResultFields() const { return FResultFields; }
    void SetResultFields(TRFieldList *value);
    // Views the result columns of a query with its model, so that this panel
    // and a condition panel over the same query edit one query.
    void SetQuery(TNQuery *query);
    // The query whose columns the panel shows; none for a list given alone.
    TNQuery *Query() const;

    // Title lines, one name=value each.
    const QStringList &Titles() const { return FTitles; }
    void SetTitles(const QStringList &value);
    QString Title(const QString &name) const { return GetTitle(name); }
    QString GetTitle(const QString &SName) const;
    void SetTitle(const QString &SName, const QString &Value);
    void LoadDefaultTitles();
    static QStringList DefaultTitles();

    TRFPAppearance &Appearance() { return FAppearance; }
    const TRFPAppearance &Appearance() const { return FAppearance; }

    bool Active() const { return FActive; }
    bool Refreshing() const { return FRefreshing; }
    void Activate();
    void Deactivate();
    void ClearAll();
    void Refresh();

    int RowCount() const { return FRows.Count(); }
    TResultFieldRow *Row(int index) const { return FRows.Items(index); }
    TResultFieldRow *FirstRow() const;
    TResultFieldRow *LastRow() const;
    TResultFieldRow *CurrentRow() const { return FCurrentRow; }
    void SetCurrentRow(TResultFieldRow *row);
    QLabel *AddRowLabel() const { return FAddRowLabel; }
    QMenu *RowPopup() const { return FRowPopup; }

    TResultFieldRow *AddEmptyRow();
    TResultField *NewResultField();
    void DeleteRow(int Index);
    void MoveRowUp(int Index) { MoveRow(Index, Index - 1); }
    void MoveRowDown(int Index) { MoveRow(Index, Index + 1); }
    void MoveRow(int From, int To);
    void RefreshSortOrder();
    void PlaceRows(int FromIndex);
    void ShowAddRow();
    void RowButtonClick(TResultFieldRow *row);
    void EnableMenuItems(TResultFieldRow *row);
    void MenuItemClick(int tag);
    void AddRowLabelClick();
    void Changed();
    // A label of the row dropped up accepting: the column takes the choice.
    void RowLabelAccepted(TResultFieldRow *row);

    // Text height of "1" in the panel font, the base of the row height.
    int TextHeight() const;
    // Puts a control at a left-to-right position, mirrored when the panel
    // runs right to left.
    void PlaceControl(QWidget *control, int x, int y) const;
    bool InsideEventHandler() const { return FInsideEventHandler; }

    // Every change the panel reports (Changed) is one step over the list's
    // columns; the host may show or drive the stack.
    QUndoStack *UndoStack();
    void Undo();
    void Redo();

    TRFPanelChangeEvent OnChange;
    // When set, called instead of executing a menu; returns the chosen tag
    // (0 for none).
    std::function<int(QMenu *, QPoint)> MenuHook;

protected:
    void scrollContentsBy(int dx, int dy) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void FieldInserted(int index) override;
    void FieldRemoving(int index) override;
    void FieldMoved(int from, int to) override;
    void FieldChanged(int index) override;
    void Reset() override;
    void BuildRows();
    // Moves the controls of rows FromIndex.. to their places; their
    // contents stay as they are.
    void ArrangeRows(int FromIndex = 0);
    void UpdateScrollBars();
    QColor CurrentButtonColor() const;
    void UpdateMenuCaptions();
    void RunGuarded(const std::function<void()> &action);
    TQueryHistory &History();
    void HistorySync(bool restart);
    bool HistoryKey(QKeyEvent *event);

    TResultFieldRows FRows;
    QStringList FTitles;
    QStringList FDefTitles;
    bool FActive = false;
    bool FRefreshing = false;
    TRFPAppearance FAppearance;
    QMenu *FRowPopup = nullptr;
    TResultFieldRow *FCurrentRow = nullptr;
    QLabel *FAddRowLabel = nullptr;
    QPointer<TNCustomDBStructure> FDBStruct;
    TRFieldList *FResultFields = nullptr;
    QPointer<TNQuery> FQuery;
    bool FInsideEventHandler = false;
    std::unique_ptr<TQueryHistory> FHistory;
};

} // namespace vm20
