#include "model/dmxmlformat.h"

#include <QtGlobal>

namespace vm20 {

namespace {

// A name the environment could hold: not empty, no "=" and no NUL (which
// would cut the name short on its way to the C library).
bool IsSetName(const QString &name)
{
    if (name.isEmpty() || name.contains(QLatin1Char('=')) || name.contains(QChar(0)))
        return false;
    return qEnvironmentVariableIsSet(name.toLocal8Bit().constData());
}

} // namespace

QString ExpandEnvironmentReferences(const QString &text)
{
    QString result;
    result.reserve(text.size());
    qsizetype from = 0;
    while (from < text.size()) {
        const qsizetype open = text.indexOf(QLatin1Char('%'), from);
        if (open < 0)
            break;
        const qsizetype close = text.indexOf(QLatin1Char('%'), open + 1);
        if (close < 0)
            break;
        result += QStringView(text).mid(from, open - from);
        const QString name = text.mid(open + 1, close - open - 1);
        if (IsSetName(name)) {
            result += qEnvironmentVariable(name.toLocal8Bit().constData());
            from = close + 1;
        } else {
            // Not a reference: keep "%" and the text, and let the closing "%"
            // open the next one ("50% of %HOME%").
            result += QStringView(text).mid(open, close - open);
            from = close;
        }
    }
    result += QStringView(text).mid(from);
    return result;
}

} // namespace vm20
