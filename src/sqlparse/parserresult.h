#pragma once
// What the parser makes of one SELECT statement.
#include "sqlparse/sqlconditions.h"
#include "sqlparse/sqlresultfields.h"
#include "sqlparse/sqltables.h"

#include <memory>
#include <memory_resource>

namespace vm20 {

using TSQLBracketPtr = std::unique_ptr<TSQLBracket, TSQLNodeDeleter>;
using TSQLConditionPtr = std::unique_ptr<TSQLCondition, TSQLNodeDeleter>;

class TNParserResult
{
public:
    TNParserResult();
    ~TNParserResult();
    TNParserResult(const TNParserResult &) = delete;
    TNParserResult &operator=(const TNParserResult &) = delete;

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
    void SetWhereClause(TSQLBracketPtr value) { FWhereClause = std::move(value); }

    // Nodes in this result's pool: they, their texts and their node lists
    // are freed together by Clear or with the result, and must not be kept
    // beyond that.
    TSQLBracketPtr NewBracket();
    TSQLConditionPtr NewCondition();

    // Empties the lists, frees the WHERE tree and the pool and resets the
    // flags, so that a parser can read statement after statement.
    void Clear();

private:
    bool FDistinct = false;
    bool FAllRFields = false;
    TSQLResultFieldList FResultFields;
    TSQLTableList FTables;
    // Declared before the tree, so that it outlives the nodes it holds.
    std::pmr::monotonic_buffer_resource FPool;
    TSQLBracketPtr FWhereClause;
};

} // namespace vm20
