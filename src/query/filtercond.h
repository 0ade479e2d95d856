#pragma once
// The leaves of the condition tree: a condition on one model field with one
// operator (TSimpleCond), or a predefined condition of the model
// (TCustomCond). Both hold two value slots, numbered from 1; each value may
// stand for a query parameter instead of a constant.
#include "model/fieldtype.h"
#include "model/vmglobal.h"
#include "query/filterrow.h"
#include "query/sqlsyntax.h"

#include <QString>
#include <QStringList>

#include <array>
#include <vector>

namespace vm20 {

class TDSField;
class TDSOperator;
class TDSCondition;
class TDSTable;
class TSQLParam;

class TFilterCond : public TFilterRow
{
public:
    ~TFilterCond() override;

    virtual TFieldType GetValueType(int index) const = 0;
    virtual TValueKind GetValueKind(int index) const = 0;
    // The model tables the condition touches.
    virtual const std::vector<TDSTable *> &GetTables() const = 0;
    // The SQL template with its placeholders.
    virtual QString GetSQLExpr() const = 0;
    virtual int GetValueCount() const = 0;
    virtual int GetValueSize(int index) const;

    // Value index 1 is the first slot, any higher index the second; an index
    // below 1 raises EListError.
    QString GetValue(int index) const;
    // Also sets the caption to the text shown for the value.
    void SetValue(int index, const QString &text);
    QString GetValueCaption(int index) const;
    void SetValueCaption(int index, const QString &caption);
    QString GetValueHint(int index) const;
    void SetValueHint(int index, const QString &hint);

    bool GetValueIsParam(int index) const;
    // Marking a value creates its parameter in the query's result; clearing
    // the mark deletes it.
    void SetValueIsParam(int index, bool value);
    TSQLParam *GetParam(int index) const;
    void SetParam(int index, TSQLParam *param);

    // A sub-query value keeps the saved sub-query and its options.
    const QStringList &SubQuery() const { return FSubQuery; }
    void SetSubQuery(const QStringList &lines) { FSubQuery = lines; }
    TSQLOptions SubQueryOptions() const { return FSubQueryOptions; }
    void SetSubQueryOptions(TSQLOptions value) { FSubQueryOptions = value; }

    // What the value's label shows: the parameter's name, the caption, or the
    // empty-label text.
    QString ValueLabel(int index) const;

protected:
    TFilterCond(TFilterRowType type, TNQuery *query);
    // The caption a value gets when its text is set.
    virtual QString CaptionForValue(int index, const QString &text) const;
    void ConditionChanged();

private:
    struct TValueSlot
    {
        QString Text;
        QString Caption;
        QString Hint;
        bool IsParam = false;
        TSQLParam *Param = nullptr;
    };
    TValueSlot &Slot(int index);
    const TValueSlot &Slot(int index) const;

    std::array<TValueSlot, 2> FValues;
    QStringList FSubQuery;
    TSQLOptions FSubQueryOptions;
};

class TSimpleCond : public TFilterCond
{
public:
    explicit TSimpleCond(TNQuery *query);

    TDSField *Field() const { return FField; }
    // A field whose operators do not include the current operator brings its
    // own first operator.
    void SetField(TDSField *field);
    TDSOperator *Operator() const { return FOperator; }
    void SetOperator(TDSOperator *op);

    TFieldType GetExprType() const;
    // Writes the condition's value into the query's SQLParams under the
    // field's name.
    void UpdateSQLParams() const;
    // The operator is case-insensitive and the field's expression is text.
    bool IsCaseInsensitive() const;

    bool GetIsHavingRow() const override;
    QStringList Labels() const override;
    TFieldType GetValueType(int index) const override;
    TValueKind GetValueKind(int index) const override;
    const std::vector<TDSTable *> &GetTables() const override;
    QString GetSQLExpr() const override;
    int GetValueCount() const override;
    int GetValueSize(int index) const override;

protected:
    QString CaptionForValue(int index, const QString &text) const override;

private:
    friend class TNQuery;
    TDSField *FField = nullptr;
    TDSOperator *FOperator = nullptr;
    // The operator's value count, kept while its template stays the same
    // (counting searches the template once per value).
    mutable const TDSOperator *FCountedOperator = nullptr;
    mutable QString FCountedTemplate;
    mutable int FValueCount = 0;
};

class TCustomCond : public TFilterCond
{
public:
    TCustomCond(TNQuery *query, TDSCondition *condition);

    TDSCondition *Condition() const { return FCondition; }
    void SetCondition(TDSCondition *condition);

    bool GetIsHavingRow() const override { return false; }
    QStringList Labels() const override;
    TFieldType GetValueType(int index) const override;
    TValueKind GetValueKind(int index) const override;
    const std::vector<TDSTable *> &GetTables() const override;
    QString GetSQLExpr() const override;
    int GetValueCount() const override;

private:
    friend class TNQuery;
    TDSCondition *FCondition;
};

// Field types that hold text (a case-insensitive operator lowers them).
bool IsStringType(TFieldType type);

} // namespace vm20
