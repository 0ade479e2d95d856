#include "ui/editmask.h"

#include "ui/ddlabelerror.h"

#include <QLocale>

namespace vm20 {
namespace {

[[noreturn]] void Malformed(const QString &mask, const QString &why)
{
    throw EDDLabelError(QStringLiteral("Invalid edit mask '%1': %2").arg(mask, why));
}

// The locale's date separator: the first character of its short date format
// that is not a pattern letter.
QChar DateSeparator()
{
    for (QChar c : QLocale().dateFormat(QLocale::ShortFormat))
        if (!c.isLetter())
            return c;
    return QLatin1Char('/');
}

// Characters that Qt's input masks read as commands and that must be escaped
// to stand for themselves.
bool IsQtMaskChar(QChar c)
{
    static const QString special = QStringLiteral("AaNnXx90Dd#HhBb><!\\[]{};");
    return special.contains(c);
}

} // namespace

TQtEditMask TranslateEditMask(const QString &editMask)
{
    TQtEditMask result;
    if (editMask.isEmpty())
        return result;

    // The sections split at the last two unescaped semicolons.
    QString body = editMask;
    std::vector<int> cuts;
    for (int i = 0; i < body.size(); ++i) {
        if (body[i] == QLatin1Char('\\'))
            ++i;
        else if (body[i] == QLatin1Char(';'))
            cuts.push_back(i);
    }
    if (cuts.size() > 2)
        Malformed(editMask, QStringLiteral("more than three sections"));
    if (!cuts.empty()) {
        const QString rest = body.mid(cuts.front() + 1);
        body.truncate(cuts.front());
        const QStringList sections = rest.split(QLatin1Char(';'));
        if (sections[0] == QLatin1String("0"))
            result.saveLiterals = false;
        else if (sections[0] != QLatin1String("1") && !sections[0].isEmpty())
            Malformed(editMask, QStringLiteral("the second section must be 0 or 1"));
        if (sections.size() > 1) {
            if (sections[1].size() > 1)
                Malformed(editMask, QStringLiteral("the blank section must be one character"));
            if (sections[1].size() == 1)
                result.blank = sections[1][0];
        }
    }

    QString &out = result.inputMask;
    auto literal = [&](QChar c) {
        if (IsQtMaskChar(c))
            out += QLatin1Char('\\');
        out += c;
        result.literal.push_back(true);
    };
    auto slot = [&](char qt) {
        out += QLatin1Char(qt);
        result.literal.push_back(false);
    };
    for (int i = 0; i < body.size(); ++i) {
        const QChar c = body[i];
        switch (c.unicode()) {
        case '!': break; // trimming of leading blanks: the text is trimmed anyway
        case '>': out += QLatin1Char('>'); break;
        case '<':
            // "<>" ends upper- and lower-casing.
            if (i + 1 < body.size() && body[i + 1] == QLatin1Char('>')) {
                out += QLatin1Char('!');
                ++i;
            } else {
                out += QLatin1Char('<');
            }
            break;
        case '\\':
            if (i + 1 >= body.size())
                Malformed(editMask, QStringLiteral("\"\\\" at the end"));
            literal(body[++i]);
            break;
        case 'L': slot('A'); break;
        case 'l': slot('a'); break;
        case 'A': slot('N'); break;
        case 'a': slot('n'); break;
        case 'C': slot('X'); break;
        case 'c': slot('x'); break;
        case '0': slot('9'); break;
        case '9': slot('0'); break;
        case '#': slot('#'); break;
        case '/': literal(DateSeparator()); break;
        case '_': literal(QLatin1Char(' ')); break;
        default: literal(c); break;
        }
    }
    out += QLatin1Char(';') + result.blank;
    return result;
}

QString StripMaskLiterals(const TQtEditMask &mask, const QString &shownText)
{
    QString kept;
    for (int i = 0; i < shownText.size(); ++i) {
        const bool isLiteral = std::size_t(i) < mask.literal.size() && mask.literal[std::size_t(i)];
        if (!isLiteral && shownText[i] != mask.blank)
            kept += shownText[i];
    }
    return kept.trimmed();
}

} // namespace vm20
