#include "clirunner.h"

#include <QFile>
#include <QProcess>

namespace e2e {

TRun RunProgram(const QString &program, const QStringList &args, const QByteArray &input)
{
    QProcess process;
    process.setProgram(program);
    process.setArguments(args);
    process.start();
    TRun run;
    if (!process.waitForStarted()) {
        run.Err = process.errorString();
        return run;
    }
    process.write(input);
    process.closeWriteChannel();
    process.waitForFinished(300000);
    run.Crashed = process.exitStatus() != QProcess::NormalExit;
    run.ExitCode = process.exitCode();
    run.Out = QString::fromUtf8(process.readAllStandardOutput());
    run.Err = QString::fromUtf8(process.readAllStandardError());
    return run;
}

TRun RunVm20(const QStringList &args, const QByteArray &input)
{
    return RunProgram(QStringLiteral(VM20_EXE), args, input);
}

QString Examples(const QString &relative)
{
    const QString root = QStringLiteral(VM20_SOURCE_DIR "/examples");
    return relative.isEmpty() ? root : root + QLatin1Char('/') + relative;
}

QString SampleDbUrl()
{
    return QStringLiteral("sqlite:" VM20_BINARY_DIR "/examples/shop.sqlite");
}

QString ReadFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("<cannot read %1>").arg(path);
    return QString::fromUtf8(file.readAll());
}

void WriteFile(const QString &path, const QString &text)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(text.toUtf8());
}

} // namespace e2e
