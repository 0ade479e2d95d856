#pragma once
// A query parameter: one value of one condition that the statement carries as
// ":name" instead of a literal. The query's result owns the parameters.
#include "model/fieldtype.h"

#include <QString>

namespace vm20 {

class TFilterCond;
class TQueryResult;

class TSQLParam
{
public:
    TSQLParam(TFilterCond *condition, int valueIndex)
        : FCondition(condition), FValueIndex(valueIndex)
    {
    }

    const QString &ParamName() const { return FParamName; }
    // Keeps the owning query's name index in step.
    void SetParamName(const QString &value);
    TFieldType ParamType() const { return FParamType; }
    void SetParamType(TFieldType value) { FParamType = value; }
    TFilterCond *Condition() const { return FCondition; }
    int ValueIndex() const { return FValueIndex; }
    const QString &DisplayName() const { return FDisplayName; }
    void SetDisplayName(const QString &value) { FDisplayName = value; }
    const QString &Value() const { return FValue; }
    void SetValue(const QString &value) { FValue = value; }
    // The text around the value in the condition, "@v" standing for it
    // ("%@v%" for a contains operator).
    const QString &ValueFormat() const { return FValueFormat; }
    void SetValueFormat(const QString &value) { FValueFormat = value; }

    QString GetFullValue() const
    {
        if (FValueFormat.isEmpty())
            return FValue;
        QString result = FValueFormat;
        return result.replace(QStringLiteral("@v"), FValue);
    }

private:
    friend class TQueryResult;
    TQueryResult *FOwner = nullptr;
    QString FParamName;
    TFieldType FParamType = ftUnknown;
    TFilterCond *FCondition;
    int FValueIndex;
    QString FDisplayName;
    QString FValue;
    QString FValueFormat;
};

} // namespace vm20
