#include "ui/keyfilter.h"

namespace vm20 {

bool KeyAllowed(TValueType type, QChar c, QChar decimalPoint)
{
    if (type == vtString)
        return true;
    if ((c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char('"') || c == QLatin1Char(',')
        || c == QLatin1Char('-'))
        return true;
    return type == vtFloat && c == decimalPoint;
}

QString FilterText(TValueType type, const QString &text, QChar decimalPoint)
{
    QString kept;
    kept.reserve(text.size());
    for (QChar c : text)
        if (KeyAllowed(type, c, decimalPoint))
            kept += c;
    return kept;
}

} // namespace vm20
