#pragma once
// A join between two tables: parallel lists of columns (or "val:" literals)
// on either side with a comparison per pair, and the join's outer kind.
#include "model/vmglobal.h"

#include <QString>
#include <QStringList>

namespace vm20 {

class TDSTable;
class TNCustomDBStructure;

class TDSLink
{
public:
    explicit TDSLink(TNCustomDBStructure *dbStruct = nullptr);
    TDSLink(const TDSLink &) = delete;
    TDSLink &operator=(const TDSLink &) = delete;

    TDSTable *Table1() const { return FTable1; }
    void SetTable1(TDSTable *value);
    TDSTable *Table2() const { return FTable2; }
    void SetTable2(TDSTable *value);
    // Entry k of each list is one side of the k-th join condition; "val:x" is
    // the literal x, "fld:c" and a plain entry are the column c.
    QStringList &Fields1() { return FFields1; }
    const QStringList &Fields1() const { return FFields1; }
    void SetFields1(const QStringList &value)
    {
        if (FFields1 == value)
            return;
        FFields1 = value;
        NotifyModel();
    }
    QStringList &Fields2() { return FFields2; }
    const QStringList &Fields2() const { return FFields2; }
    void SetFields2(const QStringList &value)
    {
        if (FFields2 == value)
            return;
        FFields2 = value;
        NotifyModel();
    }
    QStringList &Operators() { return FOperators; }
    const QStringList &Operators() const { return FOperators; }
    void SetOperators(const QStringList &value)
    {
        if (FOperators == value)
            return;
        FOperators = value;
        NotifyModel();
    }
    TDSLinkType LinkType() const { return FLinkType; }
    void SetLinkType(TDSLinkType value)
    {
        if (FLinkType == value)
            return;
        FLinkType = value;
        NotifyModel();
    }
    bool QuoteFields() const { return FQuoteFields; }
    void SetQuoteFields(bool value)
    {
        if (FQuoteFields == value)
            return;
        FQuoteFields = value;
        NotifyModel();
    }
    TNCustomDBStructure *DBStruct() const { return FDBStruct; }
    void SetDBStruct(TNCustomDBStructure *value) { FDBStruct = value; }

    // The join condition, "(T.A=U.X) and (T.B<>1)". Syntax 2 is the old outer
    // join notation that marks the optional side's columns with " (+) ".
    QString GetSQLExpr(int syntax) const;
    QString SQLExpr() const { return GetSQLExpr(0); }
    QString OracleSQLExpr() const { return GetSQLExpr(2); }
    // "T.A,B->U.X,Y"
    QString DisplayName() const;
    // One "=" per entry of Fields1.
    void ApplyDefOperator();
    bool ContainsTableEx(const TDSTable *table, bool &isFirst) const;
    bool ContainsTable(const TDSTable *table) const;
    // The end that is not `table` (Table1 when neither end is `table`).
    TDSTable *OtherTable(const TDSTable *table) const;

    static constexpr int OuterJoinMarkSyntax = 2;

private:
    // Tells the model's listeners that this entity changed.
    void NotifyModel();
    QString RenderSide(const QString &entry, const TDSTable *table, bool optional) const;

    TDSTable *FTable1 = nullptr;
    TDSTable *FTable2 = nullptr;
    QStringList FFields1;
    QStringList FFields2;
    QStringList FOperators;
    TDSLinkType FLinkType = ltInner;
    bool FQuoteFields = false;
    TNCustomDBStructure *FDBStruct = nullptr;
};

} // namespace vm20
