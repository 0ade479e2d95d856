#pragma once
// How a value is entered for a field or a predefined condition's value: plain
// or masked text, a pick list, a list filled by SQL, the application's own
// editor, or a saved sub-query.
#include "model/fieldtype.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace vm20 {

class TNCustomDBStructure;

enum TTextEditorKind : int { tekSimple, tekMask, tekDate, tekTime };

class TDSValueEditor
{
public:
    virtual ~TDSValueEditor() = default;
    virtual void Refresh() {}
    // A copy of the same kind with the same content.
    virtual std::unique_ptr<TDSValueEditor> Clone() const = 0;
};

class TDSTextEditor : public TDSValueEditor
{
public:
    static constexpr int AutoUpperCase = 1;
    static constexpr int AutoLowerCase = 2;

    TTextEditorKind Kind() const { return FKind; }
    void SetKind(TTextEditorKind value) { FKind = value; }
    const QString &EditMask() const { return FEditMask; }
    void SetEditMask(const QString &value) { FEditMask = value; }
    const QString &DefaultValue() const { return FDefaultValue; }
    void SetDefaultValue(const QString &value) { FDefaultValue = value; }
    TFieldType ValueType() const { return FValueType; }
    void SetValueType(TFieldType value) { FValueType = value; }
    bool UseFormattedValue() const { return FUseFormattedValue; }
    void SetUseFormattedValue(bool value) { FUseFormattedValue = value; }
    int Options() const { return FOptions; }
    void SetOptions(int value) { FOptions = value; }
    // Upper and lower case exclude each other: switching one on clears the other.
    void SetOption(int option, bool on);
    bool GetOption(int option) const { return (FOptions & option) == option; }

    std::unique_ptr<TDSValueEditor> Clone() const override;

private:
    TTextEditorKind FKind = tekSimple;
    QString FEditMask;
    QString FDefaultValue;
    TFieldType FValueType = ftUnknown;
    bool FUseFormattedValue = false;
    int FOptions = 0;
};

// The user picks from Items; the SQL receives the entry of Values at the same index.
class TDSListEditor : public TDSValueEditor
{
public:
    QStringList &Items() { return FItems; }
    const QStringList &Items() const { return FItems; }
    QStringList &Values() { return FValues; }
    const QStringList &Values() const { return FValues; }
    void ClearList();

    std::unique_ptr<TDSValueEditor> Clone() const override;

private:
    QStringList FItems;
    QStringList FValues;
};

// A pick list filled by running SQLText through the model's metadata provider.
class TDSSQLEditor : public TDSListEditor
{
public:
    explicit TDSSQLEditor(TNCustomDBStructure *dbStruct = nullptr) : FDBStruct(dbStruct) {}

    const QString &SQLText() const { return FSQLText; }
    void SetSQLText(const QString &value) { FSQLText = value; }
    QStringList &SQLParams() { return FSQLParams; }
    const QStringList &SQLParams() const { return FSQLParams; }
    bool Opened() const { return FOpened; }
    // Opening needs the model's provider (ENDBStructError 11 without one) and
    // fills the lists from it; closing empties them.
    void SetOpened(bool value);
    TNCustomDBStructure *DBStruct() const { return FDBStruct; }
    void SetDBStruct(TNCustomDBStructure *value) { FDBStruct = value; }

    bool HasParameter(const QString &name) const;
    // Replaces ":name" by the value of every name=value line of SQLParams, in order.
    QString ApplyParams(const QString &text) const;
    void Refresh() override;

    std::unique_ptr<TDSValueEditor> Clone() const override;

private:
    QString FSQLText;
    QStringList FSQLParams;
    bool FOpened = false;
    TNCustomDBStructure *FDBStruct = nullptr;
};

class TDSCustomEditor : public TDSValueEditor
{
public:
    QStringList &Data() { return FData; }
    const QStringList &Data() const { return FData; }

    std::unique_ptr<TDSValueEditor> Clone() const override;

private:
    QStringList FData;
};

// Holds a saved query (the query text format) used as a value.
class TDSSubQueryEditor : public TDSValueEditor
{
public:
    QStringList &QueryData() { return FQueryData; }
    const QStringList &QueryData() const { return FQueryData; }

    std::unique_ptr<TDSValueEditor> Clone() const override;

private:
    QStringList FQueryData;
};

} // namespace vm20
