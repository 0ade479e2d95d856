#pragma once
// Runs the real vm20 executable and the sample-file tools, and finds the
// sample files.
#include "common/printers.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace e2e {

struct TRun
{
    int ExitCode = -1;
    QString Out;
    QString Err;
    bool Crashed = false;
};

// Runs `program` with `args`, feeding `input` to its standard input.
TRun RunProgram(const QString &program, const QStringList &args, const QByteArray &input = {});
TRun RunVm20(const QStringList &args, const QByteArray &input = {});

QString Examples(const QString &relative = QString());   // a path below examples/
QString SampleDbUrl();                                   // sqlite:<build>/examples/shop.sqlite
QString ReadFile(const QString &path);
void WriteFile(const QString &path, const QString &text);

} // namespace e2e
