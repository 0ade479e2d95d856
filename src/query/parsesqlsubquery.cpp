// Sub-queries: a condition whose value is a SELECT statement keeps it as a
// saved query of its own, loaded and rebuilt through a hidden query set up
// like the one that holds the condition.
#include "query/parsesql.h"

#include "query/query.h"
#include "support/exception.h"

#include <memory>

namespace vm20 {

namespace {

// The text without one pair of brackets around the whole of it, as the
// parser keeps them on an operand: "(select ...)" is read as "select ...".
QString WithoutEnclosingBrackets(const QString &text)
{
    const QString trimmed = text.trimmed();
    if (!trimmed.startsWith(QLatin1Char('(')) || !trimmed.endsWith(QLatin1Char(')')))
        return text;
    int depth = 0;
    QChar quote;
    bool quoted = false;
    for (qsizetype i = 0; i < trimmed.size(); ++i) {
        const QChar c = trimmed[i];
        if (quoted) {
            quoted = c != quote;
        } else if (c == QLatin1Char('\'') || c == QLatin1Char('"')) {
            quote = c;
            quoted = true;
        } else if (c == QLatin1Char('(')) {
            ++depth;
        } else if (c == QLatin1Char(')') && --depth == 0 && i + 1 < trimmed.size()) {
            return text;   // the first bracket closes before the end
        }
    }
    return trimmed.mid(1, trimmed.size() - 2);
}

std::unique_ptr<TNQuery> MakeHiddenQuery(const TNQuery &query)
{
    auto hidden = std::make_unique<TNQuery>();
    hidden->SetDBStruct(query.DBStruct());
    hidden->SetSQLOptions(query.SQLOptions());
    hidden->SetSQLSyntax(query.SQLSyntax());
    return hidden;
}

// The statement the hidden query builds, one text.
QString BuiltStatement(TNQuery &query)
{
    query.BuildQuery();
    return query.GetSQL().join(QStringLiteral("\r\n"));
}

} // namespace

void TSQLLoader::ProcessSubQuery(const QString &text, QStringList &values, QString &sqlText)
{
    std::unique_ptr<TNQuery> hidden = MakeHiddenQuery(FQuery);
    const QString statement = WithoutEnclosingBrackets(text);
    hidden->ParseSQL(QStringList{statement});
    // What the sub-query leaves out, the whole statement leaves out.
    for (const TUnresolvedItem &item : hidden->UnresolvedItems())
        FQuery.AddLoadProblem(item.Kind, item.Source.isEmpty() ? QStringLiteral("in a sub-query")
                                                               : QStringLiteral("in a sub-query: ") + item.Source);
    hidden->SaveToStrings(values);
    try {
        sqlText = BuiltStatement(*hidden);
    } catch (const Exception &) {
        // A sub-query the model cannot build (no table it knows, no join
        // path) keeps the text it was written with.
        sqlText = statement;
    }
}

void TNQuery::GetSubQueryText(const QStringList &values, QStringList &lines) const
{
    std::unique_ptr<TNQuery> hidden = MakeHiddenQuery(*this);
    hidden->LoadFromStrings(values);
    hidden->BuildQuery();
    lines = hidden->GetSQL();
}

} // namespace vm20
