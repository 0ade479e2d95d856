// The model's operator list: the built-in table, the optional groups and the
// caption list that translates them.
#include "model/dbstructure.h"

#include "model/errors.h"
#include "model/messages.h"
#include "support/nstrings.h"

namespace vm20 {

namespace {

QString RowName(int row)
{
    return QString::fromLatin1(DefOperatorRow(row).Name);
}

} // namespace

void TNCustomDBStructure::LoadDefsOpertors()
{
    FDefOperators.clear();
    for (int row = 0; row < DefOperatorCount; ++row)
        FDefOperators.append(RowName(row) + QLatin1Char('=') + QLatin1String(DefOperatorRow(row).Caption));
}

void TNCustomDBStructure::MergeDefOperators()
{
    for (int row = 0; row < DefOperatorCount; ++row)
        if (GetDefOperator(RowName(row)).isEmpty())
            SetValueOf(FDefOperators, RowName(row), QLatin1String(DefOperatorRow(row).Caption));
}

QString TNCustomDBStructure::GetDefOperator(const QString &name) const
{
    return ValueOf(FDefOperators, name);
}

void TNCustomDBStructure::SetDefOperators(const QStringList &value)
{
    FDefOperators = value;
    UpdateDefOperators();
}

void TNCustomDBStructure::AddDefOperatorRow(int row, bool update)
{
    const TDefOperatorRow &def = DefOperatorRow(row);
    if (update && OperatorIndexByName(RowName(row)) >= 0)
        return;
    const int index = AddOperator(RowName(row), GetDefOperator(RowName(row)),
                                  QLatin1String(def.SQLExpr),
                                  def.Between ? SAndConj : QString(), def.Types());
    FOperators[index]->SetValueKind(def.Kind);
}

void TNCustomDBStructure::AddDefOperators(bool update)
{
    for (int row = 0; row < AlwaysOperatorCount; ++row)
        AddDefOperatorRow(row, update);
    for (TExOperator group : ExOperatorOrder) {
        if (!FExOperators.contains(group))
            continue;
        AddDefOperatorRow(ExOperatorFirstRow(group), update);
        AddDefOperatorRow(ExOperatorFirstRow(group) + 1, update);
    }
}

void TNCustomDBStructure::SetExOperators(TExOperators value)
{
    if (FExOperators == value)
        return;
    FExOperators = value;
    UpdateExOperators();
    UpdateDefOperators();
}

void TNCustomDBStructure::DeleteOperatorRows(int firstRow)
{
    DeleteOperatorByName(RowName(firstRow));
    DeleteOperatorByName(RowName(firstRow + 1));
}

void TNCustomDBStructure::UpdateOperatorRowCaptions(int firstRow, int count)
{
    for (int row = firstRow; row < firstRow + count; ++row)
        UpdateOperatorCaption(RowName(row), GetDefOperator(RowName(row)));
}

void TNCustomDBStructure::UpdateExOperators()
{
    for (TExOperator group : ExOperatorOrder) {
        const int first = ExOperatorFirstRow(group);
        if (FExOperators.contains(group)) {
            AddDefOperatorRow(first, true);
            AddDefOperatorRow(first + 1, true);
        } else {
            DeleteOperatorRows(first);
        }
    }
}

void TNCustomDBStructure::UpdateDefOperators()
{
    UpdateOperatorRowCaptions(0, AlwaysOperatorCount);
    for (TExOperator group : ExOperatorOrder) {
        const int first = ExOperatorFirstRow(group);
        if (FExOperators.contains(group))
            UpdateOperatorRowCaptions(first, 2);
        else if (group != xoStartsWith)   // that pair is left to UpdateExOperators
            DeleteOperatorRows(first);
    }
}

void TNCustomDBStructure::InitOperator(TDSOperator &op, const QString &name, const QString &caption,
                                       const QString &sqlExpr, const QString &valFormat,
                                       TFieldTypes appliedTypes)
{
    op.SetName(name);
    op.SetDisplayName(caption);
    op.SetSQLExpr(sqlExpr);
    op.SetValFormat(valFormat);
    op.SetAppliedTypes(appliedTypes);
}

int TNCustomDBStructure::AddOperator(const QString &name, const QString &caption,
                                     const QString &sqlExpr, const QString &valFormat,
                                     TFieldTypes appliedTypes)
{
    auto op = std::make_unique<TDSOperator>();
    InitOperator(*op, name, caption, sqlExpr, valFormat, appliedTypes);
    FUnrecognizedField->AddOperator(op.get());
    FOperators.push_back(std::move(op));
    Changed(mckOperators);
    return GetOperatorCount() - 1;
}

int TNCustomDBStructure::AddUpdateOperator(const QString &name, const QString &caption,
                                           const QString &sqlExpr, const QString &valFormat,
                                           TFieldTypes appliedTypes)
{
    const int index = OperatorIndexByName(name);
    if (index < 0)
        return AddOperator(name, caption, sqlExpr, valFormat, appliedTypes);
    InitOperator(*FOperators[index], name, caption, sqlExpr, valFormat, appliedTypes);
    Changed(mckOperators);
    return index;
}

void TNCustomDBStructure::UpdateOperatorCaption(const QString &name, const QString &caption)
{
    TDSOperator *op = OperatorByName(name);
    if (!op || op->DisplayName() == caption)
        return;
    op->SetDisplayName(caption);
    Changed(mckOperators);
}

void TNCustomDBStructure::DeleteOperatorByName(const QString &name)
{
    const int index = OperatorIndexByName(name);
    if (index >= 0)
        DelOperator(index);
}

void TNCustomDBStructure::RemoveOperatorFromFields(const TDSOperator *op)
{
    for (const auto &field : FFields)
        field->RemoveOperator(op);
    FUnrecognizedField->RemoveOperator(op);
}

void TNCustomDBStructure::DelOperator(int index)
{
    const TDSOperator *op = GetOperator(index);
    EntityDeleting(mckOperators, op);
    RemoveOperatorFromFields(op);
    FOperators.erase(FOperators.begin() + index);
    Changed(mckOperators, op);
}

void TNCustomDBStructure::ClearOperators()
{
    if (!FOperators.empty())
        EntityDeleting(mckOperators, nullptr);
    for (const auto &field : FFields)
        field->ClearOperators();
    FUnrecognizedField->ClearOperators();
    FOperators.clear();
    Changed(mckOperators);
}

TDSOperator *TNCustomDBStructure::GetOperator(int index) const
{
    if (index < 0 || index >= GetOperatorCount())
        throw ENDBStructError(dbseInvalidOperatorIndex, SDBSEInvalidOperatorIndex, {index});
    return FOperators[index].get();
}

int TNCustomDBStructure::OperatorIndexByName(const QString &name) const
{
    // Older models call the first operator "EqualTo".
    const QString wanted = SameText(name, QStringLiteral("EqualTo")) ? QStringLiteral("Equal") : name;
    for (int i = 0; i < GetOperatorCount(); ++i)
        if (SameText(FOperators[i]->Name(), wanted))
            return i;
    return -1;
}

TDSOperator *TNCustomDBStructure::OperatorByName(const QString &name) const
{
    const int index = OperatorIndexByName(name);
    return index < 0 ? nullptr : FOperators[index].get();
}

TDSOperator *TNCustomDBStructure::OperatorByExpr(const QString &text) const
{
    for (const auto &op : FOperators)
        if (op->SQLExpr().contains(text, Qt::CaseInsensitive))
            return op.get();
    return nullptr;
}

void TNCustomDBStructure::GetOperatorNames(QStringList &names) const
{
    names.clear();
    for (const auto &op : FOperators)
        names.append(op->Name());
}

int TNCustomDBStructure::IndexOfOperator(const TDSOperator *op) const
{
    for (int i = 0; i < GetOperatorCount(); ++i)
        if (FOperators[i].get() == op)
            return i;
    return -1;
}

void TNCustomDBStructure::RefillUnrecognizedField()
{
    // The placeholder stands for any field a query could name, so every
    // operator applies to it.
    FUnrecognizedField->ClearOperators();
    for (const auto &op : FOperators)
        FUnrecognizedField->AddOperator(op.get());
}

} // namespace vm20
