#include "providers/sqldbinfo.h"

#include "model/errors.h"
#include "providers/onestatement.h"
#include "providers/sqlcatalog.h"
#include "providers/sqlerrors.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

namespace vm20 {

TNSqlDBInfo::TNSqlDBInfo(const QString &connectionName, QObject *parent)
    : TNDBInfo(parent), FConnectionName(connectionName)
{
}

TNSqlDBInfo::TNSqlDBInfo(const QSqlDatabase &database, QObject *parent)
    : TNDBInfo(parent), FConnectionName(database.connectionName())
{
}

void TNSqlDBInfo::SetConnectionName(const QString &value)
{
    if (FConnectionName == value)
        return;
    FConnectionName = value;
    ConnectionChanged();
}

QSqlDatabase TNSqlDBInfo::Database() const
{
    return QSqlDatabase::database(FConnectionName, false);
}

bool TNSqlDBInfo::Connected() const
{
    const QSqlDatabase db = Database();
    return db.isValid() && db.isOpen();
}

bool TNSqlDBInfo::NameNeedsQuotes(const QString &name) const
{
    const QSqlDatabase db = Database();
    if (!db.isValid() || !db.isOpen() || DialectOf(db) != sdPostgreSQL)
        return TNDBInfo::NameNeedsQuotes(name);
    QSqlQuery query = CatalogQuery(db, QStringLiteral("SELECT quote_ident(?)"), {name});
    return !query.next() || query.value(0).toString() != name;
}

void TNSqlDBInfo::ConnectionChanged()
{
    ResetFieldList();
}

void TNSqlDBInfo::Update()
{
    ResetFieldList();
}

QSqlDatabase TNSqlDBInfo::OpenDatabase() const
{
    QSqlDatabase db = Database();
    if (!db.isValid())
        throw ENDBInfoError(dbieNoConnection, SNoConnection, {FConnectionName});
    if (!db.isOpen() && !db.open())
        throw ENDBInfoError(dbieCannotOpen, SCannotOpen, {db.databaseName(), db.lastError().text()});
    return db;
}

void TNSqlDBInfo::AvailableDatabases(QStringList &list)
{
    const QSqlDatabase db = OpenDatabase();
    switch (DialectOf(db)) {
    case sdSQLite:
        list << SQLiteDatabases(db);
        break;
    case sdPostgreSQL:
        list << PostgreSQLDatabases(db);
        break;
    case sdGeneric:
        list << db.databaseName();
        break;
    }
}

void TNSqlDBInfo::TablesByDatabase(QStringList &list)
{
    const QSqlDatabase db = OpenDatabase();
    if (DialectOf(db) == sdPostgreSQL) {
        list << PostgreSQLTables(db);
        return;
    }
    const bool sqlite = DialectOf(db) == sdSQLite;
    QStringList names = db.tables(QSql::Tables) + db.tables(QSql::Views);
    names.removeDuplicates();
    for (const QString &name : names) {
        // SQLite keeps its own bookkeeping (sqlite_sequence, sqlite_stat1) as tables.
        if (sqlite && name.startsWith(QLatin1String("sqlite_"), Qt::CaseInsensitive))
            continue;
        list << name;
    }
}

void TNSqlDBInfo::FieldsByTable(const QString &tableName, TDBFieldList &list)
{
    const QSqlDatabase db = OpenDatabase();
    std::vector<TColumnInfo> columns;
    switch (DialectOf(db)) {
    case sdSQLite:
        columns = SQLiteColumns(db, tableName);
        break;
    case sdPostgreSQL:
        columns = PostgreSQLColumns(db, tableName);
        break;
    case sdGeneric:
        columns = GenericColumns(db, tableName);
        break;
    }
    for (const TColumnInfo &column : columns)
        list.Add(column.Name, column.Type.FieldSize, column.Type.FieldType);
}

void TNSqlDBInfo::LinksByDatabase(QStringList &list)
{
    QStringList tables;
    TablesByDatabase(tables);
    const QSqlDatabase db = OpenDatabase();
    std::vector<TForeignKey> keys;
    switch (DialectOf(db)) {
    case sdSQLite:
        keys = SQLiteForeignKeys(db, tables);
        break;
    case sdPostgreSQL:
        keys = PostgreSQLForeignKeys(db);
        break;
    case sdGeneric:
        break;
    }
    // SQLite matches table names without regard to case, so a key may spell
    // the table it refers to differently from its definition; the line uses
    // the listed spelling. PostgreSQL's names differ by case.
    const Qt::CaseSensitivity cs = DialectOf(db) == sdPostgreSQL ? Qt::CaseSensitive : Qt::CaseInsensitive;
    auto listed = [&tables, cs](const QString &name) {
        for (const QString &table : tables)
            if (table.compare(name, cs) == 0)
                return table;
        return QString();
    };
    for (TForeignKey &key : keys) {
        key.Table = listed(key.Table);
        key.RefTable = listed(key.RefTable);
        if (key.Table.isEmpty() || key.RefTable.isEmpty() || key.Table == key.RefTable)
            continue;
        const QString line = ForeignKeyLinkLine(key);
        if (!line.isEmpty())
            list << line;
    }
}

void TNSqlDBInfo::GetSQLValues(const QString &sql, QStringList &values, QStringList &items)
{
    values.clear();
    items.clear();
    CheckOneSelect(sql);
    QSqlQuery query = CatalogQuery(OpenDatabase(), sql);
    const int captionColumn = query.record().count() > 1 ? 1 : 0;
    while (query.next()) {
        values << query.value(0).toString();
        items << query.value(captionColumn).toString();
    }
}

} // namespace vm20
