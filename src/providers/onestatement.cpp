#include "providers/onestatement.h"

#include "model/errors.h"
#include "providers/sqlerrors.h"
#include "sqlparse/scanner.h"

namespace vm20 {

namespace {

[[noreturn]] void Refuse(const QString &why)
{
    throw ENDBInfoError(dbieNotOneSelect, SNotOneSelect, {why});
}

// The offset just past the quoted name that opens at `open`; a doubled quote
// stays inside. -1 when the name is never closed.
qsizetype QuotedNameEnd(const QString &text, qsizetype open)
{
    const QChar quote = text[open];
    for (qsizetype i = open + 1; i < text.size(); ++i) {
        if (text[i] != quote)
            continue;
        if (i + 1 < text.size() && text[i + 1] == quote) {
            ++i;
            continue;
        }
        return i + 1;
    }
    return -1;
}

// The scanner skips comments; what lies between two tokens is blanks and
// comments only. A comment opening inside another would nest on engines that
// nest them, and end somewhere else than here.
void CheckGap(const QString &text, qsizetype from, qsizetype to)
{
    const QStringView gap = QStringView(text).mid(from, to - from);
    qsizetype i = 0;
    while (i < gap.size()) {
        if (gap.mid(i).startsWith(u"--")) {
            const qsizetype end = gap.indexOf(u'\n', i);
            i = end < 0 ? gap.size() : end + 1;
        } else if (gap.mid(i).startsWith(u"/*")) {
            const qsizetype close = gap.indexOf(u"*/", i + 2);
            const QStringView body = gap.mid(i + 2, close < 0 ? -1 : close - i - 2);
            if (body.contains(u"/*"))
                Refuse(QStringLiteral("a comment inside a comment"));
            if (close < 0)
                Refuse(QStringLiteral("an unterminated comment"));
            i = close + 2;
        } else {
            ++i;
        }
    }
}

// Checks the statement from `from` on; returns where a quoted name begins
// past which the scanner would read wrongly (it knows no quoted names, so a
// quote or comment marker inside one would mislead it), or -1 at the end.
qsizetype CheckPiece(const QString &text, qsizetype from)
{
    TNScanner scanner;
    scanner.SetSourceStyle(sstSQL);
    scanner.SetSource(QStringList{text.mid(from)});
    scanner.FirstToken();
    qsizetype previousEnd = from;
    for (int k = 0; k < scanner.TokenCount(); ++k) {
        const TNToken token = scanner.GetToken(k);
        const qsizetype start = from + token.Start;
        CheckGap(text, previousEnd, start);
        previousEnd = from + token.End;
        switch (token.TokType) {
        case tokString:
            // A literal left open may still end in a quote: 'abc'' is open.
            if (!IsOneLiteral(token.RealText))
                Refuse(QStringLiteral("an unterminated string literal"));
            // E'...' reads a backslash as an escape, so its end is elsewhere.
            if (k > 0 && token.RealText.contains(QLatin1Char('\\'))) {
                const TNToken before = scanner.GetToken(k - 1);
                if (before.TokType == tokWord && before.End == token.Start)
                    Refuse(QStringLiteral("an escape string literal"));
            }
            break;
        case tokSymbol:
            if (token.RealText == QLatin1String(";"))
                Refuse(QStringLiteral("\";\" separates statements"));
            if (token.RealText == QLatin1String("\"") || token.RealText == QLatin1String("`"))
                return start;
            break;
        default:
            break;
        }
        // Dollar quoting and positional parameters; this library writes neither.
        if (token.TokType != tokString && token.RealText.contains(QLatin1Char('$')))
            Refuse(QStringLiteral("\"$\" outside a literal"));
    }
    CheckGap(text, previousEnd, text.size());
    return -1;
}

} // namespace

void CheckOneSelect(const QString &sql)
{
    // Drivers hand the text on as a C string: a NUL would end it early, and
    // other control characters have no place in a statement this library reads.
    for (const QChar c : sql) {
        if (c.unicode() < 0x20 && c != QLatin1Char('\t') && c != QLatin1Char('\n') && c != QLatin1Char('\r'))
            Refuse(QStringLiteral("a control character"));
    }
    TNScanner scanner;
    scanner.SetSourceStyle(sstSQL);
    scanner.SetSource(QStringList{sql});
    scanner.FirstToken();
    if (scanner.EOS())
        Refuse(QStringLiteral("the statement is empty"));
    if (scanner.GetTokStr() != QLatin1String("select"))
        Refuse(QStringLiteral("it does not start with SELECT"));
    qsizetype from = 0;
    while ((from = CheckPiece(sql, from)) >= 0) {
        from = QuotedNameEnd(sql, from);
        if (from < 0)
            Refuse(QStringLiteral("an unterminated quoted name"));
    }
}

} // namespace vm20
