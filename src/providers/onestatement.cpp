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
    while ((i = gap.indexOf(u"/*", i)) >= 0) {
        const qsizetype close = gap.indexOf(u"*/", i + 2);
        const QStringView body = gap.mid(i + 2, close < 0 ? -1 : close - i - 2);
        if (body.contains(u"/*"))
            Refuse(QStringLiteral("a comment inside a comment"));
        if (close < 0)
            Refuse(QStringLiteral("an unterminated comment"));
        i = close + 2;
    }
}

} // namespace

void CheckOneSelect(const QString &sql)
{
    TNScanner scanner;
    scanner.SetSourceStyle(sstSQL);
    scanner.SetSource(QStringList{sql});
    scanner.FirstToken();
    const QString text = sql;   // one line: the scanner's offsets are offsets into it
    if (scanner.EOS())
        Refuse(QStringLiteral("the statement is empty"));
    if (scanner.GetTokStr() != QLatin1String("select"))
        Refuse(QStringLiteral("it does not start with SELECT"));
    qsizetype previousEnd = 0;
    qsizetype skipUntil = 0;
    for (int k = 0; k < scanner.TokenCount(); ++k) {
        const TNToken token = scanner.GetToken(k);
        if (token.Start < skipUntil)
            continue;
        CheckGap(text, previousEnd, token.Start);
        previousEnd = token.End;
        switch (token.TokType) {
        case tokString:
            if (token.End - token.Start < 2 || !token.RealText.endsWith(QLatin1Char('\'')))
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
            if (token.RealText == QLatin1String("$"))
                Refuse(QStringLiteral("\"$\" outside a literal"));
            if (token.RealText == QLatin1String("\"") || token.RealText == QLatin1String("`")) {
                const qsizetype end = QuotedNameEnd(text, token.Start);
                if (end < 0)
                    Refuse(QStringLiteral("an unterminated quoted name"));
                skipUntil = end;
                previousEnd = end;
            }
            break;
        default:
            break;
        }
    }
    CheckGap(text, previousEnd, text.size());
}

} // namespace vm20
