#pragma once
// The non-visual query: the condition tree, the result columns, the build of
// the SQL statement and the state a host reads and sets. A view shows the
// tree through TNQueryObserver and edits it through the tree's operations; the
// query knows no widget.
#include "model/dbstructure.h"
#include "query/filtercond.h"
#include "query/filterrow.h"
#include "query/modelwatch.h"
#include "query/queryresult.h"
#include "query/sqlsyntax.h"
#include "query/tablefilter.h"
#include "query/titles.h"
#include "query/unresolved.h"
#include "support/observerlist.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

namespace vm20 {

class TNQuery;
class TNQueryBase;
class TNQPBaseLink;

// Told of every change of the tree, in the order the observers were added.
// Contract, as a view over the tree sees it:
//  - RowInserted(row) after a row (with its sub-tree, if any) entered the
//    tree; its parent and index are final.
//  - RowRemoved(row) before the row and its sub-tree are freed: they are
//    still intact and still in the tree.
//  - RowChanged(row) after a row's own state changed (enabled, link type,
//    field, operator, values, ...).
//  - RowMoved(row, oldParent, oldIndex) after MoveRowUp/Down/Left/Right moved
//    a row that stays alive: one call per move, never a removal plus an
//    insertion, so a view keeps the row's widgets. An indent that wraps the
//    row in a new bracket first sends RowInserted(new bracket), still empty
//    and at the row's place (so the row sits one further down), then
//    RowMoved(row, parent, old index + 1). An outdent that leaves its bracket
//    empty sends RowMoved(row, ...) and then RowRemoved(bracket).
//  - RowAdded(row) after the RowInserted of a user-level add (AddCondition...,
//    AddCustomCondition, AddBracket...): the row a view should make current,
//    which for a bracket that gets an empty condition is that condition.
//  - Reset() when all rows may have changed: the outermost EndUpdate of a
//    batch (loading a query text, ParseSQL, ClearAll); nothing else is sent
//    inside the batch.
//  - TitlesChanged() after one title, all titles, the default titles or a
//    legacy title text was set.
// DeleteRow sends RowRemoved(row) and, when that re-enables the emptied
// root, RowChanged(root).
class TNQueryObserver
{
public:
    virtual ~TNQueryObserver() = default;
    virtual void RowInserted(TFilterRow *row) { (void)row; }
    virtual void RowRemoved(TFilterRow *row) { (void)row; }
    virtual void RowChanged(TFilterRow *row) { (void)row; }
    virtual void RowMoved(TFilterRow *row, TFilterBracket *oldParent, int oldIndex)
    {
        (void)row;
        (void)oldParent;
        (void)oldIndex;
    }
    virtual void RowAdded(TFilterRow *row) { (void)row; }
    virtual void TitlesChanged() {}
    virtual void Reset() {}
};

// An object told of every change of a query (QueryChanged), in the order the
// links were attached.
class TNQueryPanelLink
{
public:
    TNQueryPanelLink() = default;
    virtual ~TNQueryPanelLink();
    TNQueryPanelLink(const TNQueryPanelLink &) = delete;
    TNQueryPanelLink &operator=(const TNQueryPanelLink &) = delete;

    TNQuery *QueryPanel() const { return FQueryPanel; }
    void SetQueryPanel(TNQuery *query);
    virtual void QueryChanged() {}

private:
    friend class TNQuery;
    TNQuery *FQueryPanel = nullptr;
};

// Error codes of ENQueryPanelError.
enum TQueryPanelErrorCode {
    qpeNoDBStruct = 1,
    qpeWrongLink = 2,
    qpeNoPath = 3,
    qpeInvalidFltrTitle = 4,
    qpeInvalidStrFmt = 5,
    qpeQueryWasNotBuilt = 8
};

class TNQuery : public QObject
{
public:
    explicit TNQuery(QObject *parent = nullptr);
    ~TNQuery() override;

    // --- the model -------------------------------------------------------
    TNCustomDBStructure *DBStruct() const { return FDBStruct; }
    // The query follows the model: before a model entity is freed, conditions
    // that use it fall back to the model's unrecognized placeholders (keeping
    // their values), result columns that use a freed field are removed, and
    // table filters and the last build's tables let go of it.
    void SetDBStruct(TNCustomDBStructure *value);
    // ENQueryPanelError "DBStruct is not specified" without a model.
    void CheckIfDBStructAssigned() const;

    // --- the query -------------------------------------------------------
    TFilterBracket *Filter() const { return FFilter.get(); }
    TQueryResult &QResult() { return FResult; }
    const TQueryResult &QResult() const { return FResult; }
    TRFieldList &RFields() { return FResult.RFields(); }
    const TRFieldList &RFields() const { return FResult.RFields(); }
    TNTableFilterList &TableFilters() { return FTableFilters; }
    const TNTableFilterList &TableFilters() const { return FTableFilters; }

    TSQLSyntax SQLSyntax() const { return FSQLSyntax; }
    void SetSQLSyntax(TSQLSyntax value);
    TSQLOptions SQLOptions() const { return FSQLOptions; }
    void SetSQLOptions(TSQLOptions value);
    // Passes syntax and options to the result and the result field list.
    void SQLOptionsChanged();
    // The main table by its compound name ("Orders - o").
    const QString &MainTableName() const { return FMainTableName; }
    void SetMainTableName(const QString &value) { FMainTableName = value; }
    const QString &SQLTopClause() const { return FSQLTopClause; }
    void SetSQLTopClause(const QString &value) { FSQLTopClause = value; }
    const QString &SQLLimitClause() const { return FSQLLimitClause; }
    void SetSQLLimitClause(const QString &value) { FSQLLimitClause = value; }
    TFilterLinkType DefaultLinkType() const { return FDefaultLinkType; }
    void SetDefaultLinkType(TFilterLinkType value) { FDefaultLinkType = value; }
    // A bracket added through AddBracket gets one empty condition.
    bool NonEmptyBrackets() const { return FNonEmptyBrackets; }
    void SetNonEmptyBrackets(bool value) { FNonEmptyBrackets = value; }
    // name=value lines: the current value of each condition's field.
    QStringList &SQLParams() { return FSQLParams; }
    const QStringList &SQLParams() const { return FSQLParams; }

    const QString &QueryName() const { return FQueryName; }
    void SetQueryName(const QString &value) { FQueryName = value; }
    QStringList &Description() { return FDescription; }
    const QStringList &Description() const { return FDescription; }
    QStringList &UserData() { return FUserData; }
    const QStringList &UserData() const { return FUserData; }
    // The format version of the last query text read.
    double Version() const { return FVersion; }
    void SetVersion(double value) { FVersion = value; }
    bool SaveTitles() const { return FSaveTitles; }
    void SetSaveTitles(bool value) { FSaveTitles = value; }
    bool SaveSQLOptions() const { return FSaveSQLOptions; }
    void SetSaveSQLOptions(bool value) { FSaveSQLOptions = value; }

    // --- query text (querytextwriter.cpp, querytextreader.cpp) ------------------
    static constexpr double QueryTextVersion = 3.6;
    void SaveToStrings(QStringList &lines);
    // Replaces the query by the one in the lines. Malformed text raises
    // EConvertError and leaves the query cleared.
    void LoadFromStrings(const QStringList &lines);
    // One row with its sub-tree as a query text of its own: [Main], then a
    // root holding just that row (the root itself: all rows). The text also
    // loads as a whole query.
    void SaveRowToStrings(const TFilterRow *row, QStringList &lines);
    // Inserts the rows of a query text's root (with their sub-trees) into
    // `bracket` (nullptr: the root) from `index` on; the query's other
    // settings stay. Observers get one RowInserted per inserted row. Text
    // that is not query text or is malformed raises EConvertError and
    // changes nothing; conditions the model cannot resolve are kept, as
    // loading keeps them.
    std::vector<TFilterRow *> InsertRowsFromStrings(TFilterBracket *bracket, int index, const QStringList &lines);
    void SaveToFile(const QString &fileName);
    void LoadFromFile(const QString &fileName);
    bool Saving() const { return FSaving > 0; }
    // The value texts one condition stores (a parameter's value for a value
    // that is a parameter) and back.
    void SaveValues(const TFilterCond &condition, QString &value1, QString &value2) const;
    void LoadValues(const QString &value1, const QString &value2, TFilterCond &condition);

    // --- query store (querybaselink.cpp) ------------------------------------------
    // The store whose current item this query shows; the query follows its
    // index and hands its text back when an item is saved.
    TNQueryBase *QueryBase() const;
    void SetQueryBase(TNQueryBase *value);
    // Loads the store's current item (nothing without one).
    void LoadCurBaseQuery();

    // --- titles ------------------------------------------------------------
    TQueryTitles &Titles() { return FTitles; }
    const TQueryTitles &Titles() const { return FTitles; }
    QString GetTitle(const QString &key) const { return FTitles.GetTitle(key); }
    void SetTitle(const QString &key, const QString &text) { FTitles.SetTitle(key, text); }
    void LoadDefTitles() { FTitles.LoadDefTitles(); }
    void SetTitles(const QStringList &lines) { FTitles.SetTitles(lines); }
    void LoadOldTitlesFromStrings(const QStringList &lines) { FTitles.LoadOldTitlesFromStrings(lines); }
    void MergeDFMTitles(const QStringList &lines) { FTitles.MergeDFMTitles(lines); }
    // The title of a link type ("all", "any", ...).
    QString LinkTypeTitle(TFilterLinkType type) const;

    // --- state and change notification -------------------------------------
    bool Active() const { return FActive; }
    void SetActive(bool value) { FActive = value; }
    bool Modified() const { return FModified; }
    void SetModified(bool value) { FModified = value; }
    // While loading (nestable) QueryChanged, OnConditionChange and
    // OnParamListChange stay silent.
    void BeginLoading() { ++FLoading; }
    void EndLoading() { --FLoading; }
    bool Loading() const { return FLoading > 0; }
    void BeginRefreshing() { ++FRefreshing; }
    void EndRefreshing() { --FRefreshing; }
    bool Destroying() const { return FDestroying; }
    // Marks the query modified, tells the links and raises OnChange (once:
    // a change made inside the handler does not raise it again).
    virtual void QueryChanged();
    void ParametersListChanged();

    void AddObserver(TNQueryObserver *observer);
    void RemoveObserver(TNQueryObserver *observer);
    // Batches tree changes: observers get one Reset at the outermost EndUpdate.
    void BeginUpdate() { ++FUpdating; }
    void EndUpdate();

    // --- tree operations of the panel --------------------------------------
    TSimpleCond *AddCondition(TFilterBracket *bracket, TDSField *field);
    TSimpleCond *AddConditionNum(TFilterBracket *bracket, int rowNum, TDSField *field);
    TCustomCond *AddCustomCondition(TFilterBracket *bracket, TDSCondition *condition);
    TCustomCond *AddCustomConditionNum(TFilterBracket *bracket, int rowNum, TDSCondition *condition);
    TFilterBracket *AddBracket(TFilterBracket *bracket);
    TFilterBracket *AddBracketNum(TFilterBracket *bracket, int rowNum);
    // Row moves; false (and nothing changes) when the row cannot move that way.
    // Up/down swap with the previous/next sibling. Left (outdent) puts a row
    // below level 1 into its bracket's parent right after the bracket and
    // deletes the bracket if that left it empty. Right (indent) appends the
    // row to the previous sibling when that is a bracket, else wraps it in a
    // new bracket at its place.
    bool MoveRowUp(TFilterRow *row);
    bool MoveRowDown(TFilterRow *row);
    bool MoveRowLeft(TFilterRow *row);
    bool MoveRowRight(TFilterRow *row);
    // Deletes a non-root row with its sub-tree; a root left empty is enabled
    // again. False for the root or a row of another query.
    bool DeleteRow(TFilterRow *row);
    // Rows in display order: the root is row 0.
    TFilterRow *GetRowByNum(int rowNum) const;
    int GetRowCount() const;
    // Empties the tree, the result columns, the parameters and the texts.
    void ClearAll();

    // --- building ------------------------------------------------------------
    void BuildQuery();
    // One filter text per table in TableFilters instead of a statement.
    void BuildFilters();
    bool BuildingFilters() const { return FBuildingFilters; }
    bool Building() const { return FBuilding; }
    // The statement of the last build.
    const QStringList &GetSQL() { return FResult.GetSQL(); }
    // The condition tree as readable text, one line per enabled row.
    QString GetQueryText() const;

    // --- reading SQL -------------------------------------------------------------
    // Replaces the query by the SELECT statement in `lines`: its select list
    // becomes the result columns, its WHERE clause the condition tree, its
    // first FROM table (where the model knows it) the main table. What the
    // model cannot read is listed by UnresolvedItems. ESQLParserError for a
    // statement the parser cannot read; on any failure the query is left
    // empty and usable.
    void ParseSQL(const QStringList &lines);
    // The statement of a sub-query saved in a condition (its SubQuery lines).
    void GetSubQueryText(const QStringList &values, QStringList &lines) const;

    // --- what the model cannot resolve (unresolved.cpp) --------------------------
    // Conditions in display order (disabled ones too), then result columns,
    // then what the last load found missing in the text as a whole. Empty
    // when the query builds exactly what it holds.
    std::vector<TUnresolvedItem> UnresolvedItems() const;
    // For the loaders: what an unresolved row was read from, and a part of the
    // loaded text the query could not take over. Both last until the query
    // is cleared.
    void SetRowSource(const TFilterRow *row, const QString &source);
    void AddLoadProblem(TUnresolvedItem::TKind kind, const QString &source);

    // --- events ----------------------------------------------------------------
    std::function<void(TFilterCond *condition, QString &text)> OnBuildSQL;
    std::function<void(TNQuery *sender)> OnChange;
    std::function<void(TFilterCond *condition)> OnConditionChange;
    std::function<void(TNQuery *sender)> OnParamListChange;

private:
    friend class TFilterRow;
    friend class TFilterBracket;
    friend class TFilterCond;
    friend class TNQueryPanelLink;
    friend class TQueryBuilder;

    void RowInserted(TFilterRow *row);
    void RowRemoving(TFilterRow *row);
    void ForgetRowSources(const TFilterRow *row);
    void RowChanged(TFilterRow *row);
    void RowMoved(TFilterRow *row, TFilterBracket *oldParent, int oldIndex);
    void RowAdded(TFilterRow *row);
    void TitlesChanged();
    void ConditionChanged(TFilterCond *condition);
    void InvalidateNumbers() { FNumbersValid = false; }
    void EnsureNumbers() const;
    TSimpleCond *InitializeNewCondition(TSimpleCond *condition, TDSField *field);
    TFilterBracket *FinishNewBracket(TFilterBracket *added);
    // `modelGone`: the model itself goes, so no placeholder is left either.
    void DropModelEntity(const TModelChange &entity, bool modelGone);

    // Declared before the tree: conditions hand their parameters back to the
    // result when the tree is freed.
    TQueryResult FResult;
    std::unique_ptr<TFilterBracket> FFilter;
    TNTableFilterList FTableFilters;
    TQueryTitles FTitles;
    QPointer<TNCustomDBStructure> FDBStruct;

    TSQLSyntax FSQLSyntax = ssSQL2;
    TSQLOptions FSQLOptions;
    QString FMainTableName;
    QString FSQLTopClause;
    QString FSQLLimitClause;
    TFilterLinkType FDefaultLinkType = fltAny;
    bool FNonEmptyBrackets = false;
    QStringList FSQLParams;
    QString FQueryName;
    QStringList FDescription;
    QStringList FUserData;
    double FVersion = 3.6;
    bool FSaveTitles = false;
    bool FSaveSQLOptions = true;

    bool FActive = true;
    bool FModified = false;
    bool FDestroying = false;
    bool FBuilding = false;
    bool FBuildingFilters = false;
    bool FInsideOnChange = false;
    int FLoading = 0;
    int FSaving = 0;
    int FRefreshing = 0;
    int FUpdating = 0;
    bool FTitlesPending = false;

    std::vector<TNQueryPanelLink *> FLinks;
    TObserverList<TNQueryObserver> FObservers;

    QHash<const TFilterRow *, QString> FRowSources;
    std::vector<std::pair<TUnresolvedItem::TKind, QString>> FLoadProblems;

    mutable bool FNumbersValid = false;
    mutable std::vector<TFilterRow *> FRowsByNum;

    TModelWatch FModelWatch;

    // Last: it leaves its store before anything else of the query goes.
    std::unique_ptr<TNQPBaseLink> FBaseLink;
};

} // namespace vm20
