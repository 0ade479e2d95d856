#pragma once
// A condition tree as one line of text, so that a loaded tree is compared in
// one assertion: brackets as "all(...)", "any(...)", "none(...)",
// "notall(...)"; a simple condition as its field's caption, its operator's
// name and its values in brackets (a parameter as ":name"); a predefined
// condition as "#" and its caption; disabled rows with a leading "-".
#include "model/dbstructure.h"
#include "query/query.h"

#include <QString>
#include <QStringList>

namespace shop {

inline QString DumpRow(const vm20::TFilterRow *row)
{
    using namespace vm20;
    QString text = row->Enabled() ? QString() : QStringLiteral("-");
    if (row->IsBracket()) {
        const auto *bracket = static_cast<const TFilterBracket *>(row);
        static const char *const words[] = {"all", "any", "none", "notall"};
        QStringList rows;
        for (const auto &child : bracket->Rows())
            rows << DumpRow(child.get());
        return text + QLatin1String(words[bracket->LinkType()]) + QLatin1Char('(')
               + rows.join(QStringLiteral("; ")) + QLatin1Char(')');
    }
    if (const auto *custom = dynamic_cast<const TCustomCond *>(row))
        return text + QLatin1Char('#') + (custom->Condition() ? custom->Condition()->Caption() : QString());
    const auto *cond = static_cast<const TSimpleCond *>(row);
    text += cond->Field() ? cond->Field()->DisplayName() : QStringLiteral("?");
    text += QLatin1Char(' ') + (cond->Operator() ? cond->Operator()->Name() : QStringLiteral("?"));
    for (int i = 1; i <= cond->GetValueCount(); ++i) {
        if (cond->GetValueIsParam(i))
            text += QStringLiteral(" :") + (cond->GetParam(i) ? cond->GetParam(i)->ParamName() : QString());
        else
            text += QStringLiteral(" [") + cond->GetValue(i) + QLatin1Char(']');
    }
    return text;
}

inline QString DumpTree(const vm20::TNQuery &query)
{
    return DumpRow(query.Filter());
}

} // namespace shop
