#include "model/dbstructure.h"

#include "model/errors.h"
#include "model/joingraph.h"
#include "model/messages.h"
#include "model/quietscope.h"
#include "support/exception.h"
#include "support/nstrings.h"

#include <QSet>

#include <algorithm>

namespace vm20 {

namespace {

QString TableText(const TDSTable &table, int mode)
{
    switch (mode) {
    case 0: return table.TableName();
    case 1: return table.TableAlias();
    case 2: return table.DisplayName();
    case 3: return table.CompoundName();
    case 4: return table.FromExpr();
    case 5: return table.FullName();
    }
    return QString();
}

QString FieldText(const TDSField &field, int mode)
{
    switch (mode) {
    case 0: return field.FieldExpr();
    case 1: return field.DisplayName();
    case 2: return field.FullName();
    case 3: return field.SQLExpr();
    }
    return QString();
}

bool IsBinaryType(TFieldType type)
{
    return type == ftVarBytes || type == ftBlob || type == ftTypedBinary;
}

} // namespace

TNCustomDBStructure::TNCustomDBStructure(QObject *parent)
    : QObject(parent)
    , FConditions(this)
    , FFieldGroups(this)
    , FRootGroup(std::make_unique<TDSFieldGroup>(this))
    , FPath(this)
    , FUnrecognizedField(std::make_unique<TDSField>(this))
    , FUnrecognizedOperator(std::make_unique<TDSOperator>())
    , FUnrecognizedCondition(std::make_unique<TDSCondition>(this))
    , FJoinGraph(std::make_unique<TJoinGraph>())
{
    FUnrecognizedField->SetFieldExpr(SUnrecognizedField);
    FUnrecognizedField->SetDisplayName(SUnrecognizedField);
    FUnrecognizedOperator->SetName(SUnrecognizedOperator);
    FUnrecognizedOperator->SetDisplayName(SUnrecognizedOperator);
    FUnrecognizedCondition->SetDisplayFormat(SUnrecognizedCondition);
    LoadDefsOpertors();
    AddDefOperators(false);
    RefillUnrecognizedField();
}

TNCustomDBStructure::~TNCustomDBStructure()
{
    FObservers.Notify([this](TNModelObserver *observer) { observer->ModelDestroyed(this); });
    // Groups first, so that no field reports its destruction to a freed group.
    FFieldGroups.Clear();
    FRootGroup->ClearMembers();
}

double TNCustomDBStructure::LoadedVersion() const
{
    return FLoadedVersion;
}

void TNCustomDBStructure::SetLoadedVersion(double value)
{
    FLoadedVersion = value;
}

void TNCustomDBStructure::Changed(const TModelChange &change)
{
    if (FUpdating)
        return;
    FObservers.Notify([&](TNModelObserver *observer) { observer->ModelChanged(this, change); });
    if (OnChange)
        OnChange(this);
}

void TNCustomDBStructure::EntityDeleting(TModelChangeKind kind, const void *entity)
{
    const TModelChange change{kind, entity};
    FObservers.Notify([&](TNModelObserver *observer) { observer->EntityDeleting(this, change); });
}

void TNCustomDBStructure::Batch(const std::function<void()> &body)
{
    {
        TQuietScope quiet(*this);
        body();
    }
    Changed();
}

// --- tables ---------------------------------------------------------------------

int TNCustomDBStructure::AddTable(const QString &tableName, const QString &displayName)
{
    auto table = std::make_unique<TDSTable>(this);
    {
        TQuietScope quiet(*this);
        table->SetTableName(tableName);
        table->SetTableAlias(tableName);
        table->SetDisplayName(displayName);
    }
    return AddTableRef(std::move(table));
}

int TNCustomDBStructure::AddTableRef(std::unique_ptr<TDSTable> table)
{
    if (!table)
        return -1;
    table->SetDBStruct(this);
    const TDSTable *added = table.get();
    FTables.push_back(std::move(table));
    TableNamesChanged();
    LinksChanged();
    Changed(mckTables, added);
    return GetTableCount() - 1;
}

void TNCustomDBStructure::DelTable(int index)
{
    TDSTable *table = GetTable(index);
    EntityDeleting(mckTables, table);
    for (int i = GetLinkCount() - 1; i >= 0; --i) {
        if (FLinks[i]->ContainsTable(table)) {
            EntityDeleting(mckLinks, FLinks[i].get());
            DetachLink(FLinks[i].get());
            FLinks.erase(FLinks.begin() + i);
        }
    }
    for (const auto &field : FFields)
        field->Tables().Remove(table);
    for (int i = 0; i < FConditions.Count(); ++i)
        FConditions.Items(i)->Tables().Remove(table);
    if (FPath.Contains(table))
        FPath.Clear();
    if (FDefaultMainTable == table)
        FDefaultMainTable = nullptr;
    FTables.erase(FTables.begin() + index);
    TableNamesChanged();
    LinksChanged();
    Changed(mckTables, table);
}

TDSTable *TNCustomDBStructure::GetTable(int index) const
{
    if (index < 0 || index >= GetTableCount())
        throw ENDBStructError(dbseInvalidTableIndex, SDBSEInvalidTableIndex, {index});
    return FTables[index].get();
}

int TNCustomDBStructure::IndexOfTable(const TDSTable *table) const
{
    for (int i = 0; i < GetTableCount(); ++i)
        if (FTables[i].get() == table)
            return i;
    return -1;
}

void TNCustomDBStructure::BuildTableLookup() const
{
    FTablesByName.clear();
    FTablesByAlias.clear();
    // The first table in model order wins a shared name.
    for (const auto &table : FTables) {
        const QString name = table->TableName().toCaseFolded();
        const QString alias = table->TableAlias().toCaseFolded();
        if (!FTablesByName.contains(name))
            FTablesByName.insert(name, table.get());
        if (!FTablesByAlias.contains(alias))
            FTablesByAlias.insert(alias, table.get());
    }
    FTableLookupValid = true;
}

TDSTable *TNCustomDBStructure::TableByName(int mode, const QString &name) const
{
    if (mode == 0 || mode == 1) {
        if (!FTableLookupValid)
            BuildTableLookup();
        const auto &index = mode == 0 ? FTablesByName : FTablesByAlias;
        return index.value(name.toCaseFolded(), nullptr);
    }
    for (const auto &table : FTables)
        if (SameText(TableText(*table, mode), name))
            return table.get();
    return nullptr;
}

void TNCustomDBStructure::GetTableNames(int mode, QStringList &names) const
{
    names.clear();
    for (const auto &table : FTables)
        names.append(TableText(*table, mode));
}

void TNCustomDBStructure::SetDefaultMainTable(TDSTable *value)
{
    FDefaultMainTable = value;
}

// --- fields ---------------------------------------------------------------------

int TNCustomDBStructure::GetLastFieldID() const
{
    if (!FMaxFieldIDValid) {
        FMaxFieldID = 0;
        for (const auto &field : FFields)
            FMaxFieldID = std::max(FMaxFieldID, field->ID());
        FMaxFieldIDValid = true;
    }
    return FMaxFieldID;
}

int TNCustomDBStructure::AddField(TNFieldKind kind, const QString &fieldExpr,
                                  const QString &displayName, TDSTable *table)
{
    auto field = std::make_unique<TDSField>(this);
    {
        TQuietScope quiet(*this);
        field->SetFieldKind(kind);
        field->SetFieldExpr(fieldExpr);
        field->SetDisplayName(displayName);
        field->SetEditType(etAuto);
        if (kind == nfkVirtual) {
            field->SetFieldType(ftString);
            field->SetFieldSize(100);
            ExcludeTablesBySQLExpr(fieldExpr, field->Tables(), field->DBFields());
        } else if (table) {
            field->Tables().Add(table);
            field->SetQuoted(fieldExpr.contains(QLatin1Char(' ')));
        }
        ProcessNewField(field.get());
        if (kind == nfkData && IsBinaryType(field->FieldType()))
            field->SetUseInResult(false);
    }
    return AddFieldRef(std::move(field));
}

void TNCustomDBStructure::ProcessNewField(TDSField *field)
{
    field->SetDBStruct(this);
    if (field->ID() == 0)
        field->SetID(GetLastFieldID() + 1);
    if (field->FieldKind() != nfkData)
        return;
    CheckDatabaseInfo();
    TNDBInfo *info = DatabaseInfo();
    const TDSTable *table = field->Table();
    if (info->Connected() && table) {
        const TDBFieldInfo *column = info->GetFieldList(table->TableName()).FindByName(field->FieldName());
        if (!column)
            throw ENDBStructError(dbseCantFindFieldInTbl, SDBSECantFindFieldInTbl,
                                  {field->FieldName(), table->TableName()});
        field->SetFieldType(column->FieldType());
        field->SetFieldSize(column->FieldSize());
    } else {
        field->SetFieldType(ftString);
        field->SetFieldSize(30);
    }
}

int TNCustomDBStructure::AddFieldRef(std::unique_ptr<TDSField> field)
{
    if (!field)
        return -1;
    TDSField *added = field.get();
    added->SetDBStruct(this);
    if (added->ID() == 0)
        added->SetID(GetLastFieldID() + 1);
    FFields.push_back(std::move(field));
    if (FMaxFieldIDValid)
        FMaxFieldID = std::max(FMaxFieldID, added->ID());
    if (FFieldLookupValid && !FFieldsByID.contains(added->ID()))
        FFieldsByID.insert(added->ID(), added);
    if (TDSFieldGroup *group = added->Group()) {
        if (group->IndexOf(added) < 0)
            group->Add(added);
    } else {
        FRootGroup->Add(added);
    }
    Changed(mckFields, added);
    return GetFieldCount() - 1;
}

void TNCustomDBStructure::DelField(int index)
{
    TDSField *field = GetField(index);
    EntityDeleting(mckFields, field);
    if (!field->Group())
        FRootGroup->Remove(field);
    if (field->ID() >= GetLastFieldID())
        FMaxFieldIDValid = false;
    const void *going = field;
    FFields.erase(FFields.begin() + index);
    FFieldLookupValid = false;
    Changed(mckFields, going);
}

TDSField *TNCustomDBStructure::GetField(int index) const
{
    if (index < 0 || index >= GetFieldCount())
        throw EListError::IndexOutOfBounds(index);
    return FFields[index].get();
}

int TNCustomDBStructure::IndexOfField(const TDSField *field) const
{
    for (int i = 0; i < GetFieldCount(); ++i)
        if (FFields[i].get() == field)
            return i;
    return -1;
}

void TNCustomDBStructure::BuildFieldLookup() const
{
    FFieldsByID.clear();
    FFieldsByID.reserve(FFields.size());
    for (const auto &field : FFields)
        if (!FFieldsByID.contains(field->ID()))
            FFieldsByID.insert(field->ID(), field.get());
    FFieldLookupValid = true;
}

TDSField *TNCustomDBStructure::FieldByID(int id) const
{
    if (!FFieldLookupValid)
        BuildFieldLookup();
    return FFieldsByID.value(id, nullptr);
}

TDSField *TNCustomDBStructure::FieldByName(int mode, const QString &name) const
{
    for (const auto &field : FFields) {
        if (mode == 3) {
            if (SameTextIgnoring(field->SQLExpr(), name, FSQLFormats.QuoteSymbol1(),
                                 FSQLFormats.QuoteSymbol2()))
                return field.get();
        } else if (mode >= 0 && mode < 3 && SameText(FieldText(*field, mode), name)) {
            return field.get();
        }
    }
    return nullptr;
}

void TNCustomDBStructure::GetFieldNames(int mode, QStringList &names) const
{
    names.clear();
    for (const auto &field : FFields)
        names.append(FieldText(*field, mode));
}

TDSField *TNCustomDBStructure::GetFirstResultField() const
{
    for (const auto &field : FFields)
        if (field->UseInResult())
            return field.get();
    return nullptr;
}

bool TNCustomDBStructure::CheckIfAggregate(const QString &expr)
{
    const QString lower = expr.toLower();
    for (const char *name : {"sum(", "count(", "max(", "min(", "avg(", "list("})
        if (lower.contains(QLatin1String(name)))
            return true;
    return false;
}

// --- groups and conditions ------------------------------------------------------------

void TNCustomDBStructure::DeleteGroup(int index)
{
    const std::vector<TDSField *> members = FFieldGroups.Items(index)->Fields();
    FFieldGroups.Delete(index);
    for (TDSField *field : members)
        FRootGroup->Add(field);
    Changed(mckGroups);
}

TDSCondition *TNCustomDBStructure::AddCondition(const QString &displayFormat, const QString &sqlExpr)
{
    auto condition = std::make_unique<TDSCondition>(this);
    {
        TQuietScope quiet(*this);
        condition->SetDisplayFormat(displayFormat);
        condition->SetSQLExpr(sqlExpr);
    }
    TDSCondition *added = FConditions.Add(std::move(condition));
    Changed(mckConditions, added);
    return added;
}

TDSCondition *TNCustomDBStructure::ConditionByID(int id) const
{
    const int index = FConditions.IndexByID(id);
    return index < 0 ? nullptr : FConditions.Items(index);
}

void TNCustomDBStructure::GetConditionCaptions(QStringList &captions) const
{
    captions.clear();
    for (int i = 0; i < FConditions.Count(); ++i)
        captions.append(FConditions.Items(i)->Caption());
}

// --- clearing --------------------------------------------------------------------------

void TNCustomDBStructure::ClearLinks()
{
    if (!FLinks.empty())
        EntityDeleting(mckLinks, nullptr);
    QSet<const TDSLink *> links;
    for (const auto &link : FLinks) {
        links.insert(link.get());
        // Ends outside the model are not reached through the model's tables.
        if (TDSTable *table = link->Table1(); table && table->DBStruct() != this)
            table->RemoveLinkRef(link.get());
        if (TDSTable *table = link->Table2(); table && table->DBStruct() != this)
            table->RemoveLinkRef(link.get());
    }
    for (const auto &table : FTables)
        for (int i = table->LinkCount() - 1; i >= 0; --i)
            if (links.contains(table->GetLink(i)))
                table->DelLink(i);
    FLinks.clear();
    LinksChanged();
    Changed(mckLinks);
}

void TNCustomDBStructure::ClearFields()
{
    if (!FFields.empty())
        EntityDeleting(mckFields, nullptr);
    // Emptying the groups first spares every field a search of its group.
    FRootGroup->ClearMembers();
    for (int i = 0; i < FFieldGroups.Count(); ++i)
        FFieldGroups.Items(i)->ClearMembers();
    FFields.clear();
    FFieldsByID.clear();
    FFieldLookupValid = true;
    FMaxFieldID = 0;
    FMaxFieldIDValid = true;
    Changed(mckFields);
}

void TNCustomDBStructure::ClearTables()
{
    Batch([this] {
        ClearLinks();
        if (!FTables.empty())
            EntityDeleting(mckTables, nullptr);
        QSet<const TDSTable *> tables;
        for (const auto &table : FTables)
            tables.insert(table.get());
        const auto drop = [&](TSimpleDSTableList &list) {
            for (int i = list.Count() - 1; i >= 0; --i)
                if (tables.contains(list.Items(i)))
                    list.Erase(i);
        };
        for (const auto &field : FFields)
            drop(field->Tables());
        for (int i = 0; i < FConditions.Count(); ++i)
            drop(FConditions.Items(i)->Tables());
        FPath.Clear();
        FDefaultMainTable = nullptr;
        FTables.clear();
        TableNamesChanged();
        LinksChanged();
    });
}

void TNCustomDBStructure::ClearStructure()
{
    Batch([this] {
        ClearLinks();
        ClearFields();
        ClearTables();
        FFieldGroups.Clear();
        FRootGroup->ClearMembers();
        FConditions.Clear();
        ClearOperators();
        AddDefOperators(false);
        RefillUnrecognizedField();
    });
}

} // namespace vm20
