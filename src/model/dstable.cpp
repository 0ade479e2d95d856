#include "model/dstable.h"

#include "model/dbstructure.h"
#include "model/dslink.h"
#include "model/sqlnames.h"
#include "support/exception.h"
#include "support/nstrings.h"

#include <algorithm>

namespace vm20 {

namespace {

const TSQLFormats &FormatsOf(const TNCustomDBStructure *model)
{
    static const TSQLFormats defaults;
    return model ? model->SQLFormats() : defaults;
}

const TDMOptions &OptionsOf(const TNCustomDBStructure *model)
{
    static const TDMOptions defaults;
    return model ? model->DMOptions() : defaults;
}

} // namespace

TDSTable::TDSTable(TNCustomDBStructure *dbStruct)
    : FDBStruct(dbStruct)
{
}

void TDSTable::SetTableName(const QString &value)
{
    if (FTableName == value)
        return;
    FTableName = value;
    if (FDBStruct)
        FDBStruct->TableNamesChanged();
    if (FTableAlias.isEmpty())
        SetTableAlias(value);
    NotifyModel();
}

void TDSTable::SetTableAlias(const QString &value)
{
    QString alias = value;
    alias.replace(QLatin1Char(' '), QLatin1Char('_'));
    if (FTableAlias == alias)
        return;
    FTableAlias = alias;
    if (FDBStruct)
        FDBStruct->TableNamesChanged();
    NotifyModel();
}

QString TDSTable::MainExpr() const
{
    const TSQLFormats &formats = FormatsOf(FDBStruct);
    const TDMOptions &options = OptionsOf(FDBStruct);
    QString name = FTableName;
    // A name stored with its quotes already is written as stored.
    if (FQuoted && !name.isEmpty() && !IsQuotedSQLName(name, QLatin1Char('"'), QLatin1Char('"'))
        && !IsQuotedSQLName(name, formats.QuoteSymbol1(), formats.QuoteSymbol2()))
        name = QuotedSQLName(name, formats.QuoteSymbol1(), formats.QuoteSymbol2());
    if (options.MultiDB() && !FDatabaseName.isEmpty() && FDatabaseName != options.DefaultDatabase()
        && !formats.FullTableName().isEmpty()) {
        QString full = formats.FullTableName();
        full.replace(QLatin1String("DB"), FDatabaseName);
        full.replace(QLatin1String("OWNER"), options.DefaultDBOwner());
        full.replace(QLatin1String("TABLE"), name);
        name = full;
    }
    return name;
}

QString TDSTable::FromExpr() const
{
    QString result = MainExpr();
    if (FTableAlias != FTableName) {
        if (FormatsOf(FDBStruct).UseAsInFrom())
            result += QLatin1String(" AS");
        result += QLatin1Char(' ') + SQLAlias();
    }
    if (!FTableHints.isEmpty())
        result += QLatin1String(" WITH ") + FTableHints;
    return result;
}

QString TDSTable::WhereExpr() const
{
    if (!FTableAlias.isEmpty() && FTableAlias != FTableName)
        return SQLAlias();
    return MainExpr();
}

QString TDSTable::SQLAlias() const
{
    if (IsPlainSQLName(FTableAlias))
        return FTableAlias;
    const TSQLFormats &formats = FormatsOf(FDBStruct);
    return QuotedSQLName(FTableAlias, formats.QuoteSymbol1(), formats.QuoteSymbol2());
}

QString TDSTable::CompoundName() const
{
    return FTableName + QLatin1String(" - ") + FTableAlias;
}

QString TDSTable::FullName() const
{
    const QString &owner = OptionsOf(FDBStruct).DefaultDBOwner();
    return owner.isEmpty() ? FTableName : owner + QLatin1Char('.') + FTableName;
}

QString TDSTable::DesignPositions() const
{
    return Format(QStringLiteral("%d,%d,%d,%d"),
                  {FDesignLeft, FDesignTop, FDesignWidth, FDesignHeight});
}

void TDSTable::SetDesignPositions(const QString &value)
{
    const QStringList parts = value.split(QLatin1Char(','));
    FDesignLeft = XStrToInt(parts.value(0));
    FDesignTop = XStrToInt(parts.value(1));
    FDesignWidth = XStrToInt(parts.value(2));
    FDesignHeight = XStrToInt(parts.value(3));
}

TDSLink *TDSTable::GetLink(int index) const
{
    if (index < 0 || index >= LinkCount())
        throw EListError::IndexOutOfBounds(index);
    return FLinks[index];
}

void TDSTable::AddLinkRef(TDSLink *link)
{
    FLinks.push_back(link);
    LinksChanged();
}

void TDSTable::DelLink(int index)
{
    if (index < 0 || index >= LinkCount())
        throw EListError::IndexOutOfBounds(index);
    FLinks.erase(FLinks.begin() + index);
    LinksChanged();
}

void TDSTable::RemoveLinkRef(TDSLink *link)
{
    const auto end = std::remove(FLinks.begin(), FLinks.end(), link);
    if (end == FLinks.end())
        return;
    FLinks.erase(end, FLinks.end());
    LinksChanged();
}

TDSLink *TDSTable::LinkByTable(const TDSTable *table) const
{
    for (TDSLink *link : FLinks)
        if (link->Table1() == table || link->Table2() == table)
            return link;
    return nullptr;
}

TDSLink *TDSTable::LinkByTableAlias(const QString &alias) const
{
    for (TDSLink *link : FLinks) {
        const TDSTable *other = link->OtherTable(this);
        if (other && SameText(other->TableAlias(), alias))
            return link;
    }
    return nullptr;
}

void TDSTable::LinksChanged()
{
    if (FDBStruct)
        FDBStruct->LinksChanged();
}

void TDSTable::NotifyModel()
{
    if (FDBStruct)
        FDBStruct->Changed(mckTables, this);
}

} // namespace vm20
