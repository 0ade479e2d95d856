#pragma once
// Running a built query on a database: the statement's parameters are bound
// from the query's parameter values.
#include "rowprinter.h"

#include <QSqlDatabase>
#include <QString>
#include <QStringList>

namespace vm20 {
class TNQuery;
}

namespace vm20::cli {

// The statement of the query's last build as one text, lines joined by LF.
QString StatementText(TNQuery &query);

// Sets parameter values from NAME=VALUE texts; an unknown name raises
// EUsageError.
void SetParameterValues(TNQuery &query, const QStringList &assignments);

// Executes the last build of `query` and fetches at most `maxRows` rows
// (all when negative). vm20::Exception with the database's message when the
// statement fails.
TRowSet ExecuteQuery(QSqlDatabase &database, TNQuery &query, int maxRows);

} // namespace vm20::cli
