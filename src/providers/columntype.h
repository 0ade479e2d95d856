#pragma once
// How a column's SQL type becomes the model's field type and size.
#include "model/fieldtype.h"

#include <QMetaType>
#include <QString>

namespace vm20 {

struct TColumnType
{
    TFieldType FieldType = ftUnknown;
    int FieldSize = 0;
    bool operator==(const TColumnType &) const = default;
};

// From the type a column was declared with ("VARCHAR(40)", "NUMERIC(8,3)",
// "double precision", "timestamp without time zone"). Known names map by a
// table; other names by SQLite's affinity rules (a name holding "INT" is an
// integer, "CHAR"/"CLOB"/"TEXT" a string, "REAL"/"FLOA"/"DOUB" a float,
// "BLOB" a blob). Text types without a length get a size of 255. An empty or
// unrecognisable name gives ftUnknown, so the caller can look further.
TColumnType ColumnTypeFromDeclared(const QString &declared);

// From the type PostgreSQL names a column's type with (format_type(), e.g.
// "character varying(40)", "numeric(8,3)", "integer[]"). Known names map by
// the same table; JSON and XML documents are memos, a UUID a 36-character
// string; arrays, intervals, geometric, network and all other types are
// strings, whose literals the server converts. Never ftUnknown.
TColumnType ColumnTypeFromPostgreSQL(const QString &formatted);

// From the value type a driver reports for a column, with its length for
// strings (-1 or 0 when the driver does not know it).
TColumnType ColumnTypeFromMeta(QMetaType type, int length);

// From the storage class of a stored SQLite value ("integer", "real", "text",
// "blob"), for columns declared without a type, such as computed view columns.
TColumnType ColumnTypeFromStorageClass(const QString &storageClass);

} // namespace vm20
