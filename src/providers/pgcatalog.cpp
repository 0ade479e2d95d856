// What PostgreSQL tells about a database, read from the information schema.
// Only tables of the connection's current schema are described, matching the
// unqualified names the driver lists for it.
#include "providers/sqlcatalog.h"

#include <QSqlQuery>

namespace vm20 {

QStringList PostgreSQLDatabases(const QSqlDatabase &db)
{
    QStringList out;
    QSqlQuery query = CatalogQuery(
        db, QStringLiteral("SELECT datname FROM pg_database WHERE NOT datistemplate ORDER BY datname"));
    while (query.next())
        out << query.value(0).toString();
    return out;
}

std::vector<TColumnInfo> PostgreSQLColumns(const QSqlDatabase &db, const QString &table)
{
    std::vector<TColumnInfo> out;
    QSqlQuery query = CatalogQuery(
        db,
        QStringLiteral("SELECT column_name, data_type, character_maximum_length, numeric_precision, "
                       "numeric_scale FROM information_schema.columns "
                       "WHERE table_schema = current_schema() AND table_name = ? "
                       "ORDER BY ordinal_position"),
        {table});
    while (query.next()) {
        // Rebuild a declared type such as "character varying(40)" or "numeric(8,3)".
        QString declared = query.value(1).toString();
        if (!query.value(2).isNull())
            declared += QStringLiteral("(%1)").arg(query.value(2).toInt());
        else if (!query.value(4).isNull())
            declared += QStringLiteral("(%1,%2)").arg(query.value(3).toInt()).arg(query.value(4).toInt());
        TColumnType type = ColumnTypeFromDeclared(declared);
        if (type.FieldType == ftUnknown)   // uuid, json, arrays, user types
            type = ColumnTypeFromMeta(QMetaType(QMetaType::QString), -1);
        out.push_back({query.value(0).toString(), type});
    }
    return out;
}

std::vector<TForeignKey> PostgreSQLForeignKeys(const QSqlDatabase &db)
{
    // Each referencing column is paired with the referenced column at the same
    // position of the unique constraint it points to.
    QSqlQuery query = CatalogQuery(
        db,
        QStringLiteral(
            "SELECT kcu.constraint_name, kcu.table_name, kcu.column_name, ref.table_name, ref.column_name "
            "FROM information_schema.referential_constraints rc "
            "JOIN information_schema.key_column_usage kcu "
            "  ON kcu.constraint_schema = rc.constraint_schema "
            " AND kcu.constraint_name = rc.constraint_name "
            "JOIN information_schema.key_column_usage ref "
            "  ON ref.constraint_schema = rc.unique_constraint_schema "
            " AND ref.constraint_name = rc.unique_constraint_name "
            " AND ref.ordinal_position = kcu.position_in_unique_constraint "
            "WHERE kcu.table_schema = current_schema() "
            "ORDER BY kcu.table_name, kcu.constraint_name, kcu.ordinal_position"));
    std::vector<TForeignKey> out;
    QString current;
    while (query.next()) {
        const QString constraint = query.value(1).toString() + QLatin1Char('.') + query.value(0).toString();
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
