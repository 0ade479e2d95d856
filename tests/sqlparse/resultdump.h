#pragma once
// One-line text of a whole parse result, so that a test compares everything
// the parser produced in one assertion:
//   flags | fields | tables | where
// fields "expr[caption] as alias asc#order", tables "name:alias", brackets
// "op(nodes)" with "_" for an empty operator, conditions "<left|op|right>"
// with "$" when they hold a sub-query, "not " before a negated node and
// "innernot " before one with a NOT of its own (inside it, or inside brackets
// that read as the node).
#include "sqlparse/parserresult.h"

#include <QStringList>

#include <vector>

namespace vm20::testing {

inline QString DumpNode(const TSQLNode *node)
{
    QString text = node->Negative() ? QStringLiteral("not ") : QString();
    if (node->InnerNegative())
        text += QStringLiteral("innernot ");
    if (auto *c = dynamic_cast<const TSQLCondition *>(node)) {
        text += QStringLiteral("<%1|%2|%3>").arg(c->LeftExpr(), c->Operation(), c->RightExpr());
        return c->ContainsSubQuery() ? text + QLatin1Char('$') : text;
    }
    auto *b = static_cast<const TSQLBracket *>(node);
    QStringList nodes;
    for (int i = 0; i < b->Nodes().Count(); ++i)
        nodes << DumpNode(b->Nodes().Items(i));
    const QString op = b->BoolOperator().isEmpty() ? QStringLiteral("_") : b->BoolOperator();
    return text + op + QLatin1Char('(') + nodes.join(QStringLiteral(", ")) + QLatin1Char(')');
}

inline QString Dump(const TNParserResult &r)
{
    QStringList flags;
    if (r.Distinct())
        flags << QStringLiteral("distinct");
    if (r.AllRFields())
        flags << QStringLiteral("all");
    if (r.ResultFields().JustSorting())
        flags << QStringLiteral("just");
    QStringList fields;
    for (int i = 0; i < r.ResultFields().Count(); ++i) {
        const TSQLResultField *f = r.ResultFields().Items(i);
        QString text = f->SQLExpr() + QLatin1Char('[') + f->Caption() + QLatin1Char(']');
        if (!f->Alias().isEmpty())
            text += QStringLiteral(" as ") + f->Alias();
        if (f->Sorting() != 0)
            text += (f->Sorting() == 2 ? QStringLiteral(" desc#") : QStringLiteral(" asc#"))
                    + QString::number(f->SortOrder());
        fields << text;
    }
    QStringList tables;
    for (int i = 0; i < r.Tables().Count(); ++i)
        tables << r.Tables().Items(i)->TableName() + QLatin1Char(':') + r.Tables().Items(i)->AliasName();
    return (flags.isEmpty() ? QStringLiteral("-") : flags.join(QLatin1Char(' '))) + QStringLiteral(" | ")
           + fields.join(QStringLiteral(", ")) + QStringLiteral(" | ") + tables.join(QStringLiteral(", "))
           + QStringLiteral(" | ") + (r.WhereClause() ? DumpNode(r.WhereClause()) : QStringLiteral("-"));
}

// Every node of the tree names its holding bracket as parent.
inline bool ParentsKept(const TSQLBracket *root)
{
    std::vector<const TSQLBracket *> pending{root};
    while (!pending.empty()) {
        const TSQLBracket *b = pending.back();
        pending.pop_back();
        for (int i = 0; i < b->Nodes().Count(); ++i) {
            if (b->Nodes().Items(i)->Parent() != b)
                return false;
            if (auto *inner = dynamic_cast<const TSQLBracket *>(b->Nodes().Items(i)))
                pending.push_back(inner);
        }
    }
    return true;
}

} // namespace vm20::testing
