#include "support/exception.h"
#include "support/nstrings.h"

#include <QLocale>

#include <cmath>

namespace vm20 {

namespace {

// Plain decimal notation covers the values a query or a model writes; only
// magnitudes outside this range fall back to an exponent.
constexpr double PlainMin = 1e-5;
constexpr double PlainMax = 1e15;

// The largest amount a currency value holds (an int64 count of 1/10000).
constexpr double CurrencyMax = 922337203685477.5807;

double RoundToCurrency(double value)
{
    return std::round(value * 10000.0) / 10000.0;
}

QString ShortestText(const QLocale &locale, double value)
{
    if (value == 0.0)
        return QStringLiteral("0");   // also turns -0 into "0"
    const double magnitude = std::fabs(value);
    const char form = (magnitude >= PlainMin && magnitude < PlainMax) || !std::isfinite(value) ? 'f' : 'e';
    return locale.toString(value, form, QLocale::FloatingPointShortest);
}

QLocale PlainLocale(QLocale locale)
{
    locale.setNumberOptions(QLocale::OmitGroupSeparator | QLocale::RejectGroupSeparator);
    return locale;
}

// The lenient readers take "." and, when the text has no ".", a "," as the
// decimal point; never group separators.
bool ReadInvariantFloat(const QString &text, double &value)
{
    QString s = text.trimmed();
    if (!s.contains(QLatin1Char('.')))
        s.replace(QLatin1Char(','), QLatin1Char('.'));
    bool ok = false;
    const double v = PlainLocale(QLocale::c()).toDouble(s, &ok);
    if (!ok || !std::isfinite(v))
        return false;
    value = v;
    return true;
}

double ReadLocaleFloat(const QString &text)
{
    bool ok = false;
    const double v = PlainLocale(QLocale()).toDouble(text.trimmed(), &ok);
    if (!ok || !std::isfinite(v))
        throw EConvertError(Format(QStringLiteral("'%s' is not a valid floating point value"), {text}));
    return v;
}

} // namespace

QString XFloatToStr(double value)
{
    return ShortestText(QLocale::c(), value);
}

double XStrToFloat(const QString &text, double defaultValue)
{
    double v = 0.0;
    return ReadInvariantFloat(text, v) ? v : defaultValue;
}

QString XCurrToStr(double value)
{
    if (!std::isfinite(value))
        return XFloatToStr(value);
    return PlainLocale(QLocale::c()).toString(RoundToCurrency(value) + 0.0, 'f', QLocale::FloatingPointShortest);
}

double XStrToCurr(const QString &text, double defaultValue)
{
    double v = 0.0;
    if (!ReadInvariantFloat(text, v) || std::fabs(v) > CurrencyMax)
        return defaultValue;
    return RoundToCurrency(v);
}

int XStrToInt(const QString &text, int defaultValue)
{
    bool ok = false;
    const int v = text.trimmed().toInt(&ok, 10);
    return ok ? v : defaultValue;
}

bool XStrToBool(const QString &text, bool defaultValue)
{
    const QString s = text.trimmed();
    if (s.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0
        || s.compare(QLatin1String("yes"), Qt::CaseInsensitive) == 0)
        return true;
    if (s.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0
        || s.compare(QLatin1String("no"), Qt::CaseInsensitive) == 0)
        return false;
    bool ok = false;
    const qlonglong v = s.toLongLong(&ok, 10);
    return ok ? v != 0 : defaultValue;
}

QString XBoolToStr(bool value)
{
    return value ? QStringLiteral("1") : QStringLiteral("0");
}

int StrToInt(const QString &text)
{
    bool ok = false;
    const int v = text.trimmed().toInt(&ok, 10);
    if (!ok)
        throw EConvertError(Format(QStringLiteral("'%s' is not a valid integer value"), {text}));
    return v;
}

double StrToFloat(const QString &text)
{
    return ReadLocaleFloat(text);
}

double StrToCurr(const QString &text)
{
    const double v = ReadLocaleFloat(text);
    if (std::fabs(v) > CurrencyMax)
        throw EConvertError(Format(QStringLiteral("'%s' is not a valid floating point value"), {text}));
    return RoundToCurrency(v);
}

QString IntToStr(int value)
{
    return QString::number(value);
}

QString FloatToStr(double value)
{
    return ShortestText(PlainLocale(QLocale()), value);
}

} // namespace vm20
