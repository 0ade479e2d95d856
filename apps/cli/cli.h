#pragma once
// What every sub-command of the `vm20` command shares: exit codes, the
// usage error, and the signature of a sub-command.
#include "support/exception.h"

#include <QString>
#include <QStringList>

namespace vm20::cli {

enum TExitCode { ExitOk = 0, ExitError = 1, ExitUsage = 2 };

// A command line the program cannot act on: unknown flag, missing argument,
// a value of the wrong form. Exits with ExitUsage.
class EUsageError : public Exception
{
public:
    using Exception::Exception;
};

// A query the model cannot resolve in full: building it would leave the
// listed parts out. Exits with ExitError, each item on a line of its own.
class EIncompleteQuery : public Exception
{
public:
    EIncompleteQuery(const QString &message, const QStringList &items) : Exception(message), FItems(items) {}
    const QStringList &Items() const { return FItems; }

private:
    QStringList FItems;
};

class TOutput;

// A sub-command gets the arguments after its name and writes to `out`.
// Library errors leave it as vm20::Exception; usage errors as EUsageError.
using TCommandFunc = int (*)(const QStringList &args, TOutput &out);

struct TCommand
{
    const char *Name;
    const char *Summary;
    TCommandFunc Run;
};

int RunSql(const QStringList &args, TOutput &out);
int RunParse(const QStringList &args, TOutput &out);
int RunText(const QStringList &args, TOutput &out);
int RunImport(const QStringList &args, TOutput &out);
int RunConvert(const QStringList &args, TOutput &out);
int RunRun(const QStringList &args, TOutput &out);
int RunTour(const QStringList &args, TOutput &out);
int RunDiagram(const QStringList &args, TOutput &out);

} // namespace vm20::cli
