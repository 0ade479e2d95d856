// vm20 import: a model built from what a database describes of itself.
#include "cli.h"
#include "database.h"
#include "inputs.h"
#include "options.h"
#include "output.h"

#include "model/dbstructure.h"

namespace vm20::cli {

int RunImport(const QStringList &args, TOutput &out)
{
    TCommandOptions options(
        QStringLiteral("import"), QStringLiteral("--db URL [--xml]"),
        QStringLiteral("Builds a model from a database (tables, typed columns, the links its foreign\n"
                       "keys describe) and prints it as model text, or as XML with --xml."));
    options.AddValue(QStringLiteral("db"), QStringLiteral("url"), DatabaseUrlHelp());
    options.AddFlag(QStringLiteral("xml"), QStringLiteral("Print the model as XML."));
    if (!options.Parse(args, out))
        return ExitOk;

    TDatabase database(options.Required(QStringLiteral("db")));
    TNDBStructure model;
    ImportModel(database, model);
    out.Lines(ModelFileLines(model, options.IsSet(QStringLiteral("xml"))));
    return ExitOk;
}

} // namespace vm20::cli
