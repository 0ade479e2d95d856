// vm20 run: build a query and print the rows it returns from a database.
#include "cli.h"
#include "database.h"
#include "execute.h"
#include "inputs.h"
#include "options.h"
#include "output.h"

#include "model/dbstructure.h"
#include "query/query.h"

namespace vm20::cli {

int RunRun(const QStringList &args, TOutput &out)
{
    TCommandOptions options(
        QStringLiteral("run"), QStringLiteral("--model FILE [--query FILE] --db URL [options]"),
        QStringLiteral("Builds the query of a query file (standard input without --query), executes\n"
                       "its statement on the database and prints the rows. A query naming what the\n"
                       "model lacks, or a file cut short, exits with 1 (see --allow-incomplete)."));
    AddModelOptions(options);
    options.AddValue(QStringLiteral("query"), QStringLiteral("file"), QStringLiteral("The query file."));
    options.AddValue(QStringLiteral("db"), QStringLiteral("url"), QStringLiteral("The database: sqlite:PATH."));
    options.AddValue(QStringLiteral("format"), QStringLiteral("name"),
                     QStringLiteral("table (default), csv or json."));
    options.AddValue(QStringLiteral("max-rows"), QStringLiteral("n"),
                     QStringLiteral("Print at most n rows (all by default)."));
    options.AddValue(QStringLiteral("param"), QStringLiteral("name=value"),
                     QStringLiteral("A value for a parameter, named as the statement writes it "
                                    "after \":\"; may be repeated."));
    options.AddValue(QStringLiteral("options"), QStringLiteral("n"),
                     QStringLiteral("SQL options as their integer form (see vm20 sql --help)."));
    options.AddValue(QStringLiteral("top"), QStringLiteral("text"), QStringLiteral("A TOP clause."));
    options.AddValue(QStringLiteral("limit"), QStringLiteral("text"), QStringLiteral("A LIMIT clause."));
    AddIncompleteOption(options);
    if (!options.Parse(args, out))
        return ExitOk;
    static const QStringList formats{QStringLiteral("table"), QStringLiteral("csv"), QStringLiteral("json")};
    const TRowFormat format = TRowFormat(
        formats.indexOf(options.Choice(QStringLiteral("format"), formats, QStringLiteral("table"))));
    const int maxRows = options.Integer(QStringLiteral("max-rows"), -1);
    const int sqlOptions = options.Integer(QStringLiteral("options"), -1);
    const QString url = options.Required(QStringLiteral("db"));

    TNDBStructure model;
    LoadModelOptions(model, options);
    TNQuery query;
    PrepareQuery(query, model);
    LoadQueryInput(query, options.Value(QStringLiteral("query")));
    CheckComplete(query, options);
    if (sqlOptions >= 0)
        query.SetSQLOptions(IntToSQLOptions(sqlOptions));
    query.SetSQLTopClause(options.Value(QStringLiteral("top")));
    query.SetSQLLimitClause(options.Value(QStringLiteral("limit")));
    SetParameterValues(query, options.Values(QStringLiteral("param")));
    query.BuildQuery();

    TDatabase database(url);
    PrintRows(ExecuteQuery(database.Get(), query, maxRows), format, out);
    return ExitOk;
}

} // namespace vm20::cli
