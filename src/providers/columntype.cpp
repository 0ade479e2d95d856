#include "providers/columntype.h"

#include <QStringList>

namespace vm20 {

namespace {

constexpr int UnsizedTextSize = 255;

struct TypeName
{
    const char *name;
    TFieldType type;
};

// Type names as SQLite scripts and the information schema spell them. The
// size rule follows from the type: strings take their length, BCD its scale.
constexpr TypeName KnownTypes[] = {
    {"INTEGER", ftInteger}, {"INT", ftInteger}, {"INT4", ftInteger}, {"MEDIUMINT", ftInteger},
    {"SERIAL", ftInteger},
    {"BIGINT", ftLargeint}, {"INT8", ftLargeint}, {"UNSIGNED BIG INT", ftLargeint},
    {"BIGSERIAL", ftLargeint},
    {"SMALLINT", ftSmallint}, {"TINYINT", ftSmallint}, {"INT2", ftSmallint},
    {"SMALLSERIAL", ftSmallint},
    {"BOOLEAN", ftBoolean}, {"BOOL", ftBoolean},
    {"REAL", ftFloat}, {"FLOAT", ftFloat}, {"FLOAT4", ftFloat}, {"FLOAT8", ftFloat},
    {"DOUBLE", ftFloat}, {"DOUBLE PRECISION", ftFloat},
    {"NUMERIC", ftBCD}, {"DECIMAL", ftBCD},
    {"MONEY", ftCurrency}, {"CURRENCY", ftCurrency},
    {"DATE", ftDate},
    {"TIME", ftTime}, {"TIME WITHOUT TIME ZONE", ftTime}, {"TIME WITH TIME ZONE", ftTime},
    {"TIMETZ", ftTime},
    {"DATETIME", ftDateTime},
    {"TIMESTAMP", ftTimeStamp}, {"TIMESTAMP WITHOUT TIME ZONE", ftTimeStamp},
    {"TIMESTAMP WITH TIME ZONE", ftTimeStamp}, {"TIMESTAMPTZ", ftTimeStamp},
    {"TEXT", ftMemo}, {"CLOB", ftMemo}, {"MEMO", ftMemo}, {"NTEXT", ftMemo},
    {"MEDIUMTEXT", ftMemo}, {"LONGTEXT", ftMemo},
    {"VARCHAR", ftString}, {"NVARCHAR", ftString}, {"VARCHAR2", ftString},
    {"CHARACTER VARYING", ftString}, {"VARYING CHARACTER", ftString}, {"STRING", ftString},
    {"CHAR", ftFixedChar}, {"CHARACTER", ftFixedChar}, {"NCHAR", ftFixedChar},
    {"NATIVE CHARACTER", ftFixedChar}, {"BPCHAR", ftFixedChar},
    {"BLOB", ftBlob}, {"BYTEA", ftBlob}, {"BINARY", ftBlob}, {"VARBINARY", ftBlob},
    {"IMAGE", ftBlob},
};

// Splits "NUMERIC ( 8, 3 )" into the upper-case name with single blanks
// ("NUMERIC") and its arguments ({8, 3}); a missing or unreadable argument is 0.
QString SplitTypeName(const QString &declared, int &arg1, int &arg2)
{
    arg1 = arg2 = 0;
    QString name = declared;
    const qsizetype open = declared.indexOf(QLatin1Char('('));
    if (open >= 0) {
        name = declared.left(open);
        qsizetype close = declared.indexOf(QLatin1Char(')'), open);
        const QString inner = declared.mid(open + 1, close < 0 ? -1 : close - open - 1);
        const QStringList args = inner.split(QLatin1Char(','));
        arg1 = args.value(0).trimmed().toInt();
        arg2 = args.value(1).trimmed().toInt();
        // Postgres writes modifiers after the arguments: "timestamp(3) with time zone".
        if (close >= 0)
            name += QLatin1Char(' ') + declared.mid(close + 1);
    }
    return name.simplified().toUpper();
}

TColumnType Sized(TFieldType type, int arg1, int arg2)
{
    switch (type) {
    case ftString:
        return {type, arg1 > 0 ? arg1 : UnsizedTextSize};
    case ftFixedChar:
        return {type, arg1 > 0 ? arg1 : 1};
    case ftBCD:
        return {type, arg2};
    default:
        return {type, 0};
    }
}

// SQLite's own rules for a type name it does not know, in its order.
TColumnType ByAffinity(const QString &name, int arg1)
{
    if (name.contains(QLatin1String("INT")))
        return {ftInteger, 0};
    if (name.contains(QLatin1String("CHAR")) || name.contains(QLatin1String("CLOB"))
        || name.contains(QLatin1String("TEXT")))
        return {ftString, arg1 > 0 ? arg1 : UnsizedTextSize};
    if (name.contains(QLatin1String("BLOB")))
        return {ftBlob, 0};
    if (name.contains(QLatin1String("REAL")) || name.contains(QLatin1String("FLOA"))
        || name.contains(QLatin1String("DOUB")))
        return {ftFloat, 0};
    return {};
}

} // namespace

TColumnType ColumnTypeFromDeclared(const QString &declared)
{
    int arg1 = 0;
    int arg2 = 0;
    const QString name = SplitTypeName(declared, arg1, arg2);
    if (name.isEmpty())
        return {};
    for (const TypeName &known : KnownTypes)
        if (name == QLatin1String(known.name))
            return Sized(known.type, arg1, arg2);
    return ByAffinity(name, arg1);
}

TColumnType ColumnTypeFromPostgreSQL(const QString &formatted)
{
    int arg1 = 0;
    int arg2 = 0;
    const QString name = SplitTypeName(formatted, arg1, arg2);
    if (name.endsWith(QLatin1String("[]")))
        return {ftString, UnsizedTextSize};
    for (const TypeName &known : KnownTypes)
        if (name == QLatin1String(known.name))
            return Sized(known.type, arg1, arg2);
    if (name == QLatin1String("JSON") || name == QLatin1String("JSONB") || name == QLatin1String("XML"))
        return {ftMemo, 0};
    if (name == QLatin1String("UUID"))
        return {ftString, 36};
    // interval, point, inet, tsvector, enums and other user types: compared
    // and listed through their text form.
    return {ftString, UnsizedTextSize};
}

TColumnType ColumnTypeFromMeta(QMetaType type, int length)
{
    switch (type.id()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
        return {ftInteger, 0};
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::ULong:
        return {ftLargeint, 0};
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
        return {ftSmallint, 0};
    case QMetaType::Bool:
        return {ftBoolean, 0};
    case QMetaType::Double:
    case QMetaType::Float:
        return {ftFloat, 0};
    case QMetaType::QDate:
        return {ftDate, 0};
    case QMetaType::QTime:
        return {ftTime, 0};
    case QMetaType::QDateTime:
        return {ftDateTime, 0};
    case QMetaType::QByteArray:
        return {ftBlob, 0};
    case QMetaType::QString:
        return {ftString, length > 0 ? length : UnsizedTextSize};
    default:
        return {};
    }
}

TColumnType ColumnTypeFromStorageClass(const QString &storageClass)
{
    const QString name = storageClass.trimmed().toLower();
    if (name == QLatin1String("integer"))
        return {ftInteger, 0};
    if (name == QLatin1String("real"))
        return {ftFloat, 0};
    if (name == QLatin1String("text"))
        return {ftString, UnsizedTextSize};
    if (name == QLatin1String("blob"))
        return {ftBlob, 0};
    return {};
}

} // namespace vm20
