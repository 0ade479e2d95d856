// vm20 text: the condition tree of a query file as readable sentences.
#include "cli.h"
#include "inputs.h"
#include "options.h"
#include "output.h"

#include "model/dbstructure.h"
#include "query/query.h"

namespace vm20::cli {

int RunText(const QStringList &args, TOutput &out)
{
    TCommandOptions options(
        QStringLiteral("text"), QStringLiteral("--model FILE [--query FILE] [--allow-incomplete]"),
        QStringLiteral("Prints the conditions of a query file (standard input without --query)\n"
                       "as readable text, one line per enabled row."));
    AddModelOptions(options);
    options.AddValue(QStringLiteral("query"), QStringLiteral("file"), QStringLiteral("The query file."));
    AddIncompleteOption(options);
    if (!options.Parse(args, out))
        return ExitOk;

    TNDBStructure model;
    LoadModelOptions(model, options);
    TNQuery query;
    PrepareQuery(query, model);
    LoadQueryInput(query, options.Value(QStringLiteral("query")));
    CheckComplete(query, options);
    out.Line(query.GetQueryText());
    return ExitOk;
}

} // namespace vm20::cli
