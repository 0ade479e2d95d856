// What SQLite tells about a database, read through its PRAGMAs.
#include "providers/sqlcatalog.h"

#include <QSqlQuery>
#include <QSqlRecord>

#include <algorithm>
#include <map>

namespace vm20 {

namespace {

// A name as an SQLite identifier: in double quotes, inner ones doubled.
QString QuotedName(const QString &name)
{
    QString inner = name;
    inner.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + inner + QLatin1Char('"');
}

// The primary key columns of a table in key order, for a foreign key that
// names only the table it refers to.
QStringList PrimaryKey(const QSqlDatabase &db, const QString &table)
{
    std::map<int, QString> byPosition;
    QSqlQuery query = CatalogQuery(db, QStringLiteral("PRAGMA table_info(%1)").arg(QuotedName(table)));
    while (query.next()) {
        const int position = query.value(5).toInt();
        if (position > 0)
            byPosition[position] = query.value(1).toString();
    }
    QStringList out;
    for (const auto &entry : byPosition)
        out << entry.second;
    return out;
}

// A column declared without a type (a computed view column, say) is typed
// by the storage class of its first stored value.
TColumnType TypeOfUntypedColumn(const QSqlDatabase &db, const QString &table, const QString &column)
{
    QSqlQuery query = CatalogQuery(
        db, QStringLiteral("SELECT typeof(%1) FROM %2 WHERE %1 IS NOT NULL LIMIT 1")
                .arg(QuotedName(column), QuotedName(table)));
    if (query.next()) {
        const TColumnType type = ColumnTypeFromStorageClass(query.value(0).toString());
        if (type.FieldType != ftUnknown)
            return type;
    }
    return ColumnTypeFromMeta(QMetaType(QMetaType::QString), -1);
}

} // namespace

QStringList SQLiteDatabases(const QSqlDatabase &db)
{
    QStringList out;
    QSqlQuery query = CatalogQuery(db, QStringLiteral("PRAGMA database_list"));
    while (query.next())
        out << query.value(1).toString();
    return out;
}

std::vector<TColumnInfo> SQLiteColumns(const QSqlDatabase &db, const QString &table)
{
    std::vector<TColumnInfo> out;
    QSqlQuery query = CatalogQuery(db, QStringLiteral("PRAGMA table_info(%1)").arg(QuotedName(table)));
    while (query.next())
        out.push_back({query.value(1).toString(), ColumnTypeFromDeclared(query.value(2).toString())});
    for (TColumnInfo &column : out)
        if (column.Type.FieldType == ftUnknown)
            column.Type = TypeOfUntypedColumn(db, table, column.Name);
    return out;
}

std::vector<TForeignKey> SQLiteForeignKeys(const QSqlDatabase &db, const QStringList &tables)
{
    std::vector<TForeignKey> out;
    for (const QString &table : tables) {
        // Rows come per key id, one row per column in key order; SQLite numbers
        // the keys backwards, so the highest id is the one declared first.
        std::map<int, TForeignKey, std::greater<int>> keys;
        QSqlQuery query =
            CatalogQuery(db, QStringLiteral("PRAGMA foreign_key_list(%1)").arg(QuotedName(table)));
        while (query.next()) {
            TForeignKey &key = keys[query.value(0).toInt()];
            key.Table = table;
            key.RefTable = query.value(2).toString();
            key.Columns << query.value(3).toString();
            key.RefColumns << query.value(4).toString();
        }
        for (auto &entry : keys) {
            TForeignKey &key = entry.second;
            if (key.RefColumns.contains(QString()))
                key.RefColumns = PrimaryKey(db, key.RefTable);
            out.push_back(std::move(key));
        }
    }
    return out;
}

} // namespace vm20
