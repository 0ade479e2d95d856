#pragma once
// The flags of one sub-command: declared, parsed and explained in one place.
// Built on QCommandLineParser, but errors raise EUsageError instead of ending
// the process, and `--help` prints the sub-command's own text.
#include "model/sqlformats.h"
#include "query/sqlsyntax.h"

#include <QCommandLineParser>
#include <QString>
#include <QStringList>

namespace vm20::cli {

class TOutput;

class TCommandOptions
{
public:
    // `usage` follows "vm20 <command>" in the help's first line.
    TCommandOptions(const QString &command, const QString &usage, const QString &description);

    void AddValue(const QString &name, const QString &valueName, const QString &description);
    void AddFlag(const QString &name, const QString &description);

    // Parses the arguments after the command's name. False when `--help` was
    // asked for (its text is then written to `out`); EUsageError for unknown
    // flags, missing values and stray arguments.
    bool Parse(const QStringList &args, TOutput &out);

    bool IsSet(const QString &name) const { return FParser.isSet(name); }
    QString Value(const QString &name) const { return FParser.value(name); }
    QStringList Values(const QString &name) const { return FParser.values(name); }
    // The value of a flag the command cannot do without.
    QString Required(const QString &name) const;
    // An integer value (`fallback` when the flag is absent); EUsageError when
    // it is not a whole number of at least `minimum`.
    int Integer(const QString &name, int fallback, int minimum = 0) const;
    // A value that must be one of `choices` (compared without regard to case).
    // A --top or --limit value: a row count ("10", "10 PERCENT", "10 OFFSET
    // 20", "20, 10"), else EUsageError; empty when not given.
    QString CountClause(const QString &name) const;
    QString Choice(const QString &name, const QStringList &choices, const QString &fallback) const;

    QString HelpText() const;
    const QString &Command() const { return FCommand; }

private:
    QCommandLineParser FParser;
    QString FCommand;
    QString FUsage;
    QString FDescription;
};

// The SQL dialect names the command takes, in TSQLSyntax order.
const QStringList &SyntaxNames();
TSQLSyntax SyntaxOption(const TCommandOptions &options);

} // namespace vm20::cli
