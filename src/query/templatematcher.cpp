#include "query/templatematcher.h"

#include "support/nstrings.h"

namespace vm20 {

namespace {

bool SameChar(QChar a, QChar b)
{
    if (a == b)
        return true;
    const char16_t x = a.unicode();
    const char16_t y = b.unicode();
    if (x < 128 && y < 128) {
        const auto lower = [](char16_t c) { return c >= u'A' && c <= u'Z' ? char16_t(c + 32) : c; };
        return lower(x) == lower(y);
    }
    return a.toCaseFolded() == b.toCaseFolded();
}

// IsSpace without the call for the ASCII characters that most SQL text is
// made of.
inline bool IsBlank(QChar c)
{
    const char16_t u = c.unicode();
    return u <= u' ' || (u >= 0x80 && IsSpace(c));
}

bool IsQuote(QChar c)
{
    return c == QLatin1Char('\'') || c == QLatin1Char('"');
}

bool IsNameChar(QChar c)
{
    return (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char('f')
           || c == QLatin1Char('F');
}

// The end of a placeholder name that starts with "@" at `at`.
qsizetype NameEnd(QStringView templ, qsizetype at)
{
    qsizetype end = at + 1;
    while (end < templ.size() && IsNameChar(templ[end]))
        ++end;
    return end;
}

// 0 for "@f", 1 and 2 for "@1" and "@2", -1 for a name that is not kept.
int SlotIndex(QStringView name)
{
    if (name.size() != 2)
        return -1;
    switch (name[1].unicode()) {
    case u'f':
    case u'F': return 0;
    case u'1': return 1;
    case u'2': return 2;
    default: return -1;
    }
}

QStringView &SlotOf(TTemplateVars &vars, int index)
{
    return index == 0 ? vars.F : index == 1 ? vars.V1 : vars.V2;
}

// Reads one value from `text` at `j` up to the stop character, which counts
// only outside quoted parts and brackets. A stop character that is a quote
// ends the value at the first quote that is not doubled: the template's
// quotes enclose the value, and an SQL literal doubles the quotes it holds.
qsizetype ReadValue(QStringView text, qsizetype j, bool hasStop, QChar stop)
{
    const qsizetype n = text.size();
    int depth = 0;
    QChar quote;
    bool quoted = false;
    while (j < n) {
        const QChar c = text[j];
        if (quoted) {
            if (c == quote) {
                if (j + 1 < n && text[j + 1] == quote) {
                    j += 2;
                    continue;
                }
                quoted = false;
            }
            ++j;
            continue;
        }
        if (hasStop && depth == 0 && c == stop) {
            if (IsQuote(stop) && j + 1 < n && text[j + 1] == stop) {
                j += 2;
                continue;
            }
            break;
        }
        if (IsQuote(c)) {
            quote = c;
            quoted = true;
        } else if (c == QLatin1Char('(')) {
            ++depth;
        } else if (c == QLatin1Char(')') && depth >= 1) {
            --depth;
        }
        ++j;
    }
    return j;
}

// Reads the inside of a string literal from `text` at `j` up to the stop
// character: only a doubled quote is special there (it is text), and an
// undoubled quote ends the literal and with it the value. Double quotes and
// brackets are plain characters.
qsizetype ReadLiteralValue(QStringView text, qsizetype j, bool hasStop, QChar stop)
{
    const qsizetype n = text.size();
    while (j < n) {
        const QChar c = text[j];
        if (c == QLatin1Char('\'')) {
            if (j + 1 < n && text[j + 1] == c) {
                j += 2;
                continue;
            }
            break;
        }
        if (hasStop && c == stop)
            break;
        ++j;
    }
    return j;
}

} // namespace

QStringView TTemplateVars::Value(QStringView name) const
{
    switch (SlotIndex(name)) {
    case 0: return F;
    case 1: return V1;
    case 2: return V2;
    default: return {};
    }
}

bool MatchSQLTemplate(QStringView templ, QStringView text, TTemplateVars &vars)
{
    vars.Clear();
    const qsizetype nt = templ.size();
    const qsizetype ns = text.size();
    qsizetype i = 0;
    qsizetype j = 0;
    // Between a quote of the template and the next: the text there is a
    // literal's, where every blank counts.
    bool inLiteral = false;
    for (;;) {
        if (i >= nt || j >= ns)
            return i >= nt && j >= ns;
        if (SameChar(templ[i], text[j])) {
            if (templ[i] == QLatin1Char('\''))
                inLiteral = !inLiteral;
            ++i;
            ++j;
            if (inLiteral)
                continue;
            while (i < nt && IsBlank(templ[i]))
                ++i;
            while (j < ns && IsBlank(text[j]))
                ++j;
            continue;
        }
        // A quoted placeholder whose value stands without quotes in the text.
        const bool quoteNoted = templ[i] == QLatin1Char('\'');
        if (quoteNoted)
            ++i;
        if (i >= nt || templ[i] != QLatin1Char('@'))
            return false;
        const qsizetype nameEnd = NameEnd(templ, i);
        const QStringView name = templ.sliced(i, nameEnd - i);
        i = nameEnd;
        if (quoteNoted) {
            while (i < nt && templ[i] != QLatin1Char('\''))
                ++i;
            if (i < nt)
                ++i;
        }
        const bool hasStop = i < nt;
        const QChar stop = hasStop ? templ[i] : QChar();
        const qsizetype end = inLiteral ? ReadLiteralValue(text, j, hasStop, stop)
                                        : ReadValue(text, j, hasStop, stop);
        if (const int slot = SlotIndex(name); slot >= 0) {
            SlotOf(vars, slot) = text.sliced(j, end - j);
            if (slot == 1)
                vars.V1Literal = inLiteral;
            else if (slot == 2)
                vars.V2Literal = inLiteral;
        }
        j = end;
    }
}

QString FillSQLTemplate(QStringView templ, const TTemplateVars &vars)
{
    QString result;
    result.reserve(templ.size() + vars.F.size() + vars.V1.size() + vars.V2.size());
    qsizetype i = 0;
    while (i < templ.size()) {
        if (templ[i] != QLatin1Char('@')) {
            result.append(templ[i++]);
            continue;
        }
        const qsizetype end = NameEnd(templ, i);
        const QStringView name = templ.sliced(i, end - i);
        if (SlotIndex(name) >= 0)
            result.append(vars.Value(name));
        else
            result.append(name);
        i = end;
    }
    return result;
}

} // namespace vm20
