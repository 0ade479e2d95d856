#pragma once
// Names written into SQL: a name that could be read as anything but one
// identifier goes between the quote characters, with the closing one doubled
// inside, so no name can end its quotes early.
#include <QChar>
#include <QString>

namespace vm20 {

// Letters, digits and "_", not starting with a digit, and no reserved word.
bool IsPlainSQLName(const QString &name);
// `name` between `open` and `close`, every `close` inside doubled (a null
// character stands for the double quote).
QString QuotedSQLName(const QString &name, QChar open, QChar close);
// Whether `name` is already one quoted identifier: it starts with `open`,
// ends with `close`, and every `close` between them is doubled.
bool IsQuotedSQLName(const QString &name, QChar open, QChar close);

} // namespace vm20
