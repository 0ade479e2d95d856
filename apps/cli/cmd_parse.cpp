// vm20 parse: a SELECT statement read back into a query, printed as query text.
#include "cli.h"
#include "inputs.h"
#include "options.h"
#include "output.h"

#include "model/dbstructure.h"
#include "query/query.h"

namespace vm20::cli {

int RunParse(const QStringList &args, TOutput &out)
{
    TCommandOptions options(
        QStringLiteral("parse"), QStringLiteral("--model FILE [--sql FILE] [--syntax NAME] [--allow-incomplete]"),
        QStringLiteral("Reads a SELECT statement (standard input without --sql), loads it into a\n"
                       "query on the model and prints the query text. A condition whose field or\n"
                       "operator the model lacks, a FROM table it does not know, or an unterminated\n"
                       "literal ends the command with exit code 1 and a list of what is missing."));
    AddModelOptions(options);
    options.AddValue(QStringLiteral("sql"), QStringLiteral("file"), QStringLiteral("The SELECT statement."));
    options.AddValue(QStringLiteral("syntax"), QStringLiteral("name"),
                     QStringLiteral("SQL dialect: sql1, sql2 (default), oracle, access or nexusdb."));
    AddIncompleteOption(options);
    if (!options.Parse(args, out))
        return ExitOk;
    const TSQLSyntax syntax = SyntaxOption(options);

    TNDBStructure model;
    LoadModelOptions(model, options);
    TNQuery query;
    PrepareQuery(query, model);
    query.SetSQLSyntax(syntax);
    query.ParseSQL(ReadInput(options.Value(QStringLiteral("sql"))));
    CheckComplete(query, options);
    QStringList lines;
    query.SaveToStrings(lines);
    out.Lines(lines);
    return ExitOk;
}

} // namespace vm20::cli
