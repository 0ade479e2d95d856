#include "support/dattime.h"

#include "support/exception.h"
#include "support/nstrings.h"

#include <QLocale>

#include <cmath>

namespace vm20 {

namespace {

constexpr qint64 MsecsPerDay = 86400000;
// About 270,000 years either way: far beyond any calendar date, yet small
// enough that day arithmetic cannot overflow.
constexpr double MaxDays = 1e8;

QDate Epoch()
{
    return QDate(1899, 12, 30);
}

// Two-digit years of a locale format read as 1950..2049, as the pattern
// parser reads "yy"; the locale parser alone would put them all in the 1900s.
void WidenTwoDigitYear(QDate &date, const QString &format)
{
    if (!format.contains(QLatin1String("yy")) || format.contains(QLatin1String("yyyy")))
        return;
    const int year = date.year();
    if (year < 1900 || year > 1999)
        return;
    const int yy = year - 1900;
    const QDate widened(yy < 50 ? 2000 + yy : 1900 + yy, date.month(), date.day());
    if (widened.isValid())
        date = widened;
}

bool TryDate(const QString &text, QDate &date)
{
    const QString s = text.trimmed();
    const QLocale locale;
    for (QLocale::FormatType type : {QLocale::ShortFormat, QLocale::LongFormat}) {
        const QString format = locale.dateFormat(type);
        date = locale.toDate(s, format);
        if (date.isValid()) {
            WidenTwoDigitYear(date, format);
            return true;
        }
    }
    date = QDate::fromString(s, QStringLiteral("yyyy-MM-dd"));
    return date.isValid();
}

bool TryTime(const QString &text, QTime &time)
{
    const QString s = text.trimmed();
    const QLocale locale;
    for (QLocale::FormatType type : {QLocale::ShortFormat, QLocale::LongFormat}) {
        time = locale.toTime(s, type);
        if (time.isValid())
            return true;
    }
    for (const char *format : {"H:mm:ss", "H:mm", "H:mm:ss.zzz"}) {
        time = QTime::fromString(s, QLatin1String(format));
        if (time.isValid())
            return true;
    }
    return false;
}

[[noreturn]] void Invalid(const char *message, const QString &text)
{
    throw EConvertError(Format(QLatin1String(message), {text}));
}

} // namespace

TDateTime ComposeDateTime(const QDate &date, const QTime &time)
{
    const qint64 days = date.isValid() ? Epoch().daysTo(date) : 0;
    const double fraction = time.isValid() ? double(time.msecsSinceStartOfDay()) / MsecsPerDay : 0.0;
    // Before the epoch the fraction still counts forward from midnight:
    // -1.25 is 1899-12-29 06:00.
    return days >= 0 ? double(days) + fraction : double(days) - fraction;
}

bool DecodeDateTime(TDateTime value, QDate &date, QTime &time)
{
    if (!std::isfinite(value) || std::fabs(value) > MaxDays) {
        date = QDate();
        time = QTime();
        return false;
    }
    qint64 days = qint64(std::trunc(value));
    qint64 msecs = std::llround(std::fabs(value - double(days)) * MsecsPerDay);
    if (msecs >= MsecsPerDay) {
        msecs -= MsecsPerDay;
        days += value < 0 ? -1 : 1;
    }
    date = Epoch().addDays(days);
    time = QTime::fromMSecsSinceStartOfDay(int(msecs));
    return true;
}

TDateTime QDateTimeToDateTime(const QDateTime &value)
{
    if (!value.isValid())
        return 0.0;
    return ComposeDateTime(value.date(), value.time());
}

QDateTime DateTimeToQDateTime(TDateTime value)
{
    QDate date;
    QTime time;
    if (!DecodeDateTime(value, date, time))
        return QDateTime();
    return QDateTime(date, time);
}

TDateTime EncodeDate(int year, int month, int day)
{
    const QDate date(year, month, day);
    if (!date.isValid())
        throw EConvertError(QStringLiteral("Invalid argument to date encode"));
    return ComposeDateTime(date, QTime());
}

TDateTime EncodeTime(int hour, int minute, int second, int msec)
{
    if (!QTime::isValid(hour, minute, second, msec))
        throw EConvertError(QStringLiteral("Invalid argument to time encode"));
    return double(QTime(hour, minute, second, msec).msecsSinceStartOfDay()) / MsecsPerDay;
}

TDateTime Now()
{
    return QDateTimeToDateTime(QDateTime::currentDateTime());
}

TDateTime Date()
{
    return ComposeDateTime(QDate::currentDate(), QTime());
}

QString VmDateTimeToStr(TDateTime value)
{
    return FloatToStr(value);
}

TDateTime VmStrToDateTime(const QString &text)
{
    return StrToFloat(text);
}

QString DateToStr(TDateTime value)
{
    QDate date;
    QTime time;
    DecodeDateTime(value, date, time);
    return QLocale().toString(date, QLocale::ShortFormat);
}

QString TimeToStr(TDateTime value)
{
    QDate date;
    QTime time;
    DecodeDateTime(value, date, time);
    return QLocale().toString(time, QLocale::ShortFormat);
}

// Midnight is left out, so a pure date reads as a date.
QString DateTimeToStr(TDateTime value)
{
    QDate date;
    QTime time;
    DecodeDateTime(value, date, time);
    const QLocale locale;
    QString text = locale.toString(date, QLocale::ShortFormat);
    if (time.isValid() && time.msecsSinceStartOfDay() != 0)
        text += QLatin1Char(' ') + locale.toString(time, QLocale::ShortFormat);
    return text;
}

TDateTime StrToDate(const QString &text)
{
    QDate date;
    if (!TryDate(text, date))
        Invalid("'%s' is not a valid date", text);
    return ComposeDateTime(date, QTime());
}

TDateTime StrToTime(const QString &text)
{
    QTime time;
    if (!TryTime(text, time))
        Invalid("'%s' is not a valid time", text);
    return ComposeDateTime(QDate(), time);
}

// The date and the time are split at a blank; the locale's date may hold
// blanks itself ("5 Jan 2024"), so every blank is tried.
TDateTime StrToDateTime(const QString &text)
{
    const QString s = text.trimmed();
    QDate date;
    QTime time;
    if (TryDate(s, date))
        return ComposeDateTime(date, QTime());
    const QDateTime iso = QDateTime::fromString(s, Qt::ISODate);
    if (iso.isValid())
        return ComposeDateTime(iso.date(), iso.time());
    for (qsizetype i = s.indexOf(QLatin1Char(' ')); i > 0; i = s.indexOf(QLatin1Char(' '), i + 1))
        if (TryDate(s.left(i), date) && TryTime(s.mid(i + 1), time))
            return ComposeDateTime(date, time);
    Invalid("'%s' is not a valid date and time", text);
}

} // namespace vm20
