#include "support/nstrings.h"

namespace vm20 {

namespace {

constexpr QChar Quote = QLatin1Char('"');
constexpr QChar Comma = QLatin1Char(',');

bool IsBlank(QChar c) { return c.unicode() <= ' '; }

bool NeedsQuotes(const QString &item)
{
    for (QChar c : item)
        if (IsBlank(c) || c == Comma || c == Quote)
            return true;
    return false;
}

// Reads a quoted item starting at the opening quote; `pos` ends after the
// closing quote (or at the end of an unterminated item).
QString ReadQuoted(const QString &text, qsizetype &pos)
{
    QString item;
    ++pos;
    while (pos < text.size()) {
        const QChar c = text.at(pos++);
        if (c == Quote) {
            if (pos < text.size() && text.at(pos) == Quote)
                ++pos;
            else
                break;
        }
        item.append(c);
    }
    return item;
}

} // namespace

QString ListToCommaText(const QStringList &items)
{
    if (items.size() == 1 && items.first().isEmpty())
        return QStringLiteral("\"\"");
    QString result;
    for (qsizetype i = 0; i < items.size(); ++i) {
        if (i > 0)
            result.append(Comma);
        const QString &item = items.at(i);
        if (NeedsQuotes(item)) {
            result.append(Quote);
            for (QChar c : item) {
                if (c == Quote)
                    result.append(Quote);
                result.append(c);
            }
            result.append(Quote);
        } else {
            result.append(item);
        }
    }
    return result;
}

QStringList ComposeCommaText(const QString &text)
{
    QStringList items;
    const qsizetype n = text.size();
    qsizetype pos = 0;
    auto skipBlanks = [&] {
        while (pos < n && IsBlank(text.at(pos)))
            ++pos;
    };
    skipBlanks();
    while (pos < n) {
        if (text.at(pos) == Quote) {
            items.append(ReadQuoted(text, pos));
        } else {
            const qsizetype first = pos;
            while (pos < n && !IsBlank(text.at(pos)) && text.at(pos) != Comma)
                ++pos;
            items.append(text.mid(first, pos - first));
        }
        skipBlanks();
        if (pos < n && text.at(pos) == Comma) {
            // A comma that ends the text still separates: "a," is a and "".
            if (pos + 1 == n)
                items.append(QString());
            ++pos;
            skipBlanks();
        }
    }
    return items;
}

} // namespace vm20
