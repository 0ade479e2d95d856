#pragma once
// The parser's exception and its message texts.
#include "support/exception.h"

#include <QString>

namespace vm20 {

// Raised for a statement the parser cannot read. The message ends with a line
// break, "Line:" and the line of the offending token.
class ESQLParserError : public Exception
{
public:
    using Exception::Exception;
};

// The parser's own copies of the message-table texts it raises.
inline const QString SWrongSQLStatement = QStringLiteral("Wrong SQL statement");
inline const QString SLostBracket = QStringLiteral("Lost bracket");
inline const QString SUnterminatedLiteral = QStringLiteral("Unterminated string literal");
inline const QString SBracketsTooDeep = QStringLiteral("Brackets nested too deeply (more than %1)");

// Deepest bracket nesting the parser follows, in boolean groups and in
// condition operands alike. Keeps the recursion far from the stack's end.
inline constexpr int MaxBracketNesting = 200;

} // namespace vm20
