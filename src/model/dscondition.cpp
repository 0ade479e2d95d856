#include "model/dscondition.h"

#include "model/dbstructure.h"
#include "support/exception.h"

namespace vm20 {

void TDSValue::SetDataType(TFieldType value)
{
    if (FDataType == value)
        return;
    FDataType = value;
    FValueEditor.reset();
}

void TDSValue::Assign(const TDSValue &source)
{
    if (&source == this)
        return;
    FDataType = source.FDataType;
    FDataKind = source.FDataKind;
    FValueEditor = source.FValueEditor ? source.FValueEditor->Clone() : nullptr;
    FText = source.FText;
}

TDSValue *TDSValueList::Items(int index) const
{
    if (index < 0 || index >= Count())
        throw EListError::IndexOutOfBounds(index);
    return FItems[index].get();
}

TDSValue *TDSValueList::Add()
{
    FItems.push_back(std::make_unique<TDSValue>());
    return FItems.back().get();
}

void TDSValueList::Delete(int index)
{
    if (index < 0 || index >= Count())
        throw EListError::IndexOutOfBounds(index);
    FItems.erase(FItems.begin() + index);
}

TDSCondition::TDSCondition(TNCustomDBStructure *dbStruct)
    : FDBStruct(dbStruct)
{
}

void TDSCondition::SetSQLExpr(const QString &value)
{
    if (FSQLExpr == value)
        return;
    FSQLExpr = value;
    UpdateTables();
    if (FDBStruct)
        FDBStruct->Changed(mckConditions, this);
}

void TDSCondition::SetDisplayFormat(const QString &value)
{
    if (FDisplayFormat == value)
        return;
    FDisplayFormat = value;
    UpdateValueList();
    if (FDBStruct)
        FDBStruct->Changed(mckConditions, this);
}

void TDSCondition::UpdateValueList()
{
    // Existing values are reused so that their types and editors survive an
    // edit of the texts; values beyond the last mark go.
    int start = 0;
    int k = 0;
    for (int at = FDisplayFormat.indexOf(QLatin1Char('@')); at >= 0;
         at = FDisplayFormat.indexOf(QLatin1Char('@'), start)) {
        TDSValue *value = k < FValues.Count() ? FValues.Items(k) : nullptr;
        if (!value) {
            value = FValues.Add();
            value->SetDataType(ftString);
        }
        value->SetText(FDisplayFormat.mid(start, at - start));
        start = at + 1;
        ++k;
    }
    while (FValues.Count() > k)
        FValues.Delete(FValues.Count() - 1);
}

void TDSCondition::UpdateTables()
{
    if (!FDBStruct)
        return;
    QStringList columns;
    FDBStruct->ExcludeTablesBySQLExpr(FSQLExpr, FTables, columns);
}

QString TDSCondition::Caption() const
{
    if (FValues.Count() == 0)
        return FDisplayFormat;
    QStringList texts;
    for (int i = 0; i < FValues.Count(); ++i)
        texts.append(FValues.Items(i)->Text());
    return texts.join(QLatin1Char(' '));
}

TDSCondition *TDSConditionList::Items(int index) const
{
    if (index < 0 || index >= Count())
        throw EListError::IndexOutOfBounds(index);
    return FItems[index].get();
}

TDSCondition *TDSConditionList::Add(std::unique_ptr<TDSCondition> condition)
{
    if (!condition)
        return nullptr;
    if (condition->ID() == 0)
        condition->SetID(FMaxID + 1);
    if (condition->ID() > FMaxID)
        FMaxID = condition->ID();
    if (condition->DBStruct() != FDBStruct) {
        condition->SetDBStruct(FDBStruct);
        condition->UpdateTables();
    }
    FItems.push_back(std::move(condition));
    return FItems.back().get();
}

int TDSConditionList::IndexByID(int id) const
{
    for (int i = 0; i < Count(); ++i)
        if (FItems[i]->ID() == id)
            return i;
    return -1;
}

void TDSConditionList::Delete(int index)
{
    if (index < 0 || index >= Count())
        throw EListError::IndexOutOfBounds(index);
    const TDSCondition *going = FItems[std::size_t(index)].get();
    if (FDBStruct)
        FDBStruct->EntityDeleting(mckConditions, going);
    FItems.erase(FItems.begin() + index);
    if (FDBStruct)
        FDBStruct->Changed(mckConditions, going);
}

void TDSConditionList::Clear()
{
    if (FDBStruct && !FItems.empty())
        FDBStruct->EntityDeleting(mckConditions, nullptr);
    FItems.clear();
    FMaxID = 0;
}

} // namespace vm20
