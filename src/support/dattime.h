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

// The stored text form: the float value with the current locale's shortest
// float-to-text conversion, and back with its float parser (EConvertError).
QString VmDateTimeToStr(TDateTime value);
TDateTime VmStrToDateTime(const QString &text);

QString FormatDateTime(const QString &format, TDateTime value);
bool TryStrToDateTimeByFormat(const QString &text, const QString &format, TDateTime &value);

// The runtime's locale texts (QLocale() short formats) and their parsers.
QString DateToStr(TDateTime value);
QString TimeToStr(TDateTime value);
QString DateTimeToStr(TDateTime value);
TDateTime StrToDate(const QString &text);      // EConvertError "'%s' is not a valid date"
TDateTime StrToTime(const QString &text);      // EConvertError "'%s' is not a valid time"
TDateTime StrToDateTime(const QString &text);  // EConvertError "'%s' is not a valid date and time"

} // namespace vm20
