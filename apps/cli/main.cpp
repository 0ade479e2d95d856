// The vm20 command: builds, reads back and runs queries on a data model.
// Exit codes: 0 done, 1 the library (or a file, or the database) refused,
// 2 the command line was wrong.
#include "cli.h"
#include "output.h"

#include <QApplication>
#include <QCoreApplication>

#include <memory>

#include <cstdio>
#include <iterator>

namespace vm20::cli {
namespace {

const TCommand Commands[] = {
    {"sql", "Build a query file on a model and print its SELECT statement.", RunSql},
    {"parse", "Read a SELECT statement into a query and print the query text.", RunParse},
    {"text", "Print the conditions of a query file as readable text.", RunText},
    {"import", "Build a model from a database and print it.", RunImport},
    {"convert", "Print a model file as model text or as XML.", RunConvert},
    {"run", "Build a query, execute it on a database and print the rows.", RunRun},
    {"tour", "Walk through the sample shop database: import, model, queries, rows.", RunTour},
    {"diagram", "Draw a model's tables and links as a PNG or SVG file.", RunDiagram},
};

QString GeneralHelp()
{
    QString text = QStringLiteral("Usage: vm20 COMMAND [options]\n\n"
                                  "Builds SQL SELECT statements from a data model and query files.\n\n"
                                  "Commands:\n");
    for (const TCommand &command : Commands)
        text += QStringLiteral("  %1%2\n").arg(QString::fromLatin1(command.Name).leftJustified(9),
                                               QLatin1String(command.Summary));
    text += QStringLiteral("\n'vm20 COMMAND --help' explains a command's options.");
    return text;
}

// Messages go to standard error on one line: a parser message's line number
// follows the text after a blank.
void PrintError(const QString &prefix, const QString &message)
{
    const QString line = message.simplified();
    std::fprintf(stderr, "%s: %s\n", qUtf8Printable(prefix), qUtf8Printable(line));
}

int Dispatch(const QStringList &args, TOutput &out)
{
    if (args.isEmpty()) {
        PrintError(QStringLiteral("vm20"), QStringLiteral("no command given (see vm20 --help)"));
        return ExitUsage;
    }
    const QString name = args.constFirst();
    if (name == QLatin1String("--help") || name == QLatin1String("-h") || name == QLatin1String("help")) {
        out.Line(GeneralHelp());
        return ExitOk;
    }
    const TCommand *command = nullptr;
    for (const TCommand &candidate : Commands)
        if (name == QLatin1String(candidate.Name))
            command = &candidate;
    if (!command) {
        PrintError(QStringLiteral("vm20"), QStringLiteral("unknown command '%1' (see vm20 --help)").arg(name));
        return ExitUsage;
    }
    const QString prefix = QStringLiteral("vm20 ") + name;
    try {
        return command->Run(args.mid(1), out);
    } catch (const EIncompleteQuery &e) {
        out.Flush();
        PrintError(prefix, e.Message());
        for (const QString &item : e.Items())
            std::fprintf(stderr, "  %s\n", qUtf8Printable(item));
        return ExitError;
    } catch (const EUsageError &e) {
        out.Flush();
        PrintError(prefix, e.Message() + QStringLiteral(" (see vm20 %1 --help)").arg(name));
        return ExitUsage;
    } catch (const Exception &e) {
        out.Flush();
        PrintError(prefix, e.Message());
        return ExitError;
    } catch (const std::exception &e) {
        out.Flush();
        PrintError(prefix, QString::fromLocal8Bit(e.what()));
        return ExitError;
    }
}

} // namespace
} // namespace vm20::cli

int main(int argc, char *argv[])
{
    // Only drawing a diagram needs widgets; it runs them without a display,
    // and every other command stays free of one.
    std::unique_ptr<QCoreApplication> app;
    if (argc > 1 && qstrcmp(argv[1], "diagram") == 0) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        // The platform's notes (no runtime folder, no window manager) are no
        // business of the command's user: only its own message goes to stderr.
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
            if (type == QtCriticalMsg || type == QtFatalMsg)
                std::fprintf(stderr, "vm20 diagram: %s\n", qUtf8Printable(text));
        });
        app = std::make_unique<QApplication>(argc, argv);
    } else {
        app = std::make_unique<QCoreApplication>(argc, argv);
    }
    QCoreApplication::setApplicationName(QStringLiteral("vm20"));
    vm20::cli::TOutput out;
    return vm20::cli::Dispatch(QCoreApplication::arguments().mid(1), out);
}
