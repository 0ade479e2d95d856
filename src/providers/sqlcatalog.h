#pragma once
// Reading a database's own description of itself: databases, tables, columns
// and foreign keys. SQLite answers through PRAGMAs, PostgreSQL through its
// system catalogs; other drivers through what Qt Sql reports alone.
#include "providers/columntype.h"

#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <vector>

namespace vm20 {

enum TSqlDialect { sdGeneric, sdSQLite, sdPostgreSQL };

TSqlDialect DialectOf(const QSqlDatabase &db);

struct TColumnInfo
{
    QString Name;
    TColumnType Type;
};

// One foreign key: Columns of Table refer to RefColumns of RefTable, in order.
struct TForeignKey
{
    QString Table;
    QString RefTable;
    QStringList Columns;
    QStringList RefColumns;
};

// Runs a catalog query; a failure raises ENDBInfoError with the driver's text.
QSqlQuery CatalogQuery(const QSqlDatabase &db, const QString &sql,
                       const QVariantList &bindings = {});

// SQLite.
QStringList SQLiteDatabases(const QSqlDatabase &db);
std::vector<TColumnInfo> SQLiteColumns(const QSqlDatabase &db, const QString &table);
std::vector<TForeignKey> SQLiteForeignKeys(const QSqlDatabase &db, const QStringList &tables);

// PostgreSQL (tables of the current schema).
QStringList PostgreSQLDatabases(const QSqlDatabase &db);
QStringList PostgreSQLTables(const QSqlDatabase &db);
// Columns the session may read; ENDBInfoError when it may read none of them.
std::vector<TColumnInfo> PostgreSQLColumns(const QSqlDatabase &db, const QString &table);
std::vector<TForeignKey> PostgreSQLForeignKeys(const QSqlDatabase &db);

// Any driver: the record Qt Sql reports for the table.
std::vector<TColumnInfo> GenericColumns(const QSqlDatabase &db, const QString &table);

// The one-line link form of a foreign key: "T1-T2:a=b,c=d". Empty when a name
// holds a character that the form uses to separate its parts (":" in a table
// name; ",", "=", "<", ">" or "!" in a column name), since such a line could
// not be read back.
QString ForeignKeyLinkLine(const TForeignKey &key);

} // namespace vm20
