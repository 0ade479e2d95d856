#include "output.h"

#include <QIODevice>

namespace vm20::cli {

QString UnixLineBreaks(const QString &text)
{
    if (!text.contains(QLatin1Char('\r')))
        return text;
    QString result = text;
    result.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    result.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return result;
}

TOutput::TOutput(FILE *file) : FStream(file, QIODevice::WriteOnly)
{
    FStream.setEncoding(QStringConverter::Utf8);
}

TOutput::~TOutput()
{
    FStream.flush();
}

void TOutput::Line(const QString &text)
{
    if (FIndent.isEmpty()) {
        FStream << UnixLineBreaks(text) << '\n';
        return;
    }
    for (const QString &line : UnixLineBreaks(text).split(QLatin1Char('\n')))
        FStream << (line.isEmpty() ? QString() : FIndent + line) << '\n';
}

void TOutput::Lines(const QStringList &lines)
{
    for (const QString &line : lines)
        Line(line);
}

void TOutput::Flush()
{
    FStream.flush();
}

} // namespace vm20::cli
