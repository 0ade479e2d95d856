#include "model/dsfield.h"

#include "model/dbstructure.h"
#include "model/dsfieldgroup.h"
#include "model/dsoperator.h"
#include "model/dstable.h"
#include "model/errors.h"
#include "model/messages.h"
#include "model/sqlnames.h"
#include "support/exception.h"
#include "support/nstrings.h"

#include <algorithm>

namespace vm20 {

namespace {

const TSQLFormats &FormatsOf(const TNCustomDBStructure *model)
{
    static const TSQLFormats defaults;
    return model ? model->SQLFormats() : defaults;
}

std::unique_ptr<TDSValueEditor> MakeEditor(TDSEditType type, TNCustomDBStructure *model)
{
    switch (type) {
    case etAuto: return nullptr;
    case etEdit: return std::make_unique<TDSTextEditor>();
    case etList: return std::make_unique<TDSListEditor>();
    case etCustom: return std::make_unique<TDSCustomEditor>();
    case etSQL: return std::make_unique<TDSSQLEditor>(model);
    }
    return nullptr;
}

} // namespace

TDSField::TDSField(TNCustomDBStructure *dbStruct)
    : FDBStruct(dbStruct)
{
}

TDSField::~TDSField()
{
    if (FGroup)
        FGroup->Remove(this);
}

void TDSField::SetDBStruct(TNCustomDBStructure *value)
{
    FDBStruct = value;
    if (auto *editor = dynamic_cast<TDSSQLEditor *>(FValueEditor.get()))
        editor->SetDBStruct(value);
}

void TDSField::SetID(int value)
{
    if (FID == value)
        return;
    FID = value;
    if (FDBStruct)
        FDBStruct->FieldIDsChanged();
}

void TDSField::SetFieldName(const QString &value)
{
    if (FFieldKind == nfkVirtual)
        throw ENDBStructError(dbseAssignVirtFldName, SDBSEAssignVirtFldName);
    FFieldExpr = value;
    NotifyModel();
}

void TDSField::SetEditType(TDSEditType value)
{
    if (FEditType == value)
        return;
    FValueEditor = MakeEditor(value, FDBStruct);
    FEditType = value;
    NotifyModel();
}

void TDSField::SetGroup(TDSFieldGroup *value)
{
    if (FGroup == value)
        return;
    if (FGroup)
        FGroup->Remove(this);
    else if (FDBStruct)
        FDBStruct->RootGroup().Remove(this);
    FGroup = value;
    if (FGroup)
        FGroup->Add(this);
    else if (FDBStruct)
        FDBStruct->RootGroup().Add(this);
}

void TDSField::SetUseInConditions(bool value)
{
    FUseInConditions = value;
    if (value && FOperators.empty())
        AddAppliedOperators();
    NotifyModel();
}

void TDSField::SetIsAggregate(bool value)
{
    FIsAggregate = value && FFieldKind == nfkVirtual;
    NotifyModel();
}

QString TDSField::FilterSQLExpr() const
{
    if (!FQuoted)
        return FFieldExpr;
    const TSQLFormats &formats = FormatsOf(FDBStruct);
    return QuotedSQLName(FFieldExpr, formats.QuoteSymbol1(), formats.QuoteSymbol2());
}

QString TDSField::SQLExpr() const
{
    if (FFieldKind == nfkVirtual)
        return FFieldExpr;
    if (const TDSTable *table = Table())
        return table->WhereExpr() + QLatin1Char('.') + FilterSQLExpr();
    return FilterSQLExpr();
}

void TDSField::SetSQLExpr(const QString &value)
{
    if (FFieldKind == nfkData)
        throw ENDBStructError(dbseAssignExpr, SDBSEAssignExpr);
    FFieldExpr = value;
    if (FDBStruct)
        FDBStruct->ExcludeTablesBySQLExpr(value, FTables, FDBFields);
    NotifyModel();
}

QString TDSField::NormalSQLExpr() const
{
    if (FFieldKind == nfkVirtual)
        return FFieldExpr;
    const QString quoted = QuotedSQLName(FFieldExpr, QLatin1Char('"'), QLatin1Char('"'));
    if (const TDSTable *table = Table())
        return table->WhereExpr() + QLatin1Char('.') + quoted;
    return quoted;
}

QString TDSField::FullName() const
{
    if (FFieldKind == nfkData)
        if (const TDSTable *table = Table())
            return table->TableName() + QLatin1Char('.') + FFieldExpr;
    return FFieldExpr;
}

QString TDSField::GroupName() const
{
    return FGroup ? FGroup->GroupName() : QString();
}

QString TDSField::GetCompoundName(const QString &separator) const
{
    const QString group = GroupName();
    return group.isEmpty() ? FDisplayName : group + separator + FDisplayName;
}

QString TDSField::GroupByFields() const
{
    // Joined plainly: comma text would put a column like T."Unit Price" in
    // quotes of its own and break the GROUP BY clause.
    if (FFieldKind == nfkVirtual)
        return FDBFields.join(QLatin1Char(','));
    return SQLExpr();
}

QString TDSField::ValueAsString(const QString &value) const
{
    if (FormatsOf(FDBStruct).QuotedTypes().contains(FFieldType))
        return QuotedStr(value, QLatin1Char('\''));
    return value;
}

TDSOperator *TDSField::GetOperator(int index) const
{
    if (index < 0 || index >= OperatCount())
        throw EListError::IndexOutOfBounds(index);
    return FOperators[index];
}

void TDSField::GetOperatorNames(QStringList &names) const
{
    names.clear();
    for (const TDSOperator *op : FOperators)
        names.append(op->Name());
}

void TDSField::AddOperator(TDSOperator *op)
{
    if (op)
        FOperators.push_back(op);
}

void TDSField::AddOperatorByName(const QString &name)
{
    TDSOperator *op = FDBStruct ? FDBStruct->OperatorByName(name) : nullptr;
    if (!op)
        throw ENDBStructError(dbseOperatorNotFound, SDBSEOperatorNotFound, {name});
    FOperators.push_back(op);
}

void TDSField::DelOperator(int index)
{
    if (index < 0 || index >= OperatCount())
        throw EListError::IndexOutOfBounds(index);
    FOperators.erase(FOperators.begin() + index);
}

void TDSField::RemoveOperator(const TDSOperator *op)
{
    FOperators.erase(std::remove(FOperators.begin(), FOperators.end(), op), FOperators.end());
}

void TDSField::MoveOperat(int curIndex, int newIndex)
{
    if (curIndex < 0 || curIndex >= OperatCount())
        throw EListError::IndexOutOfBounds(curIndex);
    if (newIndex < 0 || newIndex >= OperatCount())
        throw EListError::IndexOutOfBounds(newIndex);
    TDSOperator *op = FOperators[curIndex];
    FOperators.erase(FOperators.begin() + curIndex);
    FOperators.insert(FOperators.begin() + newIndex, op);
}

int TDSField::IndexOfOperator(const TDSOperator *op) const
{
    const auto it = std::find(FOperators.begin(), FOperators.end(), op);
    return it == FOperators.end() ? -1 : int(it - FOperators.begin());
}

void TDSField::AddAppliedOperators()
{
    FOperators.clear();
    // Type sets hold 56 bits in the stored forms; nothing above is tested.
    if (!FDBStruct || FFieldType < 0 || FFieldType >= 56)
        return;
    for (int i = 0; i < FDBStruct->GetOperatorCount(); ++i) {
        TDSOperator *op = FDBStruct->GetOperator(i);
        if (op->AppliedTypes().contains(FFieldType))
            FOperators.push_back(op);
    }
}

TDSField *TDSFieldList::Items(int index) const
{
    if (index < 0 || index >= Count())
        throw EListError::IndexOutOfBounds(index);
    return FItems[index];
}

void TDSFieldList::Insert(int index, TDSField *field)
{
    if (index < 0 || index > Count())
        throw EListError::IndexOutOfBounds(index);
    FItems.insert(FItems.begin() + index, field);
}

void TDSFieldList::Delete(int index)
{
    if (index < 0 || index >= Count())
        throw EListError::IndexOutOfBounds(index);
    FItems.erase(FItems.begin() + index);
}

bool TDSFieldList::Remove(const TDSField *field)
{
    // From the back: fields are mostly removed soon after being added.
    const auto it = std::find(FItems.rbegin(), FItems.rend(), field);
    if (it == FItems.rend())
        return false;
    FItems.erase(std::next(it).base());
    return true;
}

int TDSFieldList::IndexOf(const TDSField *field) const
{
    const auto it = std::find(FItems.begin(), FItems.end(), field);
    return it == FItems.end() ? -1 : int(it - FItems.begin());
}

void TDSField::NotifyModel()
{
    if (FDBStruct)
        FDBStruct->Changed(mckFields, this);
}

} // namespace vm20
