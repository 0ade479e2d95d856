#pragma once
// A field of the data model: a column of a table (nfkData) or a calculated SQL
// expression (nfkVirtual), with its operators and the way values are entered.
#include "model/dstablelist.h"
#include "model/fieldtype.h"
#include "model/valueeditors.h"
#include "model/vmglobal.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>
#include <vector>

namespace vm20 {

class TDSFieldGroup;
class TDSOperator;
class TNCustomDBStructure;

class TDSField
{
public:
    explicit TDSField(TNCustomDBStructure *dbStruct = nullptr);
    ~TDSField();
    TDSField(const TDSField &) = delete;
    TDSField &operator=(const TDSField &) = delete;

    TNCustomDBStructure *DBStruct() const { return FDBStruct; }
    void SetDBStruct(TNCustomDBStructure *value);
    int ID() const { return FID; }
    void SetID(int value);
    // The raw text: a column name or an SQL expression, without the checks of
    // SetFieldName / SetSQLExpr (loaders use it).
    const QString &FieldExpr() const { return FFieldExpr; }
    void SetFieldExpr(const QString &value)
    {
        if (FFieldExpr == value)
            return;
        FFieldExpr = value;
        NotifyModel();
    }
    const QString &FieldName() const { return FFieldExpr; }
    void SetFieldName(const QString &value);   // ENDBStructError 7 on a virtual field
    const QString &DisplayName() const { return FDisplayName; }
    void SetDisplayName(const QString &value)
    {
        if (FDisplayName == value)
            return;
        FDisplayName = value;
        NotifyModel();
    }
    TSimpleDSTableList &Tables() { return FTables; }
    const TSimpleDSTableList &Tables() const { return FTables; }
    TDSTable *Table() const { return FTables.Count() ? FTables.Items(0) : nullptr; }
    TNFieldKind FieldKind() const { return FFieldKind; }
    void SetFieldKind(TNFieldKind value) { FFieldKind = value; }
    QStringList &DBFields() { return FDBFields; }
    const QStringList &DBFields() const { return FDBFields; }
    bool Quoted() const { return FQuoted; }
    void SetQuoted(bool value)
    {
        if (FQuoted == value)
            return;
        FQuoted = value;
        NotifyModel();
    }
    TFieldType FieldType() const { return FFieldType; }
    void SetFieldType(TFieldType value)
    {
        if (FFieldType == value)
            return;
        FFieldType = value;
        NotifyModel();
    }
    int FieldSize() const { return FFieldSize; }
    void SetFieldSize(int value)
    {
        if (FFieldSize == value)
            return;
        FFieldSize = value;
        NotifyModel();
    }
    // A different type replaces the editor by a fresh one of the new kind.
    TDSEditType EditType() const { return FEditType; }
    void SetEditType(TDSEditType value);
    TDSValueEditor *ValueEditor() const { return FValueEditor.get(); }
    // The group, none for a field of the root group. Setting it moves the field
    // from its old group (or the model's root group) to the end of the new one
    // (or of the root group).
    TDSFieldGroup *Group() const { return FGroup; }
    void SetGroup(TDSFieldGroup *value);
    // Switching on for a field without operators fills them by type.
    bool UseInConditions() const { return FUseInConditions; }
    void SetUseInConditions(bool value);
    bool UseInResult() const { return FUseInResult; }
    void SetUseInResult(bool value)
    {
        if (FUseInResult == value)
            return;
        FUseInResult = value;
        NotifyModel();
    }
    // Always false on a data field.
    bool IsAggregate() const { return FIsAggregate; }
    void SetIsAggregate(bool value);
    const QVariant &OleObject() const { return FOleObject; }
    void SetOleObject(const QVariant &value) { FOleObject = value; }
    const QVariant &UserData() const { return FUserData; }
    void SetUserData(const QVariant &value) { FUserData = value; }

    // Derived SQL texts.
    QString FilterSQLExpr() const;
    QString SQLExpr() const;
    // ENDBStructError 8 on a data field; on a virtual field recomputes Tables
    // and DBFields from the expression.
    void SetSQLExpr(const QString &value);
    QString NormalSQLExpr() const;
    QString FullName() const;
    QString GroupName() const;
    QString GetCompoundName(const QString &separator) const;
    // The columns of a virtual field joined with ",", or the data field's SQLExpr.
    QString GroupByFields() const;
    // The value in single quotes (inner quotes doubled) when the field's type
    // is one of the model's quoted types, else unchanged.
    QString ValueAsString(const QString &value) const;

    // The operators offered for the field (the model's, not owned).
    int OperatCount() const { return int(FOperators.size()); }
    TDSOperator *GetOperator(int index) const;   // EListError outside the list
    const std::vector<TDSOperator *> &Operators() const { return FOperators; }
    void GetOperatorNames(QStringList &names) const;
    void AddOperator(TDSOperator *op);
    void AddOperatorByName(const QString &name);   // ENDBStructError 6 when unknown
    void DelOperator(int index);
    void RemoveOperator(const TDSOperator *op);
    void MoveOperat(int curIndex, int newIndex);
    int IndexOfOperator(const TDSOperator *op) const;
    void ClearOperators() { FOperators.clear(); }
    // Every model operator, in model order, that applies to the field's type.
    void AddAppliedOperators();

private:
    // Tells the model's listeners that this entity changed.
    void NotifyModel();
    TNCustomDBStructure *FDBStruct = nullptr;
    int FID = 0;
    QString FFieldExpr;
    QString FDisplayName;
    TSimpleDSTableList FTables;
    TNFieldKind FFieldKind = nfkData;
    std::vector<TDSOperator *> FOperators;
    QStringList FDBFields;
    bool FQuoted = false;
    TFieldType FFieldType = ftUnknown;
    int FFieldSize = 0;
    TDSEditType FEditType = etAuto;
    std::unique_ptr<TDSValueEditor> FValueEditor;
    TDSFieldGroup *FGroup = nullptr;
    bool FUseInConditions = true;
    bool FUseInResult = true;
    bool FIsAggregate = false;
    QVariant FOleObject;
    QVariant FUserData;

    friend class TDSFieldGroup;
};

// A list of field references; not owned.
class TDSFieldList
{
public:
    explicit TDSFieldList(TNCustomDBStructure *dbStruct = nullptr) : FDbStruct(dbStruct) {}
    virtual ~TDSFieldList() = default;
    TDSFieldList(const TDSFieldList &) = delete;
    TDSFieldList &operator=(const TDSFieldList &) = delete;

    TNCustomDBStructure *DbStruct() const { return FDbStruct; }
    void SetDbStruct(TNCustomDBStructure *value) { FDbStruct = value; }
    int Count() const { return int(FItems.size()); }
    TDSField *Items(int index) const;   // EListError outside the list
    const std::vector<TDSField *> &Fields() const { return FItems; }
    void Add(TDSField *field) { FItems.push_back(field); }
    void Insert(int index, TDSField *field);
    void Delete(int index);
    // Removes the last reference to `field`; false when it is not listed.
    bool Remove(const TDSField *field);
    int IndexOf(const TDSField *field) const;
    void Clear() { FItems.clear(); }

protected:
    std::vector<TDSField *> FItems;

private:
    TNCustomDBStructure *FDbStruct;
};

} // namespace vm20
