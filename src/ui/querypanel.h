#pragma once
// The condition panel: a scrolling view over a query's condition tree, one
// numbered and indented sentence row per node. It owns a query unless one is
// set from outside, follows every change of it, and forwards the query's
// API so host code reads as if the panel held the query.
#include "model/modelobserver.h"
#include "query/query.h"
#include "ui/imagelist.h"
#include "ui/qpappearance.h"
#include "ui/queryhistory.h"
#include "ui/queryrowview.h"

#include <QAbstractScrollArea>
#include <QFont>
#include <QFontMetrics>
#include <QHash>
#include <QPoint>
#include <QPointer>

#include <functional>
#include <memory>
#include <unordered_map>

class QFocusEvent;
class QKeyEvent;
class QMenu;
class QUndoStack;

namespace vm20 {

class TDropDownLabel;

class TNQueryPanel : public QAbstractScrollArea, private TNQueryObserver, private TNModelObserver
{
    Q_OBJECT
    friend class TQueryRowView;
    Q_PROPERTY(int RowSpace READ RowSpace WRITE SetRowSpace)
    Q_PROPERTY(int TabSpace READ TabSpace WRITE SetTabSpace)
    Q_PROPERTY(int ElemSpace READ ElemSpace WRITE SetElemSpace)
    Q_PROPERTY(int HeaderTop READ HeaderTop WRITE SetHeaderTop)
    Q_PROPERTY(int HeaderLeft READ HeaderLeft WRITE SetHeaderLeft)
    Q_PROPERTY(int MaxPopupItemCount READ MaxPopupItemCount WRITE SetMaxPopupItemCount)
    Q_PROPERTY(QString Version READ Version WRITE SetVersion)

public:
    explicit TNQueryPanel(QWidget *parent = nullptr);
    ~TNQueryPanel() override;

    // --- the query shown ----------------------------------------------------
    TNQuery *Query() const { return FQuery; }
    // nullptr goes back to the panel's own query.
    void SetQuery(TNQuery *query);
    TNCustomDBStructure *DBStruct() const { return FQuery->DBStruct(); }
    void SetDBStruct(TNCustomDBStructure *value);
    TFilterBracket *Filter() const { return FQuery->Filter(); }

    // --- activation ------------------------------------------------------------
    // Rows exist only while active. Activate raises ENQueryPanelError for a
    // filter or bracket title without "@" and leaves the panel inactive.
    bool Active() const { return FActive; }
    void Activate();
    void Deactivate();
    // Called by the host once its properties are set: activates when a model
    // is there (else at the first show).
    void Loaded();
    // Saves nothing and loses nothing: the row views are built anew.
    void RefreshPanel();

    // --- appearance ------------------------------------------------------------
    TQPAppearance &Appearance() { return *FAppearance; }
    const TQPAppearance &Appearance() const { return *FAppearance; }
    TQPAppearance &SubQueryAppearance() { return *FSubQueryAppearance; }
    QFont SubQueryFont() const { return FSubQueryFont; }
    void SetSubQueryFont(const QFont &value) { FSubQueryFont = value; }
    TSubQueryHint SubQueryHint() const { return FSubQueryHint; }
    void SetSubQueryHint(TSubQueryHint value);
    // What a sub-query value's label says when hovered, as SubQueryHint asks:
    // nothing, the sub-query as readable text, or its statement.
    QString SubQueryHintText(const TFilterCond &condition, int index) const;
    // Readies a panel that shows or edits a sub-query of this panel's query:
    // this panel's model, SubQueryFont and SubQueryAppearance.
    void SetUpSubQueryPanel(TNQueryPanel &panel) const;
    int RowSpace() const { return FRowSpace; }
    void SetRowSpace(int value) { SetLayoutValue(FRowSpace, value); }
    int TabSpace() const { return FTabSpace; }
    void SetTabSpace(int value) { SetLayoutValue(FTabSpace, value); }
    int ElemSpace() const { return FElemSpace; }
    void SetElemSpace(int value) { SetLayoutValue(FElemSpace, value); }
    int HeaderTop() const { return FHeadTop; }
    void SetHeaderTop(int value) { SetLayoutValue(FHeadTop, value); }
    int HeaderLeft() const { return FHeadLeft; }
    void SetHeaderLeft(int value) { SetLayoutValue(FHeadLeft, value); }
    TFilterLinkType DefaultLinkType() const { return FQuery->DefaultLinkType(); }
    void SetDefaultLinkType(TFilterLinkType value) { FQuery->SetDefaultLinkType(value); }
    int MaxPopupItemCount() const { return FMaxPopupItemCount; }
    void SetMaxPopupItemCount(int value) { FMaxPopupItemCount = value; }
    bool IsActiveX() const { return FIsActiveX; }
    void SetIsActiveX(bool value) { FIsActiveX = value; }
    const TImageList *Images() const { return FImages; }
    void SetImages(const TImageList *value) { FImages = value; }
    QString Version() const { return QStringLiteral("4.4"); }
    void SetVersion(const QString &) {}

    // --- rows --------------------------------------------------------------------
    // Height of the panel font's "A" + 1.
    int RowHeight() const;
    int GetRowHeight() const { return RowHeight(); }
    // The view of a row (nullptr while inactive or for a row of another query).
    TQueryRowView *RowView(const TFilterRow *row) const;
    TDropDownLabel *AddRowLabel() const;
    // The rows shown, in display order (none while inactive).
    std::vector<TFilterRow *> DisplayRows() const;
    TFilterRow *FirstRow() const;
    TFilterRow *LastRow() const;
    TFilterRow *CurrentRow() const { return FCurrentRow; }
    void SetCurrentRow(TFilterRow *row);
    int CurrentRowNum() const;
    bool ShowFrame() const { return FShowFrame; }
    void SetShowFrame(bool value);
    int RowViewCount() const { return int(FViews.size()); }

    void PlaceAllRows();
    void PlaceAddRow();
    void ShowAllRows();
    void HideAllRows();
    void ShowRootRow();
    void HideRootRow();
    void InitRootRow();
    void SetAddRowCaption();
    QString GetTitle(const QString &name) const { return FQuery->GetTitle(name); }
    void SetTitle(const QString &name, const QString &text) { FQuery->SetTitle(name, text); }

    // Paints a row's band (and focus frame) and, with controls, its labels.
    void PaintRow(TFilterRow *row, QPainter *painter, bool withControls) const;
    void RefreshRow(TFilterRow *row);
    // The whole viewport as paintEvent draws it.
    void draw(QPainter *painter, const QRect &rect) const;

    // --- the query's API -----------------------------------------------------------
    TSimpleCond *AddCondition(TFilterBracket *bracket, TDSField *field) { return FQuery->AddCondition(bracket, field); }
    TFilterBracket *AddBracket(TFilterBracket *bracket) { return FQuery->AddBracket(bracket); }
    TCustomCond *AddCustomCondition(TFilterBracket *bracket, TDSCondition *condition)
    {
        return FQuery->AddCustomCondition(bracket, condition);
    }
    bool DeleteRow(TFilterRow *row) { return FQuery->DeleteRow(row); }
    void ClearAll() { FQuery->ClearAll(); }
    void SaveToStrings(QStringList &lines) { FQuery->SaveToStrings(lines); }
    void LoadFromStrings(const QStringList &lines) { FQuery->LoadFromStrings(lines); }
    void ParseSQL(const QStringList &lines) { FQuery->ParseSQL(lines); }
    void BuildQuery() { FQuery->BuildQuery(); }
    const QStringList &GetSQL() { return FQuery->GetSQL(); }
    QString GetQueryText() const { return FQuery->GetQueryText(); }
    bool Modified() const { return FQuery->Modified(); }

    // The colour of rows the model cannot resolve.
    static QColor MissingColor();

    // --- editing: menus, mouse and labels -------------------------------------------
    // Rows can still be focused, read, copied and read aloud; nothing changes.
    bool ReadOnly() const { return FReadOnly; }
    void SetReadOnly(bool value);
    // When set, called instead of executing a menu; returns the chosen tag
    // (0: none), so hosts and tests drive menus without a modal loop.
    std::function<int(QMenu *menu, QPoint pos)> MenuHook;

    // Every menu entry carries its tag in QAction::data(); an entry of a
    // custom-condition sub-menu carries CustomCondTag + the condition's ID.
    static constexpr int CustomCondTag = 1000;
    // The root row's (and add-row label's) menu, the other rows' menu, and
    // the value labels' menu.
    QMenu *MainPopup() const { return FMainPopup; }
    QMenu *RowPopup() const { return FRowPopup; }
    QMenu *ValuePopup() const { return FValuePopup; }
    void CreateMenus();
    // Captions from the titles, custom-condition sub-menus from the model.
    void UpdateMenus();
    // Readies the row menu for the current row (and the value menu for the
    // current value label) before it shows.
    void RowMenuPopup();
    void ValueMenuPopup();
    // What the entry with that tag does to the current row (the root when
    // there is none); one change notification when the query changed.
    void MenuItemClick(int tag);
    void ValueMenuItemClick(int tag);
    // Adds a predefined condition of the model after the current row.
    void AddCustomConditionClick(TDSCondition *condition);
    void MainButtonClick();
    void RowButtonClick(TFilterRow *row);
    void AddRowLabelMouseDown(Qt::MouseButton button);
    // Adds a condition (on `field`, or empty) at the end of the current row's
    // bracket (the root's when the root or no row is current).
    void ProcessAddRowClick(TDSField *field);
    // A double click in a value editor: the host may change the text.
    std::function<void(TFilterCond *Condition, int ValueIndex, QString &Value)> OnValueDblClick;

    // (end of menus, mouse and labels)


    // --- current row and keyboard ---------------------------------------------------
    // Row numbers count the rows as shown, from 0 at the top (the root is -1
    // while it is hidden).
    // The bracket a new row goes into: the current row when it is a bracket,
    // else its parent; the root without a current row.
    TFilterBracket *GetCurrentBracket() const;
    TFilterRow *GetRowByNum(int rowNum) const;
    // Makes the row current with its first control and scrolls that into view.
    void SetCurrentRowNum(int rowNum);
    void IncCurRow();
    void DecCurRow();
    // Each moves the current row, which stays current, and is one user
    // action; false when the row cannot move that way (or the panel is read
    // only).
    bool MoveCurRowUp();
    bool MoveCurRowDown();
    bool MoveCurRowLeft();
    bool MoveCurRowRight();
    // The panel's keyboard map; true when the key was the panel's. Keys go
    // through it only while active and with aoAllowKeyboard.
    bool KeyDown(int key, Qt::KeyboardModifiers modifiers);

    // (end of current row and keyboard)


    // --- undo, redo, copy and paste ------------------------------------------------------
    // Every user action is one step; the host may show or drive the stack.
    QUndoStack *UndoStack() const;
    void Undo();
    void Redo();
    // Both do nothing in read-only mode or without a step to go to. A query
    // changed in code since the last step is not taken back: the history
    // starts over from it.
    // The current row with its sub-tree (the root: all rows), as query text,
    // to the clipboard; allowed in read-only mode too.
    void CopyCurrentRow();
    // Rows from query text on the clipboard, after the current row and its
    // sub-tree in the same bracket (at the end when the root or no row is
    // current); the first of them becomes current. Clipboard text that is
    // not query text is refused: false, the query unchanged, the reason in
    // PasteError().
    bool PasteRows();
    QString PasteError() const { return FPasteError; }

    // (end of undo, redo, copy and paste)

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool viewportEvent(QEvent *event) override;

private:
    // TNQueryObserver
    void RowInserted(TFilterRow *row) override;
    void RowRemoved(TFilterRow *row) override;
    void RowChanged(TFilterRow *row) override;
    void RowMoved(TFilterRow *row, TFilterBracket *oldParent, int oldIndex) override;
    void RowAdded(TFilterRow *row) override;
    void TitlesChanged() override;
    void Reset() override;
    // TNModelObserver
    void ModelChanged(TNCustomDBStructure *model, const TModelChange &change) override;
    void ModelDestroyed(TNCustomDBStructure *model) override;
    void EntityDeleting(TNCustomDBStructure *model, const TModelChange &entity) override;

    void NewViewport();
    void AttachQuery(TNQuery *query);
    void DetachQuery();
    void ObserveModel(TNCustomDBStructure *model);
    void SetLayoutValue(int &field, int value);
    void BuildViews(TFilterRow *top, bool strict);
    void DropViews(TFilterRow *top);
    // A row's view (and its sub-tree's) built anew in place.
    void RebuildRowView(TFilterRow *row);
    void Rebuild();
    void RebuildQuietly();
    // The row views and the add-row label for the query as it stands.
    void BuildAll(bool strict);
    void ScheduleLayout();
    void EnsureLayout() const;
    void UpdateScrollBars(int contentRight, int contentBottom);
    // Puts up the widgets of the rows that meet the viewport and takes down
    // those that no longer do.
    void PlaceInView();
    // The views of the rows in view (a row freed since the last layout is left out).
    std::vector<const TQueryRowView *> ViewsInView() const;
    void PaintMissingMark(QPainter *painter, const TQueryRowView &view) const;

    // The change notification of one user action: the query's QueryChanged,
    // not from inside the panel's own handlers, then one undo step.
    void NotifyChange();
    // Records the query as it now stands as one undo step.
    void RecordUndoStep();

    // menus, mouse and labels
    friend class TQueryRowView;
    // What a label of a row edits.
    enum TLabelRole { lrNone, lrField, lrOperator, lrValue1, lrValue2, lrLinkType, lrLogOp };
    void WireRowView(TQueryRowView *view);
    void WireAddRowLabel();
    void WireLabel(TDropDownLabel *label, TLabelRole role);
    // The row whose live view holds the control; nullptr for a control of a
    // view already replaced (its widgets linger until the event loop).
    TFilterRow *RowOfControl(const QObject *control) const;
    TLabelRole RoleOf(const TQueryRowView *view, const TDropDownLabel *label) const;
    void BeforeDropLabel(TFilterRow *row, TDropDownLabel *label);
    void AfterDropUpLabel(TFilterRow *row, TDropDownLabel *label, TLabelRole role, bool accepted);
    bool LogOpLabelDropUp(TFilterRow *row, TDropDownLabel *label);
    bool ApplyLabel(TFilterRow *row, TDropDownLabel *label, TLabelRole role);
    void ValueLabelRightClick(TDropDownLabel *label);
    void ValueEditDblClick(TDropDownLabel *label, QString &text);
    void CheckBoxToggled(QObject *box, bool on);
    void ApplyMenuTag(int tag, TFilterRow *row);
    void RunMenu(QMenu *menu, const QWidget *control, TFilterRow *row);
    int ExecMenu(QMenu *menu, const QWidget *control);
    void FillCustomMenu(QMenu *menu);
    void EnableMenu(QMenu *menu);
    bool RowInTree(const TFilterRow *row) const;
    TFilterBracket *BracketOfRow(TFilterRow *row) const;
    void CloseEditors(const TDropDownLabel *except);
    void OpenFieldList(TFilterRow *row);
    void mousePressEvent(QMouseEvent *event) override;

    QMenu *FMainPopup = nullptr;
    QMenu *FRowPopup = nullptr;
    QMenu *FValuePopup = nullptr;
    QMenu *FMainCondMenuItem = nullptr;
    QMenu *FRowCondMenuItem = nullptr;
    bool FMenuOpen = false;
    bool FMenusStale = false;
    // Inside a handler of one of the panel's own controls: a rebuild must
    // let that control live until the handler returns.
    bool FInControlHandler = false;

    // (end of menus, mouse and labels)


    // current row and keyboard
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    // Before the current row (or a bracket holding it) is freed: the row
    // after it becomes current, else the one before it.
    void CurrentRowDestroyed(TFilterRow *removed);
    // The row numbers the panel shows are the query's, less the hidden root.
    int RootOffset() const;
    // Whether a label of the panel is dropped or its editor has the focus:
    // keys then belong to it.
    bool LabelBusy() const;
    bool HandlesKey(int key, Qt::KeyboardModifiers modifiers) const;
    void MoveCurControl(bool forward);
    void DropDownCurControl();
    void InsertCondition();
    void DeleteCurRow();
    bool MoveCurRow(bool (TNQuery::*move)(TFilterRow *));
    void ScrollToCurrent();
    // Tells assistive technology which row (and label) now has the focus.
    void AnnounceCurrent();
    // Pops up the row menu (the main menu on the root) at the current row.
    void PopupMenuForCurrentRow();
    // A label that Enter dropped down has closed: the keyboard comes back
    // to the panel, wherever hiding the label's list left it.
    void KeyboardDropEnded(const TDropDownLabel *label);
    QPointer<TDropDownLabel> FKeyboardDrop;

    // (end of current row and keyboard)


    // undo, redo, copy and paste
    TQueryHistory &History();
    // The query was replaced, or may have been reloaded in code.
    void HistoryRestart();
    void HistorySync();
    void HistoryChangeEvent();
    void Restore(const QStringList &text, const QStringList &from);
    bool RestoreChangedRows(const QStringList &text, const QStringList &from);
    void WatchForHistory();
    std::unique_ptr<TQueryHistory> FHistory;
    // Tells the history of every change of the query (after FHistory: it
    // goes first).
    std::unique_ptr<TNQueryObserver> FHistoryWatch;
    QString FPasteError;
    friend class TQueryHistoryTestAccess;

    // (end of undo, redo, copy and paste)

    std::unique_ptr<TNQuery> FOwnQuery;
    TNQuery *FQuery = nullptr;
    QPointer<TNCustomDBStructure> FModel;
    std::unique_ptr<TQPAppearance> FAppearance;
    std::unique_ptr<TQPAppearance> FSubQueryAppearance;
    std::unordered_map<const TFilterRow *, std::unique_ptr<TQueryRowView>> FViews;
    // The shown rows in display order, as the last layout numbered them.
    std::vector<TQueryRowView *> FOrder;
    // The rows whose widgets are up.
    std::vector<const TFilterRow *> FInView;
    // A hidden widget holding the row views' bins.
    std::unique_ptr<QWidget> FRowStore;
    // What the model cannot resolve for a row ("field, operator"), as the
    // query itself lists it, so that the panel and the command-line tool
    // agree; empty when the row resolves. Listed once per change of the query.
    QString MissingText(const TFilterRow *row) const;
    mutable bool FMissingListed = false;
    mutable QHash<const TFilterRow *, QString> FMissingByRow;
    // What every row's placement shares, taken once per layout.
    struct TPlacementBase
    {
        TRowPlacement placement;
        QFontMetrics metrics{QFont()};
    };
    TPlacementBase FPlacementBase;
    void TakePlacementBase();
    // Counts layouts and scrolls: a row placed under an older count is placed
    // again before anyone reads where it stands.
    int FLayoutStamp = 0;
    std::unique_ptr<TDropDownLabel> FAddRowLabel;
    TFilterRow *FCurrentRow = nullptr;

    int FRowSpace = 3;
    int FTabSpace = 20;
    int FElemSpace = 5;
    int FHeadTop = 5;
    int FHeadLeft = 5;
    int FMaxPopupItemCount = 0;
    bool FIsActiveX = false;
    bool FActive = false;
    bool FLoaded = false;
    bool FShowFrame = true;
    bool FDestroying = false;
    mutable bool FLayoutPending = false;
    bool FLayoutPosted = false;
    bool FSettingRanges = false;
    QFont FSubQueryFont;
    TSubQueryHint FSubQueryHint = sqhSQL;
    const TImageList *FImages = nullptr;
    bool FReadOnly = false;
    bool FInsideEventHandler = false;
};

} // namespace vm20
