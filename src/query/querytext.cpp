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
    std::vector<std::pair<const TFilterBracket *, std::size_t>> stack{{FFilter.get(), 0}};
    while (!stack.empty()) {
        auto &[bracket, next] = stack.back();
        if (next == bracket->Rows().size()) {
            stack.pop_back();
            continue;
        }
        const TFilterRow *row = bracket->Rows()[next++].get();
        if (!row->Enabled())
            continue;
        addLine(row, int(stack.size()));
        if (row->IsBracket())
            stack.emplace_back(static_cast<const TFilterBracket *>(row), 0);
    }
    return lines.join(QStringLiteral("\r\n")).trimmed();
}

} // namespace vm20
