#include "providers/columntype.h"

#include "common/printers.h"

#include <gtest/gtest.h>

namespace vm20 {

void PrintTo(const TColumnType &t, std::ostream *os)
{
    *os << FldTypeToStr(t.FieldType).toStdString() << "/" << t.FieldSize;
}

namespace {

TEST(ColumnType, DeclaredTypesMapToFieldTypesAndSizes)
{
    struct Row { int line; const char *declared; TColumnType expected; const char *reason; };
    const Row rows[] = {
        {__LINE__, "UNSIGNED BIG INT", {ftLargeint, 0}, "several words"},
        {__LINE__, "double  precision", {ftFloat, 0}, "inner blanks collapse"},
        {__LINE__, "NUMERIC(8,3)", {ftBCD, 3}, "BCD keeps its scale as size"},
        {__LINE__, "decimal ( 10 , 2 )", {ftBCD, 2}, "blanks inside the arguments"},
        {__LINE__, "timestamp(3) with time zone", {ftTimeStamp, 0}, "modifier after the arguments"},
        {__LINE__, "time without time zone", {ftTime, 0}, "information-schema spelling"},
        {__LINE__, "CHARACTER", {ftFixedChar, 1}, "a bare CHAR holds one character"},
        {__LINE__, "NVARCHAR2(30)", {ftString, 30}, "unknown name holding CHAR keeps the length"},
        {__LINE__, "FLOATING POINT", {ftInteger, 0}, "INT is tested before FLOA, as SQLite does"},
        {__LINE__, "SINGLE_FLOAT", {ftFloat, 0}, "unknown name holding FLOA"},
        {__LINE__, "", {ftUnknown, 0}, "no declared type: look elsewhere"},
        {__LINE__, "VARCHAR(", {ftString, 255}, "unclosed arguments"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(ColumnTypeFromDeclared(QString::fromUtf8(row.declared)), row.expected)
            << "line " << row.line << ": " << row.reason;
}

TEST(ColumnType, DriverValueTypesMapToFieldTypes)
{
    struct Row { int line; QMetaType::Type meta; int length; TColumnType expected; const char *reason; };
    const Row rows[] = {
        {__LINE__, QMetaType::Int, -1, {ftInteger, 0}, "integer"},
        {__LINE__, QMetaType::Double, -1, {ftFloat, 0}, "float"},
        {__LINE__, QMetaType::QDateTime, -1, {ftDateTime, 0}, "date-time"},
        {__LINE__, QMetaType::QString, 20, {ftString, 20}, "string with a known length"},
        {__LINE__, QMetaType::QString, -1, {ftString, 255}, "string of unknown length"},
        {__LINE__, QMetaType::QUuid, -1, {ftUnknown, 0}, "nothing the model knows"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(ColumnTypeFromMeta(QMetaType(row.meta), row.length), row.expected)
            << "line " << row.line << ": " << row.reason;
}

} // namespace
} // namespace vm20
