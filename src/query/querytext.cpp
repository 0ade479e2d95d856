// The condition tree as readable text: one line per enabled row with the
// texts its labels show, indented two spaces per level.
#include "query/query.h"

namespace vm20 {

QString TNQuery::GetQueryText() const
{
    QStringList lines;
    const auto addLine = [&lines](const TFilterRow *row, int level) {
        QString line(2 * level, QLatin1Char(' '));
        for (const QString &label : row->Labels())
            if (label != QLatin1String("_"))
                line += label + QLatin1Char(' ');
        lines.append(line);
    };
    // Rows of a disabled bracket are left out with it.
    if (!FFilter->Enabled())
        return QString();
    addLine(FFilter.get(), 0);
    ForEachEnabledRow(*FFilter, [&addLine](const TFilterRow &row, int depth) { addLine(&row, depth); });
    return lines.join(QStringLiteral("\r\n")).trimmed();
}

} // namespace vm20
