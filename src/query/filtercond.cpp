#include "query/filtercond.h"

#include "model/dbstructure.h"
#include "model/dscondition.h"
#include "model/dsfield.h"
#include "model/dsoperator.h"
#include "model/valueeditors.h"
#include "query/query.h"
#include "support/exception.h"
#include "support/nstrings.h"

namespace vm20 {

namespace {

const std::vector<TDSTable *> NoTables;

} // namespace

bool IsStringType(TFieldType type)
{
    switch (type) {
    case ftString:
    case ftMemo:
    case ftFmtMemo:
    case ftFixedChar:
    case ftWideString:
        return true;
    default:
        return false;
    }
}

// --- TFilterCond ------------------------------------------------------------------

TFilterCond::TFilterCond(TFilterRowType type, TNQuery *query)
    : TFilterRow(type, query)
{
}

TFilterCond::~TFilterCond()
{
    if (Query() && !Query()->Destroying())
        Query()->QResult().DeleteParameters(this);
}

int TFilterCond::GetValueSize(int index) const
{
    (void)index;
    return 0;
}

TFilterCond::TValueSlot &TFilterCond::Slot(int index)
{
    if (index < 1)
        throw EListError::IndexOutOfBounds(index);
    return FValues[index == 1 ? 0 : 1];
}

const TFilterCond::TValueSlot &TFilterCond::Slot(int index) const
{
    if (index < 1)
        throw EListError::IndexOutOfBounds(index);
    return FValues[index == 1 ? 0 : 1];
}

QString TFilterCond::GetValue(int index) const
{
    return Slot(index).Text;
}

void TFilterCond::SetValue(int index, const QString &text)
{
    TValueSlot &slot = Slot(index);
    const QString caption = CaptionForValue(index, text);
    if (slot.Text == text && slot.Caption == caption)
        return;
    slot.Text = text;
    slot.Caption = caption;
    ConditionChanged();
}

QString TFilterCond::GetValueCaption(int index) const
{
    return Slot(index).Caption;
}

void TFilterCond::SetValueCaption(int index, const QString &caption)
{
    TValueSlot &slot = Slot(index);
    if (slot.Caption == caption)
        return;
    slot.Caption = caption;
    NotifyChanged();
}

QString TFilterCond::GetValueHint(int index) const
{
    return Slot(index).Hint;
}

void TFilterCond::SetValueHint(int index, const QString &hint)
{
    Slot(index).Hint = hint;
}

bool TFilterCond::GetValueIsParam(int index) const
{
    return Slot(index).IsParam;
}

void TFilterCond::SetValueIsParam(int index, bool value)
{
    TValueSlot &slot = Slot(index);
    if (slot.IsParam == value)
        return;
    slot.IsParam = value;
    if (Query()) {
        TQueryResult &result = Query()->QResult();
        if (value && !slot.Param)
            slot.Param = result.AddParameter(this, index == 1 ? 1 : 2);
        else if (!value && slot.Param)
            result.DeleteParameter(slot.Param);   // clears slot.Param through SetParam
    }
    NotifyChanged();
}

TSQLParam *TFilterCond::GetParam(int index) const
{
    return Slot(index).Param;
}

void TFilterCond::SetParam(int index, TSQLParam *param)
{
    Slot(index).Param = param;
}

QString TFilterCond::ValueLabel(int index) const
{
    const TValueSlot &slot = Slot(index);
    QString text;
    if (slot.IsParam && slot.Param)
        text = slot.Param->DisplayName().isEmpty() ? slot.Param->ParamName()
                                                    : slot.Param->DisplayName();
    else
        text = slot.Caption.isEmpty() ? slot.Text : slot.Caption;
    return text.isEmpty() ? EmptyLabelText : text;
}

QString TFilterCond::CaptionForValue(int index, const QString &text) const
{
    (void)index;
    return text;
}

void TFilterCond::ConditionChanged()
{
    if (Query())
        Query()->ConditionChanged(this);
}

// --- TSimpleCond ------------------------------------------------------------------

TSimpleCond::TSimpleCond(TNQuery *query)
    : TFilterCond(frtSimpleCondition, query)
{
}

void TSimpleCond::SetField(TDSField *field)
{
    if (FField == field)
        return;
    FField = field;
    if (field && field->IndexOfOperator(FOperator) < 0)
        FOperator = field->OperatCount() > 0 ? field->GetOperator(0) : nullptr;
    ConditionChanged();
}

void TSimpleCond::SetOperator(TDSOperator *op)
{
    if (FOperator == op)
        return;
    FOperator = op;
    ConditionChanged();
}

TFieldType TSimpleCond::GetExprType() const
{
    return FField ? FField->FieldType() : ftUnknown;
}

bool TSimpleCond::IsCaseInsensitive() const
{
    return FOperator && FOperator->CaseInsensative() && IsStringType(GetExprType());
}

void TSimpleCond::UpdateSQLParams() const
{
    if (!Query() || !FField)
        return;
    QString value;
    if (FOperator && FOperator->Name() == QLatin1String("Equal"))
        value = FField->ValueAsString(GetValue(1));
    SetValueOf(Query()->SQLParams(), FField->FieldName(), value);
}

bool TSimpleCond::GetIsHavingRow() const
{
    return FField && FField->IsAggregate();
}

TFieldType TSimpleCond::GetValueType(int index) const
{
    (void)index;
    if (FOperator && FOperator->ExprType() != ftUnknown)
        return FOperator->ExprType();
    return GetExprType();
}

TValueKind TSimpleCond::GetValueKind(int index) const
{
    (void)index;
    return FOperator ? FOperator->ValueKind() : vkScalar;
}

const std::vector<TDSTable *> &TSimpleCond::GetTables() const
{
    return FField ? FField->Tables().Tables() : NoTables;
}

QString TSimpleCond::GetSQLExpr() const
{
    if (!FOperator)
        return QString();
    QString expr = FOperator->SQLExpr();
    static const QStringList likeOperators = {
        QStringLiteral("StartsWith"), QStringLiteral("Contains"),
        QStringLiteral("NotStartsWith"), QStringLiteral("NotContains")};
    if (likeOperators.contains(FOperator->Name())) {
        const TNCustomDBStructure *model = Query() ? Query()->DBStruct() : nullptr;
        const QChar wildcard = model ? model->SQLFormats().WildcardChar() : QLatin1Char('%');
        expr.replace(QLatin1Char('%'), wildcard);
    }
    return expr;
}

int TSimpleCond::GetValueCount() const
{
    if (!FOperator)
        return 0;
    if (FCountedOperator != FOperator || FCountedTemplate != FOperator->SQLExpr()) {
        FCountedOperator = FOperator;
        FCountedTemplate = FOperator->SQLExpr();
        FValueCount = FOperator->ParamCount();
    }
    return FValueCount;
}

int TSimpleCond::GetValueSize(int index) const
{
    (void)index;
    return FField ? FField->FieldSize() : 0;
}

QString TSimpleCond::CaptionForValue(int index, const QString &text) const
{
    // A pick list shows the item whose value was chosen.
    const auto *list = FField ? dynamic_cast<const TDSListEditor *>(FField->ValueEditor()) : nullptr;
    if (list && GetValueKind(index) != vkList) {
        const qsizetype at = list->Values().indexOf(text);
        if (at >= 0 && at < list->Items().size())
            return list->Items()[at];
    }
    return text;
}

QStringList TSimpleCond::Labels() const
{
    QStringList labels;
    const QString field = FField ? FField->DisplayName() : QString();
    labels << (field.isEmpty() ? EmptyLabelText : field);
    const QString op = FOperator ? FOperator->DisplayName() : QString();
    labels << (op.isEmpty() ? EmptyLabelText : op);
    const int count = GetValueCount();
    if (count >= 1)
        labels << ValueLabel(1);
    if (count >= 2)
        labels << FOperator->ValFormat() << ValueLabel(2);
    return labels;
}

// --- TCustomCond ------------------------------------------------------------------

TCustomCond::TCustomCond(TNQuery *query, TDSCondition *condition)
    : TFilterCond(frtCustomCondition, query), FCondition(condition)
{
}

void TCustomCond::SetCondition(TDSCondition *condition)
{
    if (FCondition == condition)
        return;
    FCondition = condition;
    ConditionChanged();
}

TFieldType TCustomCond::GetValueType(int index) const
{
    const int count = GetValueCount();
    if (count == 0)
        return ftUnknown;
    const int at = qBound(1, index, count) - 1;
    return FCondition->Values().Items(at)->DataType();
}

TValueKind TCustomCond::GetValueKind(int index) const
{
    const int count = GetValueCount();
    if (count == 0)
        return vkScalar;
    const int at = qBound(1, index, count) - 1;
    return FCondition->Values().Items(at)->DataKind();
}

const std::vector<TDSTable *> &TCustomCond::GetTables() const
{
    return FCondition ? FCondition->Tables().Tables() : NoTables;
}

QString TCustomCond::GetSQLExpr() const
{
    return FCondition ? FCondition->SQLExpr() : QString();
}

int TCustomCond::GetValueCount() const
{
    return FCondition ? FCondition->Values().Count() : 0;
}

QStringList TCustomCond::Labels() const
{
    if (!FCondition)
        return {EmptyLabelText};
    const int count = GetValueCount();
    if (count == 0)
        return {FCondition->Caption()};
    // The texts before the value marks frame the two value labels.
    QStringList labels;
    labels << FCondition->Values().Items(0)->Text().trimmed() << ValueLabel(1);
    if (count >= 2)
        labels << FCondition->Values().Items(1)->Text().trimmed() << ValueLabel(2);
    return labels;
}

} // namespace vm20
