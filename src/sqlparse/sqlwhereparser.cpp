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
QString DoubleQuotesToSingle(QString value)
{
    if (!value.isEmpty() && value.front() == QLatin1Char('"') && value.back() == QLatin1Char('"')) {
        value.front() = QLatin1Char('\'');
        value.back() = QLatin1Char('\'');
    }
    return value;
}

} // namespace

void TNSQLParser::ProcessWhere()
{
    if (!Is(u"where"))
        Error(SWrongSQLStatement);
    FScanner->NextToken();
    std::unique_ptr<TSQLNode> node = ProcessBoolExpr();
    if (dynamic_cast<TSQLBracket *>(node.get())) {
        FParserResult->SetWhereClause(
            std::unique_ptr<TSQLBracket>(static_cast<TSQLBracket *>(node.release())));
        return;
    }
    auto wrapper = std::make_unique<TSQLBracket>();
    wrapper->Nodes().Add(std::move(node));
    FParserResult->SetWhereClause(std::move(wrapper));
}

std::unique_ptr<TSQLNode> TNSQLParser::ProcessBoolExpr()
{
    std::unique_ptr<TSQLNode> first = ProcessBoolTerm();
    std::unique_ptr<TSQLBracket> group;
    while (Is(u"or")) {
        if (!group) {
            group = std::make_unique<TSQLBracket>();
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

std::unique_ptr<TSQLNode> TNSQLParser::ProcessBoolTerm()
{
    std::unique_ptr<TSQLNode> first = ProcessBoolFactor();
    std::unique_ptr<TSQLBracket> group;
    while (Is(u"and")) {
        if (!group) {
            group = std::make_unique<TSQLBracket>();
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

std::unique_ptr<TSQLNode> TNSQLParser::ProcessBoolFactor()
{
    bool negative = false;
    if (Is(u"not")) {
        negative = true;
        FScanner->NextToken();
    }
    std::unique_ptr<TSQLNode> node;
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

std::unique_ptr<TSQLCondition> TNSQLParser::ProcessCondition()
{
    auto condition = std::make_unique<TSQLCondition>();
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
    const QString operation = FScanner->GetTokStr();
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

    QString right = DoubleQuotesToSingle(ProcessConditionValue(subQuery));
    if (isIs)
        right = right.toLower();
    if (operation == u"between") {
        if (!Is(u"and"))
            Error(SWrongSQLStatement);
        FScanner->NextToken();
        right += QStringLiteral(" and ") + DoubleQuotesToSingle(ProcessConditionValue(subQuery));
    }
    condition->SetRightExpr(right);
    condition->SetContainsSubQuery(subQuery);
    return condition;
}

QString TNSQLParser::ProcessConditionValue(bool &containsSubQuery)
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
    return FScanner->ExtractPiece(start, FScanner->GetBookmark(), false);
}

} // namespace vm20
