// vm20 tour: the library's main job on the sample shop database, shown step
// by step with the commands that repeat each step.
#include "cli.h"
#include "database.h"
#include "execute.h"
#include "inputs.h"
#include "options.h"
#include "output.h"

#include "model/dbstructure.h"
#include "query/query.h"
#include "support/nstrings.h"

#include <QDir>

namespace vm20::cli {

namespace {

constexpr int RowsShown = 5;

// The sample queries the tour shows, in this order, with a LIMIT clause
// where one suits.
struct TTourQuery
{
    const char *File;
    const char *Limit;
};
const TTourQuery TourQueries[] = {
    {"customers_by_country.vmq", ""},
    {"big_orders_not_shipped.vmq", ""},
    {"top_customers.vmq", "10"},
    {"brackets.vmq", ""},
};

struct TTourPaths
{
    QString Examples;   // the examples folder
    QString Url;        // the sample database
    // How a path is shown: relative to the working folder when below it.
    QString Shown(const QString &path) const
    {
        const QString relative = QDir::current().relativeFilePath(path);
        return relative.startsWith(QStringLiteral("..")) ? QDir::cleanPath(path) : relative;
    }
};

void Heading(TOutput &out, const QString &title)
{
    out.Line();
    out.Line(title);
    out.Line(QString(title.size(), QLatin1Char('-')));
}

const QString Indent = QStringLiteral("    ");

void Indented(TOutput &out, const QStringList &lines)
{
    out.SetIndent(Indent);
    out.Lines(lines);
    out.SetIndent(QString());
}

// The model text cut into sections: a header line and the lines after it,
// each section's trailing separator dropped.
QList<QStringList> Sections(const QStringList &lines)
{
    QList<QStringList> sections;
    for (const QString &line : lines) {
        if (IsSectionHeader(line) || sections.isEmpty())
            sections.append(QStringList());
        if (!line.trimmed().isEmpty())
            sections.last().append(line);
    }
    return sections;
}

// What shows an import at a glance: the counts, and the table with the most
// links together with its link sections.
QStringList ImportExcerpt(const QStringList &lines)
{
    const QList<QStringList> sections = Sections(lines);
    QStringList excerpt = sections.value(0);
    qsizetype best = -1;
    qsizetype bestLinks = 0;
    for (qsizetype i = 0; i < sections.size(); ++i) {
        if (!sections[i].value(0).startsWith(QStringLiteral("[Table:")))
            continue;
        qsizetype links = 0;
        while (i + links + 1 < sections.size()
               && sections[i + links + 1].value(0).startsWith(QStringLiteral("[Link:")))
            ++links;
        if (links > bestLinks) {
            best = i;
            bestLinks = links;
        }
    }
    if (best < 0)
        return excerpt;
    excerpt << QStringLiteral("...");
    for (qsizetype i = best; i <= best + bestLinks; ++i)
        excerpt << sections[i];
    return excerpt;
}

void ShowImport(const TTourPaths &paths, TOutput &out)
{
    Heading(out, QStringLiteral("1. Import the model of the sample database"));
    out.Line(QStringLiteral("$ vm20 import --db %1").arg(paths.Url));
    TDatabase database(paths.Url);
    TNDBStructure model;
    ImportModel(database, model);
    QStringList lines;
    model.SaveToStrings(lines);
    const QStringList excerpt = ImportExcerpt(lines);
    Indented(out, excerpt);
    out.Line(QStringLiteral("    ... %1 lines in all: %2 tables, %3 fields, %4 links, one group per table")
                 .arg(lines.size())
                 .arg(model.GetTableCount())
                 .arg(model.GetFieldCount())
                 .arg(model.GetLinkCount()));
}

void ShowModel(const TNCustomDBStructure &model, const QString &modelPath, TOutput &out)
{
    Heading(out, QStringLiteral("2. The curated model: captions, groups, calculated fields, conditions"));
    out.Line(QStringLiteral("%1 (also as XML beside it), main table %2")
                 .arg(modelPath, model.DefaultMainTable() ? model.DefaultMainTable()->DisplayName()
                                                          : QStringLiteral("none")));
    QStringList tables;
    for (int i = 0; i < model.GetTableCount(); ++i)
        tables << QStringLiteral("%1 (%2)").arg(model.GetTable(i)->DisplayName(),
                                                model.GetTable(i)->TableName());
    out.Line(QStringLiteral("  Tables: ") + tables.join(QStringLiteral(", ")));
    const auto captions = [](const TDSFieldGroup &group) {
        QStringList names;
        for (const TDSField *field : group.Fields())
            names << field->DisplayName();
        return names.join(QStringLiteral(", "));
    };
    out.Line(QStringLiteral("  Fields:"));
    if (model.RootGroup().Count() > 0)
        out.Line(QStringLiteral("    (top level): ") + captions(model.RootGroup()));
    for (int i = 0; i < model.FieldGroups().Count(); ++i) {
        const TDSFieldGroup &group = *model.FieldGroups().Items(i);
        out.Line(QStringLiteral("    %1: %2").arg(group.GroupName(), captions(group)));
    }
    QStringList conditions;
    model.GetConditionCaptions(conditions);
    out.Line(QStringLiteral("  Predefined conditions: ") + conditions.join(QStringLiteral("; ")));
}

void ShowQuery(TNCustomDBStructure &model, QSqlDatabase &database, const TTourPaths &paths,
               const TTourQuery &sample, int number, TOutput &out)
{
    const QString file = paths.Examples + QStringLiteral("/queries/") + QLatin1String(sample.File);
    TNQuery query;
    PrepareQuery(query, model);
    LoadQueryInput(query, file);
    const QString title = query.Description().join(QLatin1Char(' ')).trimmed();
    Heading(out, QStringLiteral("3.%1 %2").arg(number).arg(title.isEmpty() ? query.QueryName() : title));
    const QString common = QStringLiteral("--model %1 --query %2")
                               .arg(paths.Shown(paths.Examples + QStringLiteral("/shop.model")),
                                    paths.Shown(file));
    out.Line(QStringLiteral("$ vm20 text ") + common);
    Indented(out, {query.GetQueryText()});
    QString limit;
    if (*sample.Limit) {
        query.SetSQLLimitClause(QLatin1String(sample.Limit));
        limit = QStringLiteral(" --limit ") + QLatin1String(sample.Limit);
    }
    query.BuildQuery();
    out.Line(QStringLiteral("$ vm20 sql ") + common + limit);
    Indented(out, query.GetSQL());
    out.Line(QStringLiteral("$ vm20 run %1 --formats %2 --db %3 --max-rows %4")
                 .arg(common + limit, paths.Shown(paths.Examples + QStringLiteral("/sqlite.formats")), paths.Url)
                 .arg(RowsShown));
    out.SetIndent(Indent);
    PrintRows(ExecuteQuery(database, query, RowsShown), rfTable, out);
    out.SetIndent(QString());
}

} // namespace

int RunTour(const QStringList &args, TOutput &out)
{
    TCommandOptions options(
        QStringLiteral("tour"), QStringLiteral("[--examples DIR] [--db URL]"),
        QStringLiteral("Shows what vm20 does on the sample shop database: imports its model, shows\n"
                       "the curated model, and builds, prints and runs some of the sample queries."));
    options.AddValue(QStringLiteral("examples"), QStringLiteral("dir"),
                     QStringLiteral("The examples folder (shop.model, sqlite.formats, queries/)."));
    options.AddValue(QStringLiteral("db"), QStringLiteral("url"), QStringLiteral("The sample database."));
    if (!options.Parse(args, out))
        return ExitOk;
    TTourPaths paths;
    paths.Examples = options.IsSet(QStringLiteral("examples")) ? options.Value(QStringLiteral("examples"))
                                                               : QStringLiteral(VM20_EXAMPLES_DIR);
    paths.Url = options.IsSet(QStringLiteral("db"))
                    ? options.Value(QStringLiteral("db"))
                    : QStringLiteral("sqlite:") + paths.Shown(QStringLiteral(VM20_SAMPLE_DB));

    out.Line(QStringLiteral("vm20 builds SQL SELECT statements from a data model and a query that"));
    out.Line(QStringLiteral("reads like sentences. This tour runs it on the sample shop database."));
    ShowImport(paths, out);

    TNDBStructure model;
    const QString modelPath = paths.Examples + QStringLiteral("/shop.model");
    LoadModelFile(model, modelPath);
    LoadFormatsFile(model, paths.Examples + QStringLiteral("/sqlite.formats"));
    ShowModel(model, paths.Shown(modelPath), out);

    out.Line();
    out.Line(QStringLiteral("3. Sample queries: conditions as text, the SQL built, the first rows"));
    TDatabase database(paths.Url);
    int number = 0;
    for (const TTourQuery &sample : TourQueries)
        ShowQuery(model, database.Get(), paths, sample, ++number, out);
    out.Line();
    out.Line(QStringLiteral("More sample queries: %1/*.vmq; 'vm20 --help' lists the commands.")
                 .arg(paths.Shown(paths.Examples + QStringLiteral("/queries"))));
    return ExitOk;
}

} // namespace vm20::cli
