#pragma once
// Date-time values as the framework keeps them: days since 1899-12-30 as a
// double, the fraction being the time of day. Formatting and parsing use the
// framework's pattern letters (yyyy, yy, mm, m, dd, d, hh, h, nn, n, ss, s, zzz,
// am/pm; mm right after hh or h is minutes).
#include <QDateTime>
#include <QString>

namespace vm20 {

using TDateTime = double;

TDateTime QDateTimeToDateTime(const QDateTime &value);
QDateTime DateTimeToQDateTime(TDateTime value);
TDateTime EncodeDate(int year, int month, int day);
TDateTime EncodeTime(int hour, int minute, int second, int msec = 0);
TDateTime Now();
TDateTime Date();   // today, no time

// The calendar date and time of day of a value, and back. Decoding fails
// (invalid date and time) for values that are not finite or lie beyond any
// calendar. An invalid date counts as day 0, an invalid time as midnight.
bool DecodeDateTime(TDateTime value, QDate &date, QTime &time);
TDateTime ComposeDateTime(const QDate &date, const QTime &time);

// The stored text form: the float value with the current locale's shortest
// float-to-text conversion, and back with its float parser (EConvertError).
QString VmDateTimeToStr(TDateTime value);
TDateTime VmStrToDateTime(const QString &text);

// Pattern letters (any case): yyyy yy, m mm (month, or minutes right after an
// hour), mmm mmmm (month names), d dd, ddd dddd (day names), ddddd dddddd
// (locale's short/long date), h hh, n nn, s ss, z zzz, am/pm a/p (12-hour
// clock), ampm (locale's texts), c (short date and time), t tt (locale's short/
// long time). Text in '...' or "..." is literal; any other character is written as is.
QString FormatDateTime(const QString &format, TDateTime value);
// Reads `text` by the numeric letters of `format` (y m d h n s z, am/pm a/p);
// separators must match, yy is 1950..2049. False on any mismatch, on trailing
// text and on an invalid date or time; `value` is then left untouched.
bool TryStrToDateTimeByFormat(const QString &text, const QString &format, TDateTime &value);

// The runtime's locale texts (QLocale() short formats) and their parsers.
QString DateToStr(TDateTime value);
QString TimeToStr(TDateTime value);
QString DateTimeToStr(TDateTime value);
TDateTime StrToDate(const QString &text);      // EConvertError "'%s' is not a valid date"
TDateTime StrToTime(const QString &text);      // EConvertError "'%s' is not a valid time"
TDateTime StrToDateTime(const QString &text);  // EConvertError "'%s' is not a valid date and time"

} // namespace vm20
