// vm20 convert: a model file printed in the model text or XML format.
#include "cli.h"
#include "inputs.h"
#include "options.h"
#include "output.h"

#include "model/dbstructure.h"

namespace vm20::cli {

int RunConvert(const QStringList &args, TOutput &out)
{
    TCommandOptions options(QStringLiteral("convert"), QStringLiteral("--model FILE --to text|xml"),
                            QStringLiteral("Reads a model file in either format and prints it in the one "
                                           "--to names."));
    options.AddValue(QStringLiteral("model"), QStringLiteral("file"),
                     QStringLiteral("The data model, as model text or XML."));
    options.AddValue(QStringLiteral("to"), QStringLiteral("format"), QStringLiteral("text or xml."));
    if (!options.Parse(args, out))
        return ExitOk;
    options.Required(QStringLiteral("to"));
    const QString format = options.Choice(QStringLiteral("to"), {QStringLiteral("text"), QStringLiteral("xml")},
                                          QStringLiteral("text"));

    TNDBStructure model;
    LoadModelFile(model, options.Required(QStringLiteral("model")));
    out.Lines(ModelFileLines(model, format == QLatin1String("xml")));
    return ExitOk;
}

} // namespace vm20::cli
