#pragma once
// The rows a statement returns, fetched from a database and printed as an
// aligned table, as CSV or as JSON.
#include <QList>
#include <QSqlQuery>
#include <QStringList>
#include <QVariant>

namespace vm20::cli {

class TOutput;

enum TRowFormat { rfTable, rfCsv, rfJson };

struct TRowSet
{
    QStringList Columns;
    QList<QVariantList> Rows;
    int Total = 0;   // rows the statement returned, fetched or not
};

// Fetches at most `maxRows` rows (all when negative) of an executed query and
// counts the rest.
TRowSet FetchRows(QSqlQuery &query, int maxRows);

// Table: a header, a rule, one line per row (NULL written as such, numbers
// right-aligned, long texts cut), and a line telling how many rows there were.
// CSV: a header line and one line per row, fields quoted where needed, NULL
// empty. JSON: {"columns": [...], "rows": [[...], ...]} with NULL as null.
void PrintRows(const TRowSet &rows, TRowFormat format, TOutput &out);

} // namespace vm20::cli
