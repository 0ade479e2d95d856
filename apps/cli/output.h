#pragma once
// Standard output as the command writes it: UTF-8, every line ended by LF
// whatever line breaks the library put inside a text.
#include <QString>
#include <QStringList>
#include <QTextStream>

#include <cstdio>

namespace vm20::cli {

class TOutput
{
public:
    explicit TOutput(FILE *file = stdout);
    ~TOutput();
    TOutput(const TOutput &) = delete;
    TOutput &operator=(const TOutput &) = delete;

    // Writes `text` as lines: CR LF and lone CR become LF, and a final LF is added.
    void Line(const QString &text = QString());
    void Lines(const QStringList &lines);
    void Flush();
    // Put before every non-empty line from now on.
    void SetIndent(const QString &indent) { FIndent = indent; }

private:
    QTextStream FStream;
    QString FIndent;
};

// CR LF and lone CR as LF.
QString UnixLineBreaks(const QString &text);

} // namespace vm20::cli
