// vm20 sql: the statement a query file builds on a model.
#include "cli.h"
#include "inputs.h"
#include "options.h"
#include "output.h"

#include "model/dbstructure.h"
#include "query/query.h"

namespace vm20::cli {

int RunSql(const QStringList &args, TOutput &out)
{
    TCommandOptions options(
        QStringLiteral("sql"), QStringLiteral("--model FILE [--query FILE] [options]"),
        QStringLiteral("Builds the query of a query file (standard input without --query) on a model\n"
                       "and prints its SELECT statement. The query file's Options= value applies\n"
                       "unless --options gives another. An empty query file is an error; a query\n"
                       "naming what the model lacks, or a file cut short, exits with 1 (see\n"
                       "--allow-incomplete)."));
    AddModelOptions(options);
    options.AddValue(QStringLiteral("query"), QStringLiteral("file"), QStringLiteral("The query file."));
    options.AddValue(QStringLiteral("syntax"), QStringLiteral("name"),
                     QStringLiteral("SQL dialect: sql1, sql2 (default), oracle, access or nexusdb."));
    options.AddValue(QStringLiteral("options"), QStringLiteral("n"),
                     QStringLiteral("SQL options as their integer form: the sum of "
                                    "2 DISTINCT, 8 quoted aliases, 16 bracketed joins, 32 bracketed conditions, 64 sort by names."));
    options.AddValue(QStringLiteral("top"), QStringLiteral("text"), QStringLiteral("A TOP clause."));
    options.AddValue(QStringLiteral("limit"), QStringLiteral("text"), QStringLiteral("A LIMIT clause."));
    AddIncompleteOption(options);
    if (!options.Parse(args, out))
        return ExitOk;
    const TSQLSyntax syntax = SyntaxOption(options);
    const int sqlOptions = options.Integer(QStringLiteral("options"), -1);

    TNDBStructure model;
    LoadModelOptions(model, options);
    TNQuery query;
    PrepareQuery(query, model);
    LoadQueryInput(query, options.Value(QStringLiteral("query")));
    CheckComplete(query, options);
    query.SetSQLSyntax(syntax);
    if (sqlOptions >= 0)
        query.SetSQLOptions(IntToSQLOptions(sqlOptions));
    query.SetSQLTopClause(options.Value(QStringLiteral("top")));
    query.SetSQLLimitClause(options.Value(QStringLiteral("limit")));
    query.BuildQuery();
    out.Lines(query.GetSQL());
    return ExitOk;
}

} // namespace vm20::cli
