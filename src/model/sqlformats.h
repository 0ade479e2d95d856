#pragma once
// How SQL text is spelled for the target database (TSQLFormats) and how
// tables of several databases are qualified (TDMOptions). The model owns one
// of each.
#include "model/fieldtype.h"

#include <QChar>
#include <QString>

namespace vm20 {

class TSQLFormats
{
public:
    TSQLFormats();

    // Copies every option to `dest`.
    void AssignTo(TSQLFormats &dest) const;

    const QString &Date() const { return FDate; }
    void SetDate(const QString &value) { FDate = value; }
    const QString &Time() const { return FTime; }
    void SetTime(const QString &value) { FTime = value; }
    const QString &DateTime() const { return FDateTime; }
    void SetDateTime(const QString &value) { FDateTime = value; }
    QChar QuoteSymbol1() const { return FQuoteSymbol1; }
    void SetQuoteSymbol1(QChar value) { FQuoteSymbol1 = value; }
    QChar QuoteSymbol2() const { return FQuoteSymbol2; }
    void SetQuoteSymbol2(QChar value) { FQuoteSymbol2 = value; }
    const QString &FalseValue() const { return FFalseValue; }
    void SetFalseValue(const QString &value) { FFalseValue = value; }
    const QString &TrueValue() const { return FTrueValue; }
    void SetTrueValue(const QString &value) { FTrueValue = value; }
    const QString &FullTableName() const { return FFullTableName; }
    void SetFullTableName(const QString &value) { FFullTableName = value; }
    TFieldTypes QuotedTypes() const { return FQuotedTypes; }
    void SetQuotedTypes(TFieldTypes value) { FQuotedTypes = value; }

    // Views of QuotedTypes. QuoteDate reads ftDate alone but writes all four
    // date and time types, so a set with ftTime and without ftDate reads false.
    bool QuoteBool() const;
    void SetQuoteBool(bool value);
    bool QuoteDate() const;
    void SetQuoteDate(bool value);

    bool UseOuterKeyword() const { return FUseOuterKeyword; }
    void SetUseOuterKeyword(bool value) { FUseOuterKeyword = value; }
    const QString &LowerFunc() const { return FLowerFunc; }
    void SetLowerFunc(const QString &value) { FLowerFunc = value; }
    QChar WildcardChar() const { return FWildcardChar; }
    void SetWildcardChar(QChar value) { FWildcardChar = value; }
    bool UseAsInFrom() const { return FUseAsInFrom; }
    void SetUseAsInFrom(bool value) { FUseAsInFrom = value; }

    static TFieldTypes DefaultQuotedTypes();

private:
    QString FDate;
    QString FTime;
    QString FDateTime;
    QChar FQuoteSymbol1;
    QChar FQuoteSymbol2;
    QString FFalseValue;
    QString FTrueValue;
    QString FFullTableName;
    TFieldTypes FQuotedTypes;
    bool FUseOuterKeyword = true;
    QString FLowerFunc;
    QChar FWildcardChar;
    bool FUseAsInFrom = false;
};

class TDMOptions
{
public:
    void AssignTo(TDMOptions &dest) const { dest = *this; }

    bool MultiDB() const { return FMultiDB; }
    void SetMultiDB(bool value) { FMultiDB = value; }
    const QString &DefaultDatabase() const { return FDefaultDatabase; }
    void SetDefaultDatabase(const QString &value) { FDefaultDatabase = value; }
    const QString &DefaultDBOwner() const { return FDefaultDBOwner; }
    void SetDefaultDBOwner(const QString &value) { FDefaultDBOwner = value; }
    bool StoreDBInfo() const { return FStoreDBInfo; }
    void SetStoreDBInfo(bool value) { FStoreDBInfo = value; }

private:
    bool FMultiDB = false;
    QString FDefaultDatabase;
    QString FDefaultDBOwner;
    bool FStoreDBInfo = true;
};

} // namespace vm20
