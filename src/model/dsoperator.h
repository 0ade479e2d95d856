#pragma once
// A comparison operator of the model: an SQL template with "@f" for the
// field's expression and "@1", "@2", ... for the values.
#include "model/fieldtype.h"
#include "model/vmglobal.h"

#include <QString>
#include <QVariant>

namespace vm20 {

class TDSOperator
{
public:
    TDSOperator();

    const QString &Name() const { return FName; }
    void SetName(const QString &value) { FName = value; }
    const QString &DisplayName() const { return FDisplayName; }
    void SetDisplayName(const QString &value) { FDisplayName = value; }
    const QString &SQLExpr() const { return FSQLExpr; }
    void SetSQLExpr(const QString &value) { FSQLExpr = value; }
    // The largest n with "@1" ... "@n" all in the template; a gap stops the count.
    int ParamCount() const { return GetParamCount(); }
    int GetParamCount() const;
    const QString &ValFormat() const { return FValFormat; }
    void SetValFormat(const QString &value) { FValFormat = value; }
    TFieldType ExprType() const { return FExprType; }
    void SetExprType(TFieldType value) { FExprType = value; }
    TValueKind ValueKind() const { return FValueKind; }
    void SetValueKind(TValueKind value) { FValueKind = value; }
    bool CaseInsensative() const { return FCaseInsensative; }
    void SetCaseInsensative(bool value) { FCaseInsensative = value; }
    const QVariant &OleObject() const { return FOleObject; }
    void SetOleObject(const QVariant &value) { FOleObject = value; }
    TFieldTypes AppliedTypes() const { return FAppliedTypes; }
    void SetAppliedTypes(TFieldTypes value) { FAppliedTypes = value; }

    // The types a new operator applies to.
    static TFieldTypes DefaultAppliedTypes();

private:
    QString FName;
    QString FDisplayName;
    QString FSQLExpr;
    QString FValFormat;
    TFieldType FExprType = ftUnknown;
    TValueKind FValueKind = vkScalar;
    bool FCaseInsensative = false;
    QVariant FOleObject;
    TFieldTypes FAppliedTypes;
};

// The type sets of the built-in operators.
TFieldTypes ComparableTypes();
TFieldTypes NullableTypes();
TFieldTypes OrderedTypes();
TFieldTypes TextualTypes();

// One row of the built-in operator table.
struct TDefOperatorRow
{
    const char *Name;
    const char *Caption;
    const char *SQLExpr;
    TFieldTypes (*Types)();
    TValueKind Kind;
    bool Between;   // ValFormat "and"
};

// Rows 1..7 are always there; each optional group adds one pair.
constexpr int DefOperatorCount = 15;
constexpr int AlwaysOperatorCount = 7;
const TDefOperatorRow &DefOperatorRow(int index);   // 0-based
// The two rows (0-based) of an optional group.
int ExOperatorFirstRow(TExOperator group);
// The groups in the order they are added and updated.
inline constexpr TExOperator ExOperatorOrder[] = {xoInList, xoStartsWith, xoContains, xoBetween};

} // namespace vm20
