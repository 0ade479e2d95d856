#include "providers/sqlscript.h"

namespace vm20 {

namespace {

// Appends the statement text[begin, end) unless it holds only blanks and
// comments; `line` is the line where scanning of the piece began, corrected
// for the blank lines skipped before its first real character.
void AddStatement(std::vector<TSQLStatement> &out, const QString &text, qsizetype begin,
                  qsizetype end, qsizetype firstCode, int line)
{
    if (firstCode < 0)
        return;
    for (qsizetype i = begin; i < firstCode; ++i)
        if (text[i] == QLatin1Char('\n'))
            ++line;
    out.push_back({text.mid(firstCode, end - firstCode).trimmed(), line});
}

} // namespace

std::vector<TSQLStatement> SplitSQLScript(const QString &script)
{
    std::vector<TSQLStatement> out;
    const qsizetype n = script.size();
    qsizetype begin = 0;       // where the current piece starts
    qsizetype firstCode = -1;  // its first character outside comments and blanks
    int line = 1;              // line at `begin`
    int currentLine = 1;       // line at the scanning position

    auto at = [&](qsizetype i) { return i < n ? script[i] : QChar(); };
    auto skipTo = [&](qsizetype i, qsizetype to) {
        for (; i < to && i < n; ++i)
            if (script[i] == QLatin1Char('\n'))
                ++currentLine;
        return i;
    };

    qsizetype i = 0;
    while (i < n) {
        const QChar c = script[i];
        if (c == QLatin1Char('-') && at(i + 1) == QLatin1Char('-')) {
            qsizetype eol = script.indexOf(QLatin1Char('\n'), i);
            i = skipTo(i, eol < 0 ? n : eol);
            continue;
        }
        if (c == QLatin1Char('/') && at(i + 1) == QLatin1Char('*')) {
            qsizetype close = script.indexOf(QLatin1String("*/"), i + 2);
            i = skipTo(i, close < 0 ? n : close + 2);
            continue;
        }
        if (c == QLatin1Char(';')) {
            AddStatement(out, script, begin, i, firstCode, line);
            i = skipTo(i, i + 1);
            begin = i;
            line = currentLine;
            firstCode = -1;
            continue;
        }
        if (c.isSpace()) {
            i = skipTo(i, i + 1);
            continue;
        }
        if (firstCode < 0)
            firstCode = i;
        QChar close;
        if (c == QLatin1Char('\'') || c == QLatin1Char('"') || c == QLatin1Char('`'))
            close = c;
        else if (c == QLatin1Char('['))
            close = QLatin1Char(']');
        if (close.isNull()) {
            ++i;
            continue;
        }
        // A doubled closing character inside the literal stands for itself,
        // and scanning on from the second one handles that.
        qsizetype end = script.indexOf(close, i + 1);
        i = skipTo(i, end < 0 ? n : end + 1);
    }
    AddStatement(out, script, begin, n, firstCode, line);
    return out;
}

} // namespace vm20
