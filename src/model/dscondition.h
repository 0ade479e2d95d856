#pragma once
// Predefined conditions of the model: a complete SQL condition with a display
// text whose "@" marks stand for values.
#include "model/dstablelist.h"
#include "model/fieldtype.h"
#include "model/valueeditors.h"
#include "model/vmglobal.h"

#include <QString>

#include <memory>
#include <vector>

namespace vm20 {

class TNCustomDBStructure;

class TDSValue
{
public:
    TFieldType DataType() const { return FDataType; }
    // A different type frees the editor.
    void SetDataType(TFieldType value);
    TValueKind DataKind() const { return FDataKind; }
    void SetDataKind(TValueKind value) { FDataKind = value; }
    TDSValueEditor *ValueEditor() const { return FValueEditor.get(); }
    void SetValueEditor(std::unique_ptr<TDSValueEditor> value) { FValueEditor = std::move(value); }
    const QString &Text() const { return FText; }
    void SetText(const QString &value) { FText = value; }
    // Copies type, kind, text and a copy of the editor.
    void Assign(const TDSValue &source);

private:
    TFieldType FDataType = ftUnknown;
    TValueKind FDataKind = vkScalar;
    std::unique_ptr<TDSValueEditor> FValueEditor;
    QString FText;
};

class TDSValueList
{
public:
    int Count() const { return int(FItems.size()); }
    TDSValue *Items(int index) const;   // EListError outside the list
    TDSValue *Add();
    void Delete(int index);
    void Clear() { FItems.clear(); }

private:
    std::vector<std::unique_ptr<TDSValue>> FItems;
};

class TDSCondition
{
public:
    explicit TDSCondition(TNCustomDBStructure *dbStruct = nullptr);
    TDSCondition(const TDSCondition &) = delete;
    TDSCondition &operator=(const TDSCondition &) = delete;

    TNCustomDBStructure *DBStruct() const { return FDBStruct; }
    void SetDBStruct(TNCustomDBStructure *value) { FDBStruct = value; }
    // Given by the condition list on Add when 0; loaders set it beforehand.
    int ID() const { return FID; }
    void SetID(int value) { FID = value; }
    // A different text recomputes Tables from the model.
    const QString &SQLExpr() const { return FSQLExpr; }
    void SetSQLExpr(const QString &value);
    // A different text rebuilds Values: one value per "@" holding the text before it.
    const QString &DisplayFormat() const { return FDisplayFormat; }
    void SetDisplayFormat(const QString &value);
    TDSValueList &Values() { return FValues; }
    const TDSValueList &Values() const { return FValues; }
    TSimpleDSTableList &Tables() { return FTables; }
    const TSimpleDSTableList &Tables() const { return FTables; }
    // The display format when there are no values, else the values' texts
    // joined with one blank.
    QString Caption() const;

    void UpdateValueList();
    void UpdateTables();

private:
    TNCustomDBStructure *FDBStruct = nullptr;
    int FID = 0;
    QString FSQLExpr;
    QString FDisplayFormat;
    TDSValueList FValues;
    TSimpleDSTableList FTables;
};

class TDSConditionList
{
public:
    explicit TDSConditionList(TNCustomDBStructure *dbStruct = nullptr) : FDBStruct(dbStruct) {}

    int Count() const { return int(FItems.size()); }
    TDSCondition *Items(int index) const;   // EListError outside the list
    TDSCondition *GetItem(int index) const { return Items(index); }
    // Takes the condition, binds it to the model (recomputing its tables) and
    // gives it MaxID + 1 when its ID is 0; a larger ID raises MaxID.
    TDSCondition *Add(std::unique_ptr<TDSCondition> condition);
    int IndexByID(int id) const;
    void Delete(int index);
    void Clear();
    int MaxID() const { return FMaxID; }

private:
    TNCustomDBStructure *FDBStruct;
    std::vector<std::unique_ptr<TDSCondition>> FItems;
    int FMaxID = 0;
};

} // namespace vm20
