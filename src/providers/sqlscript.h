#pragma once
// Splitting an SQL script into the statements a driver can execute one at a
// time (Qt's SQL drivers run only the first statement of a text).
#include <QString>

#include <vector>

namespace vm20 {

struct TSQLStatement
{
    QString Text;   // without the closing ";", trimmed
    int Line = 0;   // line of the statement's first character, from 1
};

// Statements end at a ";" outside string literals ('...'), quoted names
// ("...", [...], `...`) and comments (-- to the end of the line, /* ... */).
// Pieces holding nothing but blanks and comments are dropped. An unterminated
// literal or comment runs to the end of the text, where the database will
// report it. Trigger bodies (BEGIN ... END with inner ";") are not supported.
std::vector<TSQLStatement> SplitSQLScript(const QString &script);

} // namespace vm20
