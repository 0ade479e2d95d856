#include "options.h"

#include "cli.h"
#include "output.h"

#include <QRegularExpression>

namespace vm20::cli {

TCommandOptions::TCommandOptions(const QString &command, const QString &usage,
                                 const QString &description)
    : FCommand(command), FUsage(usage), FDescription(description)
{
    FParser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    FParser.addOption(QCommandLineOption({QStringLiteral("h"), QStringLiteral("help")},
                                         QStringLiteral("Show this help.")));
}

void TCommandOptions::AddValue(const QString &name, const QString &valueName,
                               const QString &description)
{
    FParser.addOption(QCommandLineOption(name, description, valueName));
}

void TCommandOptions::AddFlag(const QString &name, const QString &description)
{
    FParser.addOption(QCommandLineOption(name, description));
}

bool TCommandOptions::Parse(const QStringList &args, TOutput &out)
{
    // QCommandLineParser skips the first entry as the program's name.
    if (!FParser.parse(QStringList{QStringLiteral("vm20")} + args))
        throw EUsageError(FParser.errorText());
    if (FParser.isSet(QStringLiteral("help"))) {
        out.Line(HelpText());
        return false;
    }
    if (!FParser.positionalArguments().isEmpty())
        throw EUsageError(QStringLiteral("Unexpected argument '%1'.")
                              .arg(FParser.positionalArguments().constFirst()));
    return true;
}

QString TCommandOptions::Required(const QString &name) const
{
    if (!FParser.isSet(name))
        throw EUsageError(QStringLiteral("Missing option '--%1'.").arg(name));
    return FParser.value(name);
}

int TCommandOptions::Integer(const QString &name, int fallback, int minimum) const
{
    if (!FParser.isSet(name))
        return fallback;
    bool ok = false;
    const int value = FParser.value(name).toInt(&ok);
    if (!ok || value < minimum)
        throw EUsageError(QStringLiteral("Option '--%1' needs a whole number of at least %2, not '%3'.")
                              .arg(name)
                              .arg(minimum)
                              .arg(FParser.value(name)));
    return value;
}

QString TCommandOptions::CountClause(const QString &name) const
{
    // Whole numbers with the words the clauses know: "10", "10 PERCENT",
    // "10 OFFSET 20", "20, 10". Nothing else reaches the statement.
    static const QRegularExpression form(
        QStringLiteral("^\\s*\\d+(\\s+percent|\\s+offset\\s+\\d+|\\s*,\\s*\\d+)?\\s*$"),
        QRegularExpression::CaseInsensitiveOption);
    const QString value = FParser.value(name);
    if (!FParser.isSet(name) || value.isEmpty())
        return {};
    if (!form.match(value).hasMatch())
        throw EUsageError(QStringLiteral("Option '--%1' takes a row count such as '10', '10 PERCENT' or "
                                         "'10 OFFSET 20', not '%2'.")
                              .arg(name, value));
    return value.simplified();
}

QString TCommandOptions::Choice(const QString &name, const QStringList &choices,
                                const QString &fallback) const
{
    if (!FParser.isSet(name))
        return fallback;
    const QString value = FParser.value(name);
    for (const QString &choice : choices)
        if (choice.compare(value, Qt::CaseInsensitive) == 0)
            return choice;
    throw EUsageError(QStringLiteral("Option '--%1' takes %2, not '%3'.")
                          .arg(name, choices.join(QLatin1Char('|')), value));
}

QString TCommandOptions::HelpText() const
{
    // The parser's own text starts with a usage line naming the program
    // only; ours names the sub-command.
    QString options = FParser.helpText();
    const qsizetype optionsStart = options.indexOf(QStringLiteral("Options:"));
    if (optionsStart > 0)
        options = options.mid(optionsStart);
    return QStringLiteral("Usage: vm20 %1 %2\n\n%3\n\n%4")
        .arg(FCommand, FUsage, FDescription, options.trimmed());
}

const QStringList &SyntaxNames()
{
    static const QStringList names{QStringLiteral("sql1"), QStringLiteral("sql2"),
                                   QStringLiteral("oracle"), QStringLiteral("access"),
                                   QStringLiteral("nexusdb")};
    return names;
}

TSQLSyntax SyntaxOption(const TCommandOptions &options)
{
    const QString name = options.Choice(QStringLiteral("syntax"), SyntaxNames(), QStringLiteral("sql2"));
    return TSQLSyntax(SyntaxNames().indexOf(name));
}

} // namespace vm20::cli
