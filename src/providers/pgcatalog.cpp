// What PostgreSQL tells about a database, read from its system catalogs.
// Only relations of the connection's current schema are described, by the
// unqualified names that reach them through the search path.
#include "providers/sqlcatalog.h"

#include "model/errors.h"
#include "providers/sqlerrors.h"

#include <QSqlQuery>

namespace vm20 {

QStringList PostgreSQLDatabases(const QSqlDatabase &db)
{
    QStringList out;
    QSqlQuery query = CatalogQuery(
        db, QStringLiteral("SELECT datname FROM pg_database WHERE NOT datistemplate "
                           "ORDER BY datname COLLATE \"C\""));
    while (query.next())
        out << query.value(0).toString();
    return out;
}

QStringList PostgreSQLTables(const QSqlDatabase &db)
{
    // Tables, views, materialized views, foreign tables and partitioned
    // parents; a partition is reached through its parent.
    QStringList out;
    QSqlQuery query = CatalogQuery(
        db, QStringLiteral("SELECT c.relname FROM pg_class c "
                           "JOIN pg_namespace n ON n.oid = c.relnamespace "
                           "WHERE n.nspname = current_schema() "
                           "AND c.relkind IN ('r', 'v', 'm', 'f', 'p') AND NOT c.relispartition "
                           "ORDER BY c.relname COLLATE \"C\""));
    while (query.next())
        out << query.value(0).toString();
    return out;
}

std::vector<TColumnInfo> PostgreSQLColumns(const QSqlDatabase &db, const QString &table)
{
    QSqlQuery query = CatalogQuery(
        db,
        QStringLiteral("SELECT a.attname, format_type(a.atttypid, a.atttypmod), "
                       "has_column_privilege(c.oid, a.attnum, 'SELECT') "
                       "FROM pg_attribute a "
                       "JOIN pg_class c ON c.oid = a.attrelid "
                       "JOIN pg_namespace n ON n.oid = c.relnamespace "
                       "WHERE n.nspname = current_schema() AND c.relname = ? "
                       "AND a.attnum > 0 AND NOT a.attisdropped "
                       "ORDER BY a.attnum"),
        {table});
    std::vector<TColumnInfo> out;
    bool hidden = false;
    while (query.next()) {
        if (!query.value(2).toBool()) {
            hidden = true;
            continue;
        }
        out.push_back({query.value(0).toString(), ColumnTypeFromPostgreSQL(query.value(1).toString())});
    }
    // A model without the table's columns would look complete and be wrong.
    if (hidden && out.empty())
        throw ENDBInfoError(dbieNoColumns, SNoColumns, {table});
    return out;
}

std::vector<TForeignKey> PostgreSQLForeignKeys(const QSqlDatabase &db)
{
    // One row per key column, paired by position with the referenced column;
    // a constraint is known by its oid, since two tables may each have a
    // constraint of the same name.
    QSqlQuery query = CatalogQuery(
        db,
        QStringLiteral(
            "SELECT k.oid, t.relname, ta.attname, r.relname, ra.attname "
            "FROM pg_constraint k "
            "JOIN pg_class t ON t.oid = k.conrelid "
            "JOIN pg_namespace n ON n.oid = t.relnamespace "
            "JOIN pg_class r ON r.oid = k.confrelid "
            "CROSS JOIN LATERAL unnest(k.conkey, k.confkey) WITH ORDINALITY AS u(col, refcol, pos) "
            "JOIN pg_attribute ta ON ta.attrelid = k.conrelid AND ta.attnum = u.col "
            "JOIN pg_attribute ra ON ra.attrelid = k.confrelid AND ra.attnum = u.refcol "
            "WHERE k.contype = 'f' AND n.nspname = current_schema() "
            "AND r.relnamespace = t.relnamespace "
            "ORDER BY t.relname COLLATE \"C\", k.conname COLLATE \"C\", k.oid, u.pos"));
    std::vector<TForeignKey> out;
    qlonglong current = -1;
    while (query.next()) {
        const qlonglong constraint = query.value(0).toLongLong();
        if (out.empty() || constraint != current) {
            current = constraint;
            out.push_back({query.value(1).toString(), query.value(3).toString(), {}, {}});
        }
        out.back().Columns << query.value(2).toString();
        out.back().RefColumns << query.value(4).toString();
    }
    return out;
}

} // namespace vm20
