#include "model/dsoperator.h"

#include "support/exception.h"

namespace vm20 {

TDSOperator::TDSOperator()
    : FAppliedTypes(DefaultAppliedTypes())
{
}

TFieldTypes TDSOperator::DefaultAppliedTypes()
{
    return {ftString, ftSmallint, ftInteger, ftWord, ftBoolean, ftFloat, ftCurrency, ftBCD,
            ftDate, ftTime, ftDateTime, ftAutoInc, ftMemo, ftFmtMemo, ftFixedChar,
            ftWideString, ftLargeint, ftTimeStamp};
}

int TDSOperator::GetParamCount() const
{
    int count = 0;
    while (FSQLExpr.contains(QLatin1Char('@') + QString::number(count + 1), Qt::CaseSensitive))
        ++count;
    return count;
}

TFieldTypes ComparableTypes()
{
    return {ftString, ftSmallint, ftInteger, ftWord, ftBoolean, ftFloat, ftCurrency, ftBCD,
            ftDate, ftTime, ftDateTime, ftAutoInc, ftFixedChar, ftWideString, ftLargeint,
            ftTimeStamp};
}

TFieldTypes NullableTypes()
{
    return ComparableTypes() + TFieldTypes{ftMemo, ftFmtMemo};
}

TFieldTypes OrderedTypes()
{
    return ComparableTypes() - TFieldTypes{ftBoolean};
}

TFieldTypes TextualTypes()
{
    return {ftString, ftMemo, ftFmtMemo, ftFixedChar, ftWideString};
}

namespace {

// The stored templates are irregular on purpose (no blank after ">", "NOT ("
// beside "not("): saved queries are matched against them as they stand.
const TDefOperatorRow Rows[DefOperatorCount] = {
    {"Equal", "is equal to", "@f = '@1'", ComparableTypes, vkScalar, false},
    {"NotEqual", "is not equal to", "@f <> '@1'", ComparableTypes, vkScalar, false},
    {"LessThan", "is less than", "@f < '@1'", OrderedTypes, vkScalar, false},
    {"LessOrEqual", "is less than or equal to", "@f <= '@1'", OrderedTypes, vkScalar, false},
    {"GreaterThan", "is greater than", "@f >'@1'", OrderedTypes, vkScalar, false},
    {"GreaterOrEqual", "is greater than or equal to", "@f >= '@1'", OrderedTypes, vkScalar, false},
    {"IsNull", "is null", "@f is null", NullableTypes, vkScalar, false},
    {"InList", "is in list", "@f in (@1)", ComparableTypes, vkList, false},
    {"NotInList", "is not in list", "NOT (@f in (@1))", ComparableTypes, vkList, false},
    {"StartsWith", "starts with", "@f like '@1%'", TextualTypes, vkScalar, false},
    {"NotStartsWith", "does not start with", "not(@f like '@1%')", TextualTypes, vkScalar, false},
    {"Contains", "contains", "@f like '%@1%'", TextualTypes, vkScalar, false},
    {"NotContains", "does not contain", "not(@f like '%@1%')", TextualTypes, vkScalar, false},
    {"Between", "is between", "@f between '@1' and '@2'", OrderedTypes, vkScalar, true},
    {"NotBetween", "is not between", "NOT (@f between '@1' and '@2')", OrderedTypes, vkScalar, true},
};

} // namespace

const TDefOperatorRow &DefOperatorRow(int index)
{
    if (index < 0 || index >= DefOperatorCount)
        throw EListError::IndexOutOfBounds(index);
    return Rows[index];
}

int ExOperatorFirstRow(TExOperator group)
{
    switch (group) {
    case xoInList: return 7;
    case xoStartsWith: return 9;
    case xoContains: return 11;
    case xoBetween: return 13;
    }
    return -1;
}

} // namespace vm20
