#pragma once
// What the parser makes of one SELECT statement.
#include "sqlparse/sqlconditions.h"
#include "sqlparse/sqlresultfields.h"
#include "sqlparse/sqltables.h"

#include <memory>

namespace vm20 {

class TNParserResult
{
public:
    bool Distinct() const { return FDistinct; }
    void SetDistinct(bool value) { FDistinct = value; }
    // The select list was "*".
    bool AllRFields() const { return FAllRFields; }
    void SetAllRFields(bool value) { FAllRFields = value; }

    TSQLResultFieldList &ResultFields() { return FResultFields; }
    const TSQLResultFieldList &ResultFields() const { return FResultFields; }
    TSQLTableList &Tables() { return FTables; }
    const TSQLTableList &Tables() const { return FTables; }
    // Null when the statement has no WHERE.
    TSQLBracket *WhereClause() const { return FWhereClause.get(); }
    void SetWhereClause(std::unique_ptr<TSQLBracket> value) { FWhereClause = std::move(value); }

    // Empties the lists, frees the WHERE tree and resets the flags, so that a
    // parser can read statement after statement.
    void Clear();

private:
    bool FDistinct = false;
    bool FAllRFields = false;
    TSQLResultFieldList FResultFields;
    std::unique_ptr<TSQLBracket> FWhereClause;
    TSQLTableList FTables;
};

} // namespace vm20
