#include "model/sqlnames.h"

#include <QSet>

namespace vm20 {

namespace {

// Words reserved by the common dialects where an alias or a name may stand;
// any of them unquoted would end the select list or start a clause.
const QSet<QString> &ReservedWords()
{
    static const QSet<QString> words = [] {
        QSet<QString> set;
        for (const char *word :
             {"ALL", "ALTER", "AND", "ANY", "AS", "ASC", "BETWEEN", "BY", "CASE", "CAST", "CHECK", "COLLATE",
              "COLUMN", "CONSTRAINT", "CREATE", "CROSS", "CURRENT_DATE", "CURRENT_TIME", "CURRENT_TIMESTAMP",
              "DEFAULT", "DELETE", "DESC", "DISTINCT", "DROP", "ELSE", "END", "ESCAPE", "EXCEPT", "EXISTS",
              "FALSE", "FETCH", "FOR", "FOREIGN", "FROM", "FULL", "GROUP", "HAVING", "IN", "INNER", "INSERT",
              "INTERSECT", "INTO", "IS", "JOIN", "KEY", "LEFT", "LIKE", "LIMIT", "NATURAL", "NOT", "NULL",
              "OFFSET", "ON", "OR", "ORDER", "OUTER", "PRIMARY", "REFERENCES", "RIGHT", "SELECT", "SET",
              "TABLE", "THEN", "TO", "TOP", "TRUE", "UNION", "UNIQUE", "UPDATE", "USING", "VALUES", "WHEN",
              "WHERE", "WITH"})
            set.insert(QLatin1String(word));
        return set;
    }();
    return words;
}

} // namespace

bool IsPlainSQLName(const QString &name)
{
    if (name.isEmpty() || name.front().isDigit())
        return false;
    for (const QChar c : name)
        if (!c.isLetter() && !c.isDigit() && c != QLatin1Char('_'))
            return false;
    return !ReservedWords().contains(name.toUpper());
}

QString QuotedSQLName(const QString &name, QChar open, QChar close)
{
    if (open.isNull())
        open = QLatin1Char('"');
    if (close.isNull())
        close = open;
    QString inner = name;
    inner.replace(close, QString(2, close));
    return open + inner + close;
}

bool IsQuotedSQLName(const QString &name, QChar open, QChar close)
{
    if (name.size() < 2 || name.front() != open || name.back() != close)
        return false;
    for (qsizetype i = 1; i < name.size() - 1; ++i) {
        if (name[i] != close)
            continue;
        if (i + 1 >= name.size() - 1 || name[i + 1] != close)
            return false;
        ++i;
    }
    return true;
}

} // namespace vm20
