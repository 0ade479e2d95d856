#include "support/dattime.h"

#include <QLocale>

#include <vector>

namespace vm20 {

namespace {

enum TokenKind {
    tkLiteral,
    tkYear2, tkYear4,
    tkMonth, tkMonth2, tkMonthShort, tkMonthLong,
    tkDay, tkDay2, tkDayShort, tkDayLong, tkDateShort, tkDateLong,
    tkHour, tkHour2, tkMinute, tkMinute2, tkSecond, tkSecond2, tkMsec, tkMsec3,
    tkAmPm,          // am/pm or a/p, written in the case of the pattern
    tkTimeShort, tkTimeLong, tkDateTime
};

struct Token
{
    TokenKind kind;
    QString text;    // literal text; the morning text of tkAmPm
    QString text2;   // the afternoon text of tkAmPm
};

struct Pattern
{
    std::vector<Token> tokens;
    bool twelveHour = false;
};

bool StartsWithAt(const QString &s, qsizetype at, QLatin1String word)
{
    return QStringView(s).mid(at, word.size()).compare(word, Qt::CaseInsensitive) == 0;
}

Pattern Tokenize(const QString &format)
{
    Pattern p;
    auto literal = [&](QStringView text) {
        if (!p.tokens.empty() && p.tokens.back().kind == tkLiteral)
            p.tokens.back().text += text;
        else
            p.tokens.push_back({tkLiteral, text.toString(), {}});
    };
    const QLocale locale;
    QChar last;   // the previous pattern letter, upper case; separators leave it alone
    const qsizetype n = format.size();
    qsizetype i = 0;
    while (i < n) {
        const QChar c = format.at(i);
        if (c == QLatin1Char('\'') || c == QLatin1Char('"')) {
            qsizetype close = format.indexOf(c, i + 1);
            if (close < 0)
                close = n;
            literal(QStringView(format).mid(i + 1, close - i - 1));
            i = close + 1;
            continue;
        }
        const QChar u = c.toUpper();
        if (u == QLatin1Char('A')) {
            last = u;
            if (StartsWithAt(format, i, QLatin1String("am/pm"))) {
                p.tokens.push_back({tkAmPm, format.mid(i, 2), format.mid(i + 3, 2)});
                i += 5;
            } else if (StartsWithAt(format, i, QLatin1String("a/p"))) {
                p.tokens.push_back({tkAmPm, format.mid(i, 1), format.mid(i + 2, 1)});
                i += 3;
            } else if (StartsWithAt(format, i, QLatin1String("ampm"))) {
                p.tokens.push_back({tkAmPm, locale.amText(), locale.pmText()});
                i += 4;
            } else {
                literal(QStringView(format).mid(i, 1));
                ++i;
                continue;
            }
            p.twelveHour = true;
            continue;
        }
        qsizetype count = 1;
        while (i + count < n && format.at(i + count).toUpper() == u)
            ++count;
        TokenKind kind = tkLiteral;
        switch (u.unicode()) {
        case 'Y': kind = count <= 2 ? tkYear2 : tkYear4; break;
        case 'M':
            if (last == QLatin1Char('H') && count <= 2) {
                kind = count == 1 ? tkMinute : tkMinute2;
                break;
            }
            kind = count == 1 ? tkMonth : count == 2 ? tkMonth2 : count == 3 ? tkMonthShort : tkMonthLong;
            break;
        case 'D': {
            static constexpr TokenKind days[] = {tkDay, tkDay2, tkDayShort, tkDayLong, tkDateShort, tkDateLong};
            kind = days[count < 6 ? count - 1 : 5];
            break;
        }
        case 'H': kind = count == 1 ? tkHour : tkHour2; break;
        case 'N': kind = count == 1 ? tkMinute : tkMinute2; break;
        case 'S': kind = count == 1 ? tkSecond : tkSecond2; break;
        case 'Z': kind = count == 1 ? tkMsec : tkMsec3; break;
        case 'T': kind = count == 1 ? tkTimeShort : tkTimeLong; break;
        case 'C': kind = tkDateTime; count = 1; break;
        default: count = 1; break;
        }
        if (u.isLetter())
            last = (kind == tkMinute || kind == tkMinute2) ? QLatin1Char('N') : u;
        if (kind == tkLiteral)
            literal(QStringView(format).mid(i, count));
        else
            p.tokens.push_back({kind, {}, {}});
        i += count;
    }
    return p;
}

QString Padded(int value, int width)
{
    return QString::number(value).rightJustified(width, QLatin1Char('0'));
}

} // namespace

QString FormatDateTime(const QString &format, TDateTime value)
{
    const Pattern p = Tokenize(format);
    QDate date;
    QTime time;
    DecodeDateTime(value, date, time);
    if (!date.isValid())
        date = QDate(1899, 12, 30);
    if (!time.isValid())
        time = QTime(0, 0);
    const QLocale locale;
    int hour = time.hour();
    if (p.twelveHour) {
        hour %= 12;
        if (hour == 0)
            hour = 12;
    }
    QString out;
    for (const Token &t : p.tokens) {
        switch (t.kind) {
        case tkLiteral: out += t.text; break;
        case tkYear2: out += Padded(date.year() % 100, 2); break;
        case tkYear4: out += Padded(date.year(), 4); break;
        case tkMonth: out += QString::number(date.month()); break;
        case tkMonth2: out += Padded(date.month(), 2); break;
        case tkMonthShort: out += locale.monthName(date.month(), QLocale::ShortFormat); break;
        case tkMonthLong: out += locale.monthName(date.month(), QLocale::LongFormat); break;
        case tkDay: out += QString::number(date.day()); break;
        case tkDay2: out += Padded(date.day(), 2); break;
        case tkDayShort: out += locale.dayName(date.dayOfWeek(), QLocale::ShortFormat); break;
        case tkDayLong: out += locale.dayName(date.dayOfWeek(), QLocale::LongFormat); break;
        case tkDateShort: out += locale.toString(date, QLocale::ShortFormat); break;
        case tkDateLong: out += locale.toString(date, QLocale::LongFormat); break;
        case tkHour: out += QString::number(hour); break;
        case tkHour2: out += Padded(hour, 2); break;
        case tkMinute: out += QString::number(time.minute()); break;
        case tkMinute2: out += Padded(time.minute(), 2); break;
        case tkSecond: out += QString::number(time.second()); break;
        case tkSecond2: out += Padded(time.second(), 2); break;
        case tkMsec: out += QString::number(time.msec()); break;
        case tkMsec3: out += Padded(time.msec(), 3); break;
        case tkAmPm: out += time.hour() < 12 ? t.text : t.text2; break;
        case tkTimeShort: out += locale.toString(time, QLocale::ShortFormat); break;
        case tkTimeLong: out += locale.toString(time, QLocale::LongFormat); break;
        case tkDateTime:
            out += locale.toString(date, QLocale::ShortFormat);
            if (time.msecsSinceStartOfDay() != 0)
                out += QLatin1Char(' ') + locale.toString(time, QLocale::LongFormat);
            break;
        }
    }
    return out;
}

namespace {

// Reads 1..maxDigits ASCII digits.
bool ReadNumber(const QString &text, qsizetype &pos, int maxDigits, int &value)
{
    value = 0;
    int digits = 0;
    while (digits < maxDigits && pos < text.size()) {
        const char16_t c = text.at(pos).unicode();
        if (c < '0' || c > '9')
            break;
        value = value * 10 + (c - '0');
        ++pos;
        ++digits;
    }
    return digits > 0;
}

bool ReadWord(const QString &text, qsizetype &pos, const QString &word)
{
    if (word.isEmpty() || QStringView(text).mid(pos, word.size()).compare(word, Qt::CaseInsensitive) != 0)
        return false;
    pos += word.size();
    return true;
}

} // namespace

bool TryStrToDateTimeByFormat(const QString &text, const QString &format, TDateTime &value)
{
    const Pattern p = Tokenize(format);
    const QString s = text.trimmed();
    qsizetype pos = 0;
    int year = -1, month = -1, day = -1;
    int hour = 0, minute = 0, second = 0, msec = 0;
    int afternoon = -1;   // -1 no am/pm seen, 0 am, 1 pm
    for (const Token &t : p.tokens) {
        bool ok = true;
        switch (t.kind) {
        case tkLiteral:
            ok = QStringView(s).mid(pos, t.text.size()) == t.text;
            pos += t.text.size();
            break;
        case tkYear2:
            ok = ReadNumber(s, pos, 2, year);
            year += year < 50 ? 2000 : 1900;
            break;
        case tkYear4: ok = ReadNumber(s, pos, 4, year); break;
        case tkMonth: case tkMonth2: ok = ReadNumber(s, pos, 2, month); break;
        case tkDay: case tkDay2: ok = ReadNumber(s, pos, 2, day); break;
        case tkHour: case tkHour2: ok = ReadNumber(s, pos, 2, hour); break;
        case tkMinute: case tkMinute2: ok = ReadNumber(s, pos, 2, minute); break;
        case tkSecond: case tkSecond2: ok = ReadNumber(s, pos, 2, second); break;
        case tkMsec: case tkMsec3: ok = ReadNumber(s, pos, 3, msec); break;
        case tkAmPm:
            if (ReadWord(s, pos, t.text))
                afternoon = 0;
            else if (ReadWord(s, pos, t.text2))
                afternoon = 1;
            else
                ok = false;
            break;
        default:
            ok = false;   // names and locale forms are for display only
            break;
        }
        if (!ok || pos > s.size())
            return false;
    }
    if (pos != s.size())
        return false;
    if (p.twelveHour) {
        if (hour < 1 || hour > 12)
            return false;
        hour %= 12;
        if (afternoon == 1)
            hour += 12;
    }
    QDate date;
    if (year >= 0 || month >= 0 || day >= 0) {
        date = QDate(year >= 0 ? year : QDate::currentDate().year(), month >= 0 ? month : 1, day >= 0 ? day : 1);
        if (!date.isValid() || date.year() <= 0)
            return false;
    }
    if (!QTime::isValid(hour, minute, second, msec))
        return false;
    value = ComposeDateTime(date, QTime(hour, minute, second, msec));
    return true;
}

} // namespace vm20
