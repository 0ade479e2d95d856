#pragma once
// The guard every statement passes before it reaches a database driver: it
// must be one SELECT. Some drivers run every ";"-separated statement of a
// text, so a separator smuggled in through a value must never get that far.
#include <QString>

namespace vm20 {

// Raises ENDBInfoError (dbieNotOneSelect) unless `sql` is a single SELECT
// statement: it starts with SELECT and holds no ";" outside string literals,
// quoted names and comments. Constructs whose extent other engines read
// differently from this library (dollar quoting, escape strings holding a
// backslash, nested comments) are refused as well.
void CheckOneSelect(const QString &sql);

} // namespace vm20
