#include "model/dbinfo.h"

#include "model/vmglobal.h"
#include "support/exception.h"
#include "support/nstrings.h"

#include <QHash>

namespace vm20 {

// --- TDBFieldList -------------------------------------------------------------

TDBFieldInfo *TDBFieldList::Items(int index) const
{
    if (index < 0 || index >= Count())
        throw EListError::IndexOutOfBounds(index);
    return FItems[index].get();
}

TDBFieldInfo *TDBFieldList::Add(const QString &name, int size, TFieldType type)
{
    FItems.push_back(std::make_unique<TDBFieldInfo>(name, size, type));
    return FItems.back().get();
}

void TDBFieldList::Delete(int index)
{
    if (index < 0 || index >= Count())
        throw EListError::IndexOutOfBounds(index);
    FItems.erase(FItems.begin() + index);
}

TDBFieldInfo *TDBFieldList::FindByName(const QString &name) const
{
    for (const auto &info : FItems)
        if (SameText(info->FieldName(), name))
            return info.get();
    return nullptr;
}

void TDBFieldList::CopyTo(TDBFieldList &dest) const
{
    if (&dest == this)
        return;
    dest.Clear();
    for (const auto &info : FItems)
        dest.Add(info->FieldName(), info->FieldSize(), info->FieldType());
}

void TDBFieldList::SaveToStrings(QStringList &lines) const
{
    lines.clear();
    lines.append(QStringLiteral("Count=") + QString::number(Count()));
    for (int i = 0; i < Count(); ++i) {
        const QString prefix = QLatin1Char('F') + QString::number(i + 1);
        const TDBFieldInfo &info = *FItems[i];
        lines.append(prefix + QLatin1String("Name=") + info.FieldName());
        lines.append(prefix + QLatin1String("Size=") + QString::number(info.FieldSize()));
        lines.append(prefix + QLatin1String("Type=") + FldTypeToStr(info.FieldType()));
    }
}

void TDBFieldList::LoadFromStrings(const QStringList &lines)
{
    Clear();
    // One pass over the lines; the first occurrence of a key wins, as with a
    // by-name search.
    QHash<QString, QString> values;
    for (const QString &line : lines) {
        const QString key = NameOfLine(line).toCaseFolded();
        if (!values.contains(key))
            values.insert(key, ValueOfLine(line));
    }
    const auto value = [&](const QString &key) { return values.value(key.toCaseFolded()); };
    // A list cannot describe more columns than it has lines.
    const int count = std::min<qsizetype>(XStrToInt(value(QStringLiteral("Count"))), lines.size());
    for (int i = 1; i <= count; ++i) {
        const QString prefix = QLatin1Char('F') + QString::number(i);
        Add(value(prefix + QLatin1String("Name")), XStrToInt(value(prefix + QLatin1String("Size"))),
            StrToFldType(value(prefix + QLatin1String("Type"))));
    }
}

QByteArray TDBFieldList::GetText() const
{
    QStringList lines;
    SaveToStrings(lines);
    return GetStringsAsAnsiChar(lines);
}

void TDBFieldList::SetText(const QByteArray &text)
{
    LoadFromStrings(SplitAnsiText(text));
}

// --- TNDBInfo ----------------------------------------------------------------

TNDBInfo::TNDBInfo(QObject *parent)
    : QObject(parent)
    , FTableNameFormat(QStringLiteral("DB.OWNER.TABLE"))
{
}

TNDBInfo::~TNDBInfo() = default;

void TNDBInfo::SetCurrentDBName(const QString &value)
{
    if (FCurrentDBName == value)
        return;
    FCurrentDBName = value;
    DatabaseChanged();
}

bool TNDBInfo::DoDBNamesRequest(QStringList &list)
{
    if (!OnDBNamesRequest)
        return false;
    OnDBNamesRequest(this, list);
    return true;
}

bool TNDBInfo::DoTablesRequest(QStringList &list)
{
    if (!OnTablesRequest)
        return false;
    OnTablesRequest(this, list);
    return true;
}

bool TNDBInfo::DoLinksRequest(QStringList &list)
{
    if (!OnLinksRequest)
        return false;
    OnLinksRequest(this, list);
    return true;
}

bool TNDBInfo::DoFieldsRequest(const QString &tableName, TDBFieldList &list)
{
    if (!OnFieldsRequest)
        return false;
    OnFieldsRequest(this, tableName, list);
    return true;
}

bool TNDBInfo::DoGetSQLValues(const QString &sql, QStringList &values, QStringList &items)
{
    if (!OnGetSQLValues)
        return false;
    OnGetSQLValues(this, sql, values, items);
    return true;
}

bool TNDBInfo::NameNeedsQuotes(const QString &name) const
{
    return !IsValidIdent(name);
}

void TNDBInfo::GetDatabaseNames(QStringList &list)
{
    if (!DoDBNamesRequest(list))
        AvailableDatabases(list);
}

void TNDBInfo::GetTableNames(QStringList &list)
{
    if (!DoTablesRequest(list))
        TablesByDatabase(list);
}

void TNDBInfo::GetLinkList(QStringList &list)
{
    if (!DoLinksRequest(list))
        LinksByDatabase(list);
}

TDBFieldList &TNDBInfo::GetFieldList(const QString &tableName)
{
    if (FFieldsValid && tableName == FFieldsTableName)
        return FFields;
    FFieldsTableName = tableName;
    FFieldsValid = true;
    FFields.Clear();
    try {
        if (!DoFieldsRequest(tableName, FFields))
            FieldsByTable(tableName, FFields);
    } catch (...) {
        // A failed request must not be served from the cache next time.
        ResetFieldList();
        throw;
    }
    return FFields;
}

void TNDBInfo::ResetFieldList()
{
    FFieldsValid = false;
    FFieldsTableName.clear();
    FFields.Clear();
}

void TNDBInfo::RunQuery(const QString &sql, QStringList &values, QStringList &items)
{
    if (!DoGetSQLValues(sql, values, items))
        GetSQLValues(sql, values, items);
}

void TNDBInfo::GetFieldNamesByTable(const QString &tableName, QStringList &list)
{
    list.clear();
    const TDBFieldList &fields = GetFieldList(tableName);
    for (int i = 0; i < fields.Count(); ++i)
        list.append(fields.Items(i)->FieldName());
}

QString TNDBInfo::GetDatabaseNamesAsText()
{
    QStringList list;
    GetDatabaseNames(list);
    return QString::fromUtf8(GetStringsAsAnsiChar(list));
}

QString TNDBInfo::GetTableNamesAsText()
{
    QStringList list;
    GetTableNames(list);
    return QString::fromUtf8(GetStringsAsAnsiChar(list));
}

QString TNDBInfo::GetLinksAsText()
{
    QStringList list;
    GetLinkList(list);
    return QString::fromUtf8(GetStringsAsAnsiChar(list));
}

QString TNDBInfo::GetFieldsAsText(const QString &tableName)
{
    return QString::fromUtf8(GetFieldList(tableName).GetText());
}

void TNDBInfo::LoadInfo(const QStringList &)
{
}

void TNDBInfo::SaveInfo(QStringList &lines) const
{
    lines.clear();
}

QString TNDBInfo::GetInfoText() const
{
    QStringList lines;
    SaveInfo(lines);
    return QString::fromUtf8(GetStringsAsAnsiChar(lines));
}

void TNDBInfo::AvailableDatabases(QStringList &)
{
}

void TNDBInfo::TablesByDatabase(QStringList &)
{
}

void TNDBInfo::LinksByDatabase(QStringList &)
{
}

void TNDBInfo::FieldsByTable(const QString &, TDBFieldList &)
{
}

void TNDBInfo::GetSQLValues(const QString &, QStringList &, QStringList &)
{
}

} // namespace vm20
