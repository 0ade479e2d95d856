// The parts of catalog reading that do not depend on the database kind.
#include "providers/sqlcatalog.h"

#include "model/errors.h"
#include "providers/sqlerrors.h"

#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>

namespace vm20 {

TSqlDialect DialectOf(const QSqlDatabase &db)
{
    const QString driver = db.driverName();
    if (driver.startsWith(QLatin1String("QSQLITE")))
        return sdSQLite;
    if (driver == QLatin1String("QPSQL"))
        return sdPostgreSQL;
    return sdGeneric;
}

QSqlQuery CatalogQuery(const QSqlDatabase &db, const QString &sql, const QVariantList &bindings)
{
    QSqlQuery query(db);
    query.setForwardOnly(true);
    bool ok;
    if (bindings.isEmpty()) {
        ok = query.exec(sql);
    } else {
        ok = query.prepare(sql);
        for (const QVariant &value : bindings)
            query.addBindValue(value);
        ok = ok && query.exec();
    }
    if (!ok)
        throw ENDBInfoError(dbieQueryFailed, SQueryFailed, {query.lastError().text(), sql});
    return query;
}

std::vector<TColumnInfo> GenericColumns(const QSqlDatabase &db, const QString &table)
{
    std::vector<TColumnInfo> out;
    const QSqlRecord record = db.record(table);
    for (int i = 0; i < record.count(); ++i) {
        const QSqlField field = record.field(i);
        TColumnType type = ColumnTypeFromMeta(field.metaType(), field.length());
        if (type.FieldType == ftUnknown)
            type = ColumnTypeFromMeta(QMetaType(QMetaType::QString), -1);
        out.push_back({field.name(), type});
    }
    return out;
}

QString ForeignKeyLinkLine(const TForeignKey &key)
{
    if (key.Columns.isEmpty() || key.Columns.size() != key.RefColumns.size())
        return {};
    if (key.Table.contains(QLatin1Char(':')) || key.RefTable.contains(QLatin1Char(':')))
        return {};
    static const QString separators = QStringLiteral(",=<>!");
    QStringList items;
    for (qsizetype k = 0; k < key.Columns.size(); ++k) {
        for (const QString &column : {key.Columns[k], key.RefColumns[k]}) {
            if (column.isEmpty())
                return {};
            for (QChar c : column)
                if (separators.contains(c))
                    return {};
        }
        items << key.Columns[k] + QLatin1Char('=') + key.RefColumns[k];
    }
    return key.Table + QLatin1Char('-') + key.RefTable + QLatin1Char(':') + items.join(QLatin1Char(','));
}

} // namespace vm20
