#include "support/nstrings.h"

namespace vm20 {

QString QuotedStr(const QString &text, QChar quote)
{
    QString result;
    result.reserve(text.size() + 2);
    result.append(quote);
    for (QChar c : text) {
        if (c == quote)
            result.append(quote);
        result.append(c);
    }
    result.append(quote);
    return result;
}

QString DequotedStr(const QString &text, QChar quote)
{
    if (text.size() < 2 || text.front() != quote || text.back() != quote)
        return text;
    QString result;
    result.reserve(text.size() - 2);
    const qsizetype last = text.size() - 1;
    for (qsizetype i = 1; i < last; ++i) {
        const QChar c = text.at(i);
        result.append(c);
        if (c == quote && i + 1 < last && text.at(i + 1) == quote)
            ++i;
    }
    return result;
}

bool SameText(const QString &a, const QString &b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

bool SameTextIgnoring(const QString &a, const QString &b, QChar symbol1, QChar symbol2)
{
    auto strip = [&](QString s) {
        s.remove(symbol1);
        s.remove(symbol2);
        return s;
    };
    return SameText(strip(a), strip(b));
}

bool EqualToSpaces(const QString &a, const QString &b)
{
    auto strip = [](const QString &s) {
        QString result;
        result.reserve(s.size());
        for (QChar c : s)
            if (!IsSpace(c))
                result.append(c);
        return result;
    };
    return strip(a) == strip(b);
}

// Control characters count as blanks too: SQL text may carry tabs and line
// breaks of any platform between its words.
bool IsSpace(QChar c)
{
    return c.unicode() <= ' ' || c.isSpace();
}

bool IsValidIdent(const QString &text)
{
    if (text.isEmpty())
        return false;
    const QChar first = text.front();
    if (!first.isLetter() && first != QLatin1Char('_'))
        return false;
    for (QChar c : text)
        if (!c.isLetter() && !c.isDigit() && c != QLatin1Char('_'))
            return false;
    return true;
}

QString Format(const QString &pattern, std::initializer_list<QVariant> args)
{
    QString result;
    result.reserve(pattern.size() + 16);
    auto next = args.begin();
    const qsizetype n = pattern.size();
    for (qsizetype i = 0; i < n; ++i) {
        const QChar c = pattern.at(i);
        if (c != QLatin1Char('%') || i + 1 == n) {
            result.append(c);
            continue;
        }
        const QChar conversion = pattern.at(i + 1);
        if (conversion == QLatin1Char('%')) {
            result.append(c);
            ++i;
        } else if ((conversion == QLatin1Char('s') || conversion == QLatin1Char('d')) && next != args.end()) {
            result.append(next->toString());
            ++next;
            ++i;
        } else {
            result.append(c);
        }
    }
    return result;
}

} // namespace vm20
