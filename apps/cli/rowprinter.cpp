#include "rowprinter.h"

#include "output.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonValue>
#include <QSqlRecord>
#include <QTime>

#include <algorithm>

namespace vm20::cli {

namespace {

constexpr int MaxCellWidth = 40;

bool IsNumber(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return true;
    default:
        return false;
    }
}

// Sums of money come back with binary noise in the last digits; 15
// significant digits are what a double holds exactly.
// Dates and times in the ISO text that databases keeping them as text hold,
// so that the same rows read the same from every engine.
QString ValueText(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Double:
        return QString::number(value.toDouble(), 'g', 15);
    case QMetaType::QDateTime: {
        const QDateTime moment = value.toDateTime();
        return moment.toString(moment.time().msec() ? QStringLiteral("yyyy-MM-dd hh:mm:ss.zzz")
                                                    : QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    }
    case QMetaType::QTime: {
        const QTime time = value.toTime();
        return time.toString(time.msec() ? QStringLiteral("hh:mm:ss.zzz") : QStringLiteral("hh:mm:ss"));
    }
    default:
        return value.toString();
    }
}

QString CellText(const QVariant &value)
{
    if (value.isNull())
        return QStringLiteral("NULL");
    QString text = ValueText(value);
    text.replace(QLatin1Char('\n'), QLatin1Char(' ')).replace(QLatin1Char('\r'), QLatin1Char(' '));
    if (text.size() > MaxCellWidth)
        text = text.left(MaxCellWidth - 3) + QStringLiteral("...");
    return text;
}

void PrintTable(const TRowSet &rows, TOutput &out)
{
    const int columns = int(rows.Columns.size());
    QList<int> widths(columns);
    QList<bool> numeric(columns, true);
    for (int c = 0; c < columns; ++c)
        widths[c] = int(rows.Columns[c].size());
    for (const QVariantList &row : rows.Rows)
        for (int c = 0; c < columns; ++c) {
            widths[c] = std::max(widths[c], int(CellText(row[c]).size()));
            if (!row[c].isNull() && !IsNumber(row[c]))
                numeric[c] = false;
        }

    const auto line = [&](const QStringList &cells, bool header) {
        QStringList padded;
        for (int c = 0; c < columns; ++c)
            padded << (numeric[c] && !header ? cells[c].rightJustified(widths[c])
                                             : cells[c].leftJustified(widths[c]));
        QString text = padded.join(QStringLiteral(" | "));
        while (text.endsWith(QLatin1Char(' ')))
            text.chop(1);
        return text;
    };
    out.Line(line(rows.Columns, true));
    QStringList rule;
    for (int c = 0; c < columns; ++c)
        rule << QString(widths[c], QLatin1Char('-'));
    out.Line(rule.join(QStringLiteral("-+-")));
    for (const QVariantList &row : rows.Rows) {
        QStringList cells;
        for (const QVariant &value : row)
            cells << CellText(value);
        out.Line(line(cells, false));
    }
    if (rows.Total == int(rows.Rows.size()))
        out.Line(QStringLiteral("(%1 %2)").arg(rows.Total).arg(rows.Total == 1 ? "row" : "rows"));
    else
        out.Line(QStringLiteral("(first %1 of %2 rows)").arg(rows.Rows.size()).arg(rows.Total));
}

QString CsvField(const QVariant &value)
{
    if (value.isNull())
        return QString();
    QString text = ValueText(value);
    if (text.contains(QLatin1Char(',')) || text.contains(QLatin1Char('"')) || text.contains(QLatin1Char('\n'))
        || text.contains(QLatin1Char('\r')))
        text = QLatin1Char('"') + text.replace(QLatin1Char('"'), QStringLiteral("\"\"")) + QLatin1Char('"');
    return text;
}

void PrintCsv(const TRowSet &rows, TOutput &out)
{
    QStringList header;
    for (const QString &name : rows.Columns)
        header << CsvField(name);
    out.Line(header.join(QLatin1Char(',')));
    for (const QVariantList &row : rows.Rows) {
        QStringList fields;
        for (const QVariant &value : row)
            fields << CsvField(value);
        // A line break inside a quoted field stays part of the field.
        out.Line(fields.join(QLatin1Char(',')));
    }
}

QString JsonText(const QJsonArray &array)
{
    return QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Compact));
}

void PrintJson(const TRowSet &rows, TOutput &out)
{
    out.Line(QStringLiteral("{\"columns\": ") + JsonText(QJsonArray::fromStringList(rows.Columns))
             + QStringLiteral(","));
    out.Line(QStringLiteral(" \"rows\": ["));
    for (int r = 0; r < rows.Rows.size(); ++r) {
        QJsonArray values;
        for (const QVariant &value : rows.Rows[r])
            values.append(value.isNull()                          ? QJsonValue()
                          : value.typeId() == QMetaType::Double ? QJsonValue(ValueText(value).toDouble())
                                                                : QJsonValue::fromVariant(value));
        out.Line(QStringLiteral("  ") + JsonText(values)
                 + (r + 1 < rows.Rows.size() ? QStringLiteral(",") : QString()));
    }
    out.Line(QStringLiteral(" ]}"));
}

} // namespace

TRowSet FetchRows(QSqlQuery &query, int maxRows)
{
    TRowSet rows;
    const QSqlRecord record = query.record();
    for (int c = 0; c < record.count(); ++c)
        rows.Columns << record.fieldName(c);
    while (query.next()) {
        if (maxRows < 0 || rows.Rows.size() < maxRows) {
            QVariantList row;
            for (int c = 0; c < record.count(); ++c)
                row << query.value(c);
            rows.Rows << row;
        }
        ++rows.Total;
    }
    return rows;
}

void PrintRows(const TRowSet &rows, TRowFormat format, TOutput &out)
{
    switch (format) {
    case rfTable: PrintTable(rows, out); break;
    case rfCsv: PrintCsv(rows, out); break;
    case rfJson: PrintJson(rows, out); break;
    }
}

} // namespace vm20::cli
