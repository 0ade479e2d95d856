#pragma once
// The data model container: owns the tables, fields, links, operators,
// predefined conditions and field groups of one database description, with
// its SQL spelling options and an optional metadata provider.
//
// Access scheme used throughout the model:
//  - the container's own collections are read with GetXxxCount() and
//    GetXxx(index) (GetTableCount/GetTable, GetFieldCount/GetField,
//    GetLinkCount/GetLink, GetOperatorCount/GetOperator); conditions and field
//    groups are list objects reached through Conditions() and FieldGroups();
//  - list classes (TSimpleDSTableList, TDSFieldList, TDSFieldGroupList,
//    TDSConditionList, TDSValueList, TDBFieldList) use Count() and Items(index);
//  - an entity's reference lists keep their own names: a table's LinkCount()
//    and GetLink(i), a field's OperatCount() and GetOperator(i), a path's
//    TableCount() and GetTable(i).
// Indexes outside a collection raise ENDBStructError (tables 1, links 2,
// operators 3) or EListError (the rest). Lookups by name ignore letter case
// and return none / -1 when nothing matches.
//
// Building in code: AddField on a data field consults the metadata provider
// (code 11 without one). Without a provider, make the TDSField yourself and
// hand it to AddFieldRef, which binds it, gives it an ID and puts it into the
// root group.
#include "model/dbinfo.h"
#include "model/dscondition.h"
#include "model/dsfield.h"
#include "model/dsfieldgroup.h"
#include "model/dslink.h"
#include "model/dsoperator.h"
#include "model/dspath.h"
#include "model/dstable.h"
#include "model/dstablelist.h"
#include "model/fieldtype.h"
#include "model/modelobserver.h"
#include "model/sqlformats.h"
#include "model/vmglobal.h"
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

class TJoinGraph;

class TNCustomDBStructure : public QObject
{
public:
    explicit TNCustomDBStructure(QObject *parent = nullptr);
    ~TNCustomDBStructure() override;

    // --- options ------------------------------------------------------------
    TSQLFormats &SQLFormats() { return FSQLFormats; }
    const TSQLFormats &SQLFormats() const { return FSQLFormats; }
    void SetSQLFormats(const TSQLFormats &value) { value.AssignTo(FSQLFormats); }
    TDMOptions &DMOptions() { return FDMOptions; }
    const TDMOptions &DMOptions() const { return FDMOptions; }
    void SetDMOptions(const TDMOptions &value) { value.AssignTo(FDMOptions); }
    TFieldTypes GetQuotedTypes() const { return FSQLFormats.QuotedTypes(); }
    void SetQuotedTypes(TFieldTypes value) { FSQLFormats.SetQuotedTypes(value); }
    bool AutoAddFields() const { return FAutoAddFields; }
    void SetAutoAddFields(bool value) { FAutoAddFields = value; }
    bool StoreStruct() const { return FStoreStruct; }
    void SetStoreStruct(bool value) { FStoreStruct = value; }
    const QString &HelpFileName() const { return FHelpFileName; }
    void SetHelpFileName(const QString &value) { FHelpFileName = value; }
    int SEHelpContext() const { return FSEHelpContext; }
    void SetSEHelpContext(int value) { FSEHelpContext = value; }
    const QString &InitialSEPath() const { return FInitialSEPath; }
    void SetInitialSEPath(const QString &value) { FInitialSEPath = value; }
    bool RootFieldsFirst() const { return FRootFieldsFirst; }
    void SetRootFieldsFirst(bool value) { FRootFieldsFirst = value; }
    // Connection parameters as name=value lines ("DSN", "UserName",
    // "Password"), a description and the author's own notes. Only the XML
    // form of the model carries them; clearing the structure keeps them.
    QStringList &DBParams() { return FDBParams; }
    const QStringList &DBParams() const { return FDBParams; }
    void SetDBParams(const QStringList &value) { FDBParams = value; }
    QStringList &Description() { return FDescription; }
    const QStringList &Description() const { return FDescription; }
    void SetDescription(const QStringList &value) { FDescription = value; }
    QStringList &CustomInfo() { return FCustomInfo; }
    const QStringList &CustomInfo() const { return FCustomInfo; }
    void SetCustomInfo(const QStringList &value) { FCustomInfo = value; }
    // The version of the model text read last (0 when none was read).
    double LoadedVersion() const;
    void SetLoadedVersion(double value);

    // --- change notification ---------------------------------------------------
    // Fired by Changed() unless an update is in progress, after the listeners.
    std::function<void(TNCustomDBStructure *)> OnChange;
    void Changed(const TModelChange &change = {});
    void Changed(TModelChangeKind kind, const void *entity = nullptr) { Changed({kind, entity}); }
    // Listeners (modelobserver.h) are told in the order they were added.
    void AddObserver(TNModelObserver *observer) { FObservers.Add(observer); }
    void RemoveObserver(TNModelObserver *observer) { FObservers.Remove(observer); }
    // Tells the listeners that an entity is about to be freed.
    void EntityDeleting(TModelChangeKind kind, const void *entity);
    // No nesting and no notification on EndUpdate: callers that batch changes
    // call Changed() themselves afterwards.
    void BeginUpdate() { FUpdating = true; }
    void EndUpdate() { FUpdating = false; }
    bool Updating() const { return FUpdating; }

    // --- tables -----------------------------------------------------------------
    int AddTable(const QString &tableName, const QString &displayName);
    int AddTableRef(std::unique_ptr<TDSTable> table);
    // Deletes the table with the links that touch it, and drops it from the
    // fields' and conditions' table lists, the current path and the main table.
    void DelTable(int index);
    int GetTableCount() const { return int(FTables.size()); }
    TDSTable *GetTable(int index) const;
    int IndexOfTable(const TDSTable *table) const;
    // Modes: 0 TableName, 1 TableAlias, 2 DisplayName, 3 CompoundName,
    // 4 FromExpr, 5 FullName. First match in model order.
    TDSTable *TableByName(int mode, const QString &name) const;
    void GetTableNames(int mode, QStringList &names) const;
    TDSTable *DefaultMainTable() const { return FDefaultMainTable; }
    void SetDefaultMainTable(TDSTable *value);

    // --- fields -----------------------------------------------------------------
    int GetLastFieldID() const;
    // Builds the field, consults the provider for a data field (codes 10, 11)
    // and only then appends it; a failure leaves the model unchanged.
    // The new field gets no operators: call its AddAppliedOperators.
    int AddField(TNFieldKind kind, const QString &fieldExpr, const QString &displayName,
                 TDSTable *table);
    void ProcessNewField(TDSField *field);
    // Appends an existing field: binds it, gives it an ID when it has none
    // and puts it at the end of its group (the root group when it has none).
    int AddFieldRef(std::unique_ptr<TDSField> field);
    void DelField(int index);
    int GetFieldCount() const { return int(FFields.size()); }
    TDSField *GetField(int index) const;
    int IndexOfField(const TDSField *field) const;
    TDSField *FieldByID(int id) const;
    // Modes: 0 FieldExpr, 1 DisplayName, 2 FullName, 3 SQLExpr ignoring the
    // quote symbols. First match in model order.
    TDSField *FieldByName(int mode, const QString &name) const;
    void GetFieldNames(int mode, QStringList &names) const;
    TDSField *GetFirstResultField() const;
    // No field may be used in results.
    bool GetEmpty() const { return GetFirstResultField() == nullptr; }
    static bool CheckIfAggregate(const QString &expr);
    // The model tables an expression qualifies columns with ("q.name", q an
    // alias or else a table name), and those qualified column texts; both
    // lists are refilled without duplicates.
    void ExcludeTablesBySQLExpr(const QString &expr, TSimpleDSTableList &tables,
                                QStringList &columns) const;

    // --- field groups ------------------------------------------------------------
    TDSFieldGroupList &FieldGroups() { return FFieldGroups; }
    const TDSFieldGroupList &FieldGroups() const { return FFieldGroups; }
    // The fields of no named group, in display order. A loader that rebuilds
    // it clears it first, so that moving fields into their groups is cheap.
    TDSFieldGroup &RootGroup() { return *FRootGroup; }
    const TDSFieldGroup &RootGroup() const { return *FRootGroup; }
    // Deletes a group; its members move to the end of the root group.
    void DeleteGroup(int index);

    // --- links ------------------------------------------------------------------
    int AddLinkByRef(std::unique_ptr<TDSLink> link);
    // "T1-T2:a=b,c<>val:1": the link between the tables named (TableName,
    // without regard to case). "!=" is stored as "<>"; a missing table raises
    // code 4, a text without ":" or an item without comparison code 12.
    TDSLink *AddLinkByExpr(const QString &text);
    void SaveLinksToStrings(QStringList &lines) const;
    // Blank lines are skipped.
    void LoadLinksFromStrings(const QStringList &lines);
    TDSLink *FindLink(const QString &name1, const QString &name2) const;
    void DelLink(int index);
    int GetLinkCount() const { return int(FLinks.size()); }
    TDSLink *GetLink(int index) const;
    int IndexOfLink(const TDSLink *link) const;

    // --- operators --------------------------------------------------------------
    QStringList &DefOperators() { return FDefOperators; }
    const QStringList &DefOperators() const { return FDefOperators; }
    void SetDefOperators(const QStringList &value);
    void LoadDefsOpertors();
    void MergeDefOperators();
    QString GetDefOperator(const QString &name) const;
    void AddDefOperators(bool update);
    TExOperators ExOperators() const { return FExOperators; }
    void SetExOperators(TExOperators value);
    void UpdateExOperators();
    void UpdateDefOperators();
    int AddOperator(const QString &name, const QString &caption, const QString &sqlExpr,
                    const QString &valFormat, TFieldTypes appliedTypes);
    // Updates the operator of that name, or adds one; returns its index.
    int AddUpdateOperator(const QString &name, const QString &caption, const QString &sqlExpr,
                          const QString &valFormat, TFieldTypes appliedTypes);
    static void InitOperator(TDSOperator &op, const QString &name, const QString &caption,
                             const QString &sqlExpr, const QString &valFormat,
                             TFieldTypes appliedTypes);
    void UpdateOperatorCaption(const QString &name, const QString &caption);
    void DeleteOperatorByName(const QString &name);
    // Drops the operator from every field first.
    void DelOperator(int index);
    int GetOperatorCount() const { return int(FOperators.size()); }
    TDSOperator *GetOperator(int index) const;
    // "EqualTo" is read as "Equal".
    TDSOperator *OperatorByName(const QString &name) const;
    int OperatorIndexByName(const QString &name) const;
    // The first operator whose template contains `text`, ignoring case.
    TDSOperator *OperatorByExpr(const QString &text) const;
    void GetOperatorNames(QStringList &names) const;
    int IndexOfOperator(const TDSOperator *op) const;

    // --- predefined conditions ----------------------------------------------------
    TDSConditionList &Conditions() { return FConditions; }
    const TDSConditionList &Conditions() const { return FConditions; }
    TDSCondition *AddCondition(const QString &displayFormat, const QString &sqlExpr);
    TDSCondition *ConditionByID(int id) const;
    void GetConditionCaptions(QStringList &captions) const;

    // --- placeholders for what a loaded query names but the model lacks ----------
    TDSField *UnrecognizedField() const { return FUnrecognizedField.get(); }
    TDSOperator *UnrecognizedOperator() const { return FUnrecognizedOperator.get(); }
    TDSCondition *UnrecognizedCondition() const { return FUnrecognizedCondition.get(); }

    // --- clearing ---------------------------------------------------------------
    void ClearLinks();
    void ClearFields();
    void ClearTables();
    void ClearOperators();
    // Links, fields, tables, groups and conditions go; the operators are reset
    // to the built-in ones.
    void ClearStructure();

    // --- join paths ---------------------------------------------------------------
    // The shortest chain of linked tables from the table aliased `name1` to the
    // one aliased `name2`, written into Path(); none when they are not linked.
    // Among chains of equal length the one taking earlier links wins.
    TDSPath *GetPath(const QString &name1, const QString &name2);
    // One level-by-level expansion step from the end of `path`: true when
    // `target` is a neighbour (and `nextLevel` is then emptied), else the
    // longer candidates are appended to `nextLevel`.
    bool CheckPath(const TDSPath &path, const TDSTable *target,
                   std::vector<std::unique_ptr<TDSPath>> &nextLevel);
    TDSPath &Path() { return FPath; }
    const TDSPath &Path() const { return FPath; }

    // --- metadata provider ----------------------------------------------------------
    TNDBInfo *DatabaseInfo() const { return FDatabaseInfo.data(); }
    // A different provider is attached and refreshed from (UpdateDatabaseInfo,
    // UpdateSQLFormats).
    void SetDatabaseInfo(TNDBInfo *value);
    void CheckDatabaseInfo() const;   // ENDBStructError 11 without a provider
    // Hands the provider description kept from a model text to the provider.
    void UpdateDatabaseInfo();
    // Takes the provider's table name pattern when FullTableName is empty.
    void UpdateSQLFormats();
    // The provider description read from or written to a model text.
    const QStringList &DBSpecInfo() const { return FDBSpecInfo; }
    void SetDBSpecInfo(const QStringList &lines) { FDBSpecInfo = lines; }
    // Rebuilds the whole model from the provider: a table per entry ("name" or
    // "name=display name"), its links, and per table a group of typed data
    // fields in column order with their operators; the first table becomes
    // the default main table.
    void RetriveDataModelInfo();

    // --- text format --------------------------------------------------------------------
    void SaveToStrings(QStringList &lines) const;
    void LoadFromStrings(const QStringList &lines);
    void SaveToFile(const QString &fileName) const;
    void LoadFromFile(const QString &fileName);
    QString GetStructureAsText() const;
    void SetStructureAsText(const QString &text);
    QString GetStructString() const { return GetStructureAsText(); }
    void SetStructString(const QString &text) { SetStructureAsText(text); }
    QString SaveAppliedTypes(TFieldTypes types) const;
    TFieldTypes ReadAppliedTypes(const QString &text, double version) const;

private:
    friend class TDSTable;
    friend class TDSField;
    friend class TDSLink;

    // Entities report what invalidates the lookup caches and the join graph.
    void TableNamesChanged() { FTableLookupValid = false; }
    void FieldIDsChanged()
    {
        FFieldLookupValid = false;
        FMaxFieldIDValid = false;
    }
    void LinksChanged();

    void BuildTableLookup() const;
    void BuildFieldLookup() const;
    void RemoveOperatorFromFields(const TDSOperator *op);
    void DetachLink(TDSLink *link);
    void AddDefOperatorRow(int row, bool update);
    void DeleteOperatorRows(int firstRow);
    void UpdateOperatorRowCaptions(int firstRow, int count);
    void RefillUnrecognizedField();
    // Runs `body` with notification off, restores the caller's update flag
    // and signals one change.
    void Batch(const std::function<void()> &body);

    TSQLFormats FSQLFormats;
    TDMOptions FDMOptions;
    QPointer<TNDBInfo> FDatabaseInfo;
    bool FAutoAddFields = false;
    bool FStoreStruct = true;
    QString FHelpFileName;
    int FSEHelpContext = 0;
    QString FInitialSEPath;
    bool FRootFieldsFirst = false;
    double FLoadedVersion = 0;
    bool FUpdating = false;
    QStringList FDBSpecInfo;
    QStringList FDBParams;
    QStringList FDescription;
    QStringList FCustomInfo;

    std::vector<std::unique_ptr<TDSTable>> FTables;
    std::vector<std::unique_ptr<TDSField>> FFields;
    std::vector<std::unique_ptr<TDSLink>> FLinks;
    std::vector<std::unique_ptr<TDSOperator>> FOperators;
    TDSConditionList FConditions;
    TDSFieldGroupList FFieldGroups;
    std::unique_ptr<TDSFieldGroup> FRootGroup;
    QStringList FDefOperators;
    TExOperators FExOperators = AllExOperators;
    TDSPath FPath;
    TDSTable *FDefaultMainTable = nullptr;

    std::unique_ptr<TDSField> FUnrecognizedField;
    std::unique_ptr<TDSOperator> FUnrecognizedOperator;
    std::unique_ptr<TDSCondition> FUnrecognizedCondition;

    // Lookup caches, rebuilt on demand after a change.
    mutable QHash<QString, TDSTable *> FTablesByName;
    mutable QHash<QString, TDSTable *> FTablesByAlias;
    mutable bool FTableLookupValid = false;
    mutable QHash<int, TDSField *> FFieldsByID;
    mutable bool FFieldLookupValid = false;
    mutable int FMaxFieldID = 0;
    mutable bool FMaxFieldIDValid = true;

    std::unique_ptr<TJoinGraph> FJoinGraph;
    TObserverList<TNModelObserver> FObservers;
};

// The model with its properties published for the host's designer.
class TNDBStructure : public TNCustomDBStructure
{
public:
    using TNCustomDBStructure::TNCustomDBStructure;
};

} // namespace vm20
