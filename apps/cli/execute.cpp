#include "execute.h"

#include "cli.h"

#include "model/dbstructure.h"
#include "providers/onestatement.h"
#include "query/query.h"
#include "query/valueformat.h"
#include "support/dattime.h"
#include "support/nstrings.h"

#include <QSqlError>
#include <QSqlQuery>

namespace vm20::cli {

namespace {

// A date parameter holds a day count; the database compares the text form
// the model's formats give dates.
QVariant BoundValue(const TNQuery &query, const TSQLParam &param)
{
    QString value = param.Value();
    if (IsDateType(param.ParamType()) && !value.isEmpty()) {
        const TSQLFormats &formats = query.DBStruct()->SQLFormats();
        const QString format = param.ParamType() == ftDate   ? formats.Date()
                               : param.ParamType() == ftTime ? formats.Time()
                                                             : formats.DateTime();
        bool ok = false;
        const double days = value.toDouble(&ok);
        if (ok && !format.isEmpty())
            value = FormatDateTime(format, days);
    }
    if (param.ValueFormat().isEmpty())
        return value;
    QString full = param.ValueFormat();
    return full.replace(QStringLiteral("@v"), value);
}

} // namespace

QString StatementText(TNQuery &query)
{
    QStringList lines;
    for (const QString &item : query.GetSQL()) {
        QString text = item;
        text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
        lines << text;
    }
    return lines.join(QLatin1Char('\n'));
}

void SetParameterValues(TNQuery &query, const QStringList &assignments)
{
    for (const QString &assignment : assignments) {
        if (!assignment.contains(QLatin1Char('=')))
            throw EUsageError(QStringLiteral("Option '--param' takes NAME=VALUE, not '%1'.").arg(assignment));
        const QString name = NameOfLine(assignment);
        TSQLParam *param = query.QResult().FindParameter(name);
        if (!param)
            throw EUsageError(QStringLiteral("The query has no parameter '%1'.").arg(name));
        param->SetValue(ValueOfLine(assignment));
    }
}

TRowSet ExecuteQuery(QSqlDatabase &database, TNQuery &query, int maxRows)
{
    const QString sql = StatementText(query);
    CheckOneSelect(sql);
    QSqlQuery statement(database);
    statement.setForwardOnly(true);
    if (!statement.prepare(sql))
        throw Exception(QStringLiteral("The database refused the statement: %1")
                            .arg(statement.lastError().text()));
    const TQueryResult &result = query.QResult();
    for (int i = 0; i < result.GetParamCount(); ++i) {
        const TSQLParam *param = result.GetParam(i);
        statement.bindValue(QLatin1Char(':') + param->ParamName(), BoundValue(query, *param));
    }
    if (!statement.exec())
        throw Exception(QStringLiteral("The statement failed: %1").arg(statement.lastError().text()));
    return FetchRows(statement, maxRows);
}

} // namespace vm20::cli
