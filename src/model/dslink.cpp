#include "model/dslink.h"

#include "model/dbstructure.h"
#include "model/dstable.h"
#include "model/sqlnames.h"
#include "support/nstrings.h"

namespace vm20 {

namespace {

const QLatin1String ValuePrefix("val:");
const QLatin1String FieldPrefix("fld:");
const QLatin1String OuterMark(" (+) ");

} // namespace

TDSLink::TDSLink(TNCustomDBStructure *dbStruct)
    : FDBStruct(dbStruct)
{
}

void TDSLink::SetTable1(TDSTable *value)
{
    if (FTable1 == value)
        return;
    FTable1 = value;
    if (FDBStruct)
        FDBStruct->LinksChanged();
    NotifyModel();
}

void TDSLink::SetTable2(TDSTable *value)
{
    if (FTable2 == value)
        return;
    FTable2 = value;
    if (FDBStruct)
        FDBStruct->LinksChanged();
    NotifyModel();
}

QString TDSLink::RenderSide(const QString &entry, const TDSTable *table, bool optional) const
{
    if (entry.startsWith(ValuePrefix))
        return entry.mid(ValuePrefix.size());
    const QString column = entry.startsWith(FieldPrefix) ? entry.mid(FieldPrefix.size()) : entry;
    QString text = table ? table->WhereExpr() + QLatin1Char('.') : QString();
    if (FQuoteFields && FDBStruct)
        text += QuotedSQLName(column, FDBStruct->SQLFormats().QuoteSymbol1(), FDBStruct->SQLFormats().QuoteSymbol2());
    else if (FQuoteFields)
        text += QuotedSQLName(column, QLatin1Char('"'), QLatin1Char('"'));
    else
        text += column;
    if (optional)
        text += OuterMark;
    return text;
}

QString TDSLink::GetSQLExpr(int syntax) const
{
    const bool marks = syntax == OuterJoinMarkSyntax;
    const bool markRight = marks && FLinkType == ltOuterLeft;
    const bool markLeft = marks && FLinkType == ltOuterRight;
    QStringList conditions;
    for (int k = 0; k < FFields1.size(); ++k) {
        const QString op = k < FOperators.size() ? FOperators[k] : QStringLiteral("=");
        conditions.append(QLatin1Char('(') + RenderSide(FFields1[k], FTable1, markLeft) + op
                          + RenderSide(FFields2.value(k), FTable2, markRight) + QLatin1Char(')'));
    }
    return conditions.join(QLatin1String(" and "));
}

QString TDSLink::DisplayName() const
{
    const QString alias1 = FTable1 ? FTable1->TableAlias() : QString();
    const QString alias2 = FTable2 ? FTable2->TableAlias() : QString();
    return alias1 + QLatin1Char('.') + ListToCommaText(FFields1) + QLatin1String("->") + alias2
           + QLatin1Char('.') + ListToCommaText(FFields2);
}

void TDSLink::ApplyDefOperator()
{
    FOperators.clear();
    for (qsizetype k = 0; k < FFields1.size(); ++k)
        FOperators.append(QStringLiteral("="));
}

bool TDSLink::ContainsTableEx(const TDSTable *table, bool &isFirst) const
{
    isFirst = FTable1 == table;
    return isFirst || FTable2 == table;
}

bool TDSLink::ContainsTable(const TDSTable *table) const
{
    return FTable1 == table || FTable2 == table;
}

TDSTable *TDSLink::OtherTable(const TDSTable *table) const
{
    return FTable1 == table ? FTable2 : FTable1;
}

void TDSLink::NotifyModel()
{
    if (FDBStruct)
        FDBStruct->Changed(mckLinks, this);
}

} // namespace vm20
