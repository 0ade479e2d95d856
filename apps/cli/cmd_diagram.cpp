// vm20 diagram: a model's tables and links drawn as a PNG or SVG file.
#include "cli.h"
#include "inputs.h"
#include "options.h"
#include "output.h"

#include "designer/structdesignpanel.h"
#include "model/dbstructure.h"

namespace vm20::cli {

int RunDiagram(const QStringList &args, TOutput &out)
{
    TCommandOptions options(
        QStringLiteral("diagram"), QStringLiteral("--model FILE --out FILE.png|FILE.svg"),
        QStringLiteral("Draws the model's tables and links as the design panel shows them. Tables "
                       "stand at their saved design positions; tables without one are arranged."));
    options.AddValue(QStringLiteral("model"), QStringLiteral("file"),
                     QStringLiteral("The data model, as model text or XML."));
    options.AddValue(QStringLiteral("out"), QStringLiteral("file"),
                     QStringLiteral("The picture to write; .svg writes SVG, anything else PNG."));
    options.AddValue(QStringLiteral("scale"), QStringLiteral("n"),
                     QStringLiteral("Device pixels per diagram pixel of a PNG (1 to 4, default 1)."));
    options.AddValue(QStringLiteral("width"), QStringLiteral("pixels"),
                     QStringLiteral("The width tables are arranged in (default 1200)."));
    options.AddValue(QStringLiteral("routing"), QStringLiteral("kind"),
                     QStringLiteral("straight (default) or around: lines detour around tables."));
    options.AddFlag(QStringLiteral("arrange"),
                    QStringLiteral("Arrange all tables, ignoring their saved positions."));
    if (!options.Parse(args, out))
        return ExitOk;
    const QString modelFile = options.Required(QStringLiteral("model"));
    const QString outFile = options.Required(QStringLiteral("out"));
    const int scale = options.Integer(QStringLiteral("scale"), 1, 1);
    if (scale > 4)
        throw EUsageError(QStringLiteral("--scale must be between 1 and 4"));
    const int width = options.Integer(QStringLiteral("width"), 1200, 200);
    const QString routing = options.Choice(QStringLiteral("routing"),
                                           {QStringLiteral("straight"), QStringLiteral("around")},
                                           QStringLiteral("straight"));

    TNDBStructure model;
    LoadModelFile(model, modelFile);
    if (options.IsSet(QStringLiteral("arrange")))
        for (int i = 0; i < model.GetTableCount(); ++i)
            model.GetTable(i)->SetDesignPositions(QStringLiteral("0,0,0,0"));
    TNStructDesignPanel panel;
    panel.resize(width, 800);
    panel.SetLinkRouting(routing == QLatin1String("around") ? lrAroundTables : lrStraight);
    panel.SetStruct(&model);
    panel.Activate();
    panel.SaveDiagram(outFile, scale);
    return ExitOk;
}

} // namespace vm20::cli
