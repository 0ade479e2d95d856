#include "support/nstrings.h"

namespace vm20 {

QString NameOfLine(const QString &line)
{
    const qsizetype eq = line.indexOf(QLatin1Char('='));
    return eq < 0 ? line : line.left(eq);
}

QString ValueOfLine(const QString &line)
{
    const qsizetype eq = line.indexOf(QLatin1Char('='));
    return eq < 0 ? QString() : line.mid(eq + 1);
}

// A line without "=" has no name, so it never matches: a stray text line in a
// section must not answer for a key.
int IndexOfName(const QStringList &lines, const QString &name)
{
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString &line = lines.at(i);
        const qsizetype eq = line.indexOf(QLatin1Char('='));
        if (eq >= 0 && QStringView(line).left(eq).compare(name, Qt::CaseInsensitive) == 0)
            return int(i);
    }
    return -1;
}

QString ValueOf(const QStringList &lines, const QString &name)
{
    const int i = IndexOfName(lines, name);
    return i < 0 ? QString() : ValueOfLine(lines.at(i));
}

bool HasName(const QStringList &lines, const QString &name)
{
    return IndexOfName(lines, name) >= 0;
}

// An empty value keeps its line ("Name="): the text formats write keys whose
// presence matters even when the value is empty.
void SetValueOf(QStringList &lines, const QString &name, const QString &value)
{
    const QString line = name + QLatin1Char('=') + value;
    const int i = IndexOfName(lines, name);
    if (i < 0)
        lines.append(line);
    else
        lines[i] = line;
}

} // namespace vm20
