#include "sqlparse/sqlparser.h"

// Boolean expressions (the WHERE clause and join conditions): groups,
// conditions and their operands.

namespace vm20 {

namespace {

// Words and operators that end a condition operand outside brackets.
bool IsOperandStop(QStringView t)
{
    switch (t.size()) {
    case 1:
        return t[0] == u'=' || t[0] == u'<' || t[0] == u'>';
    case 2:
        return t == u"<>" || t == u"!=" || t == u">=" || t == u"<=" || t == u"in" || t == u"is" || t == u"or";
    case 3:
        return t == u"and" || t == u"not";
    case 4:
        return t == u"like";
    case 7:
        return t == u"between";
    default:
        return false;
    }
}

// A value written in double quotes is a string literal to the loader.
bool InDoubleQuotes(QStringView value)
{
    return !value.isEmpty() && value.front() == u'"' && value.back() == u'"';
}

// Appends the value, its double quotes made single.
void AppendSingleQuoted(QString &to, QStringView value)
{
    const qsizetype at = to.size();
    to += value;
    if (InDoubleQuotes(value)) {
        to[at] = QLatin1Char('\'');
        to.back() = QLatin1Char('\'');
    }
}

} // namespace

void TNSQLParser::ProcessWhere()
{
    if (!Is(u"where"))
        Error(SWrongSQLStatement);
    FScanner->NextToken();
    TSQLNodePtr node = ProcessBoolExpr();
    if (node->IsBracket()) {
        FParserResult->SetWhereClause(TSQLBracketPtr(static_cast<TSQLBracket *>(node.release())));
        return;
    }
    TSQLBracketPtr wrapper = FParserResult->NewBracket();
    wrapper->Nodes().Add(std::move(node));
    FParserResult->SetWhereClause(std::move(wrapper));
}

TSQLNodePtr TNSQLParser::ProcessBoolExpr()
{
    TSQLNodePtr first = ProcessBoolTerm();
    TSQLBracketPtr group;
    while (Is(u"or")) {
        if (!group) {
            group = FParserResult->NewBracket();
            group->SetBoolOperator(QStringLiteral("or"));
            group->Nodes().Add(std::move(first));
        }
        FScanner->NextToken();
        if (FScanner->EOS())
            break;
        group->Nodes().Add(ProcessBoolTerm());
    }
    if (group)
        return group;
    return first;
}

TSQLNodePtr TNSQLParser::ProcessBoolTerm()
{
    TSQLNodePtr first = ProcessBoolFactor();
    TSQLBracketPtr group;
    while (Is(u"and")) {
        if (!group) {
            group = FParserResult->NewBracket();
            group->SetBoolOperator(QStringLiteral("and"));
            group->Nodes().Add(std::move(first));
        }
        FScanner->NextToken();
        if (FScanner->EOS())
            break;
        group->Nodes().Add(ProcessBoolFactor());
    }
    if (group)
        return group;
    return first;
}

void TNSQLParser::EnterBracket()
{
    if (++FNesting > MaxBracketNesting)
        Error(SBracketsTooDeep.arg(MaxBracketNesting));
}

TSQLNodePtr TNSQLParser::ProcessBoolFactor()
{
    bool negative = false;
    if (Is(u"not")) {
        negative = true;
        FScanner->NextToken();
    }
    TSQLNodePtr node;
    if (Is(u'(')) {
        FScanner->NextToken();
        EnterBracket();
        node = ProcessBoolExpr();
        if (!Is(u')'))
            Error(SLostBracket);
        FScanner->NextToken();
        --FNesting;
    } else {
        node = ProcessCondition();
    }
    // Only the NOT written here stays in Negative; one the node brought with
    // it is kept apart, so that no NOT is lost.
    node->SetInnerNegative(node->InnerNegative() != node->Negative());
    node->SetNegative(negative);
    return node;
}

TSQLConditionPtr TNSQLParser::ProcessCondition()
{
    TSQLConditionPtr condition = FParserResult->NewCondition();
    bool subQuery = false;
    condition->SetLeftExpr(ProcessConditionValue(subQuery));
    if (FScanner->EOS())
        Error(SWrongSQLStatement);
    // "a NOT LIKE x", "a IS NOT NULL": the caller keeps only a NOT written
    // before the whole condition in Negative, and this one apart.
    bool negative = false;
    if (Is(u"not")) {
        negative = true;
        FScanner->NextToken();
    }
    const QStringView operation = FScanner->TokView();
    condition->SetOperation(operation);
    FScanner->NextToken();
    if (FScanner->EOS())
        Error(SWrongSQLStatement);
    const bool isIs = operation == u"is";
    if (isIs && Is(u"not")) {
        negative = true;
        FScanner->NextToken();
    }
    condition->SetNegative(negative);

    const QStringView right = ProcessConditionValue(subQuery);
    if (operation == u"between") {
        if (!Is(u"and"))
            Error(SWrongSQLStatement);
        FScanner->NextToken();
        QString both;
        AppendSingleQuoted(both, right);
        both += QLatin1String(" and ");
        AppendSingleQuoted(both, ProcessConditionValue(subQuery));
        condition->SetRightExpr(both);
    } else if (isIs || InDoubleQuotes(right)) {
        QString value;
        AppendSingleQuoted(value, right);
        condition->SetRightExpr(isIs ? value.toLower() : value);
    } else {
        condition->SetRightExpr(right);
    }
    condition->SetContainsSubQuery(subQuery);
    return condition;
}

QStringView TNSQLParser::ProcessConditionValue(bool &containsSubQuery)
{
    const TNScannerBookmark start = FScanner->GetBookmark();
    const auto checkDepth = [this](int depth) {
        if (FNesting + depth > MaxBracketNesting)
            Error(SBracketsTooDeep.arg(MaxBracketNesting));
    };
    int depth = 0;
    while (!FScanner->EOS() && Is(u'(')) {
        checkDepth(++depth);
        FScanner->NextToken();
    }
    if (!FScanner->EOS() && Is(u"select"))
        containsSubQuery = true;
    while (!FScanner->EOS()) {
        const quint8 type = FScanner->GetTokType();
        if (Is(u'(')) {
            checkDepth(++depth);
        } else if (Is(u')')) {
            if (depth <= 0)
                break;  // closes an enclosing group
            --depth;
        } else if (depth == 0) {
            if (type == tokKeyword)
                break;
            if ((type == tokWord || type == tokSymbol) && IsOperandStop(FScanner->TokView()))
                break;
        }
        FScanner->NextToken();
    }
    return FScanner->PieceView(start, FScanner->GetBookmark(), false);
}

} // namespace vm20
