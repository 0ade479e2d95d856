#include "sqlparse/parserresult.h"

namespace vm20 {

namespace {

// The pool's first block; later blocks grow from it, so that a large tree
// takes few of them.
constexpr size_t FirstPoolBlock = 16 * 1024;

} // namespace

TNParserResult::TNParserResult() : FPool(FirstPoolBlock) {}

TNParserResult::~TNParserResult() = default;

TSQLBracketPtr TNParserResult::NewBracket()
{
    void *memory = FPool.allocate(sizeof(TSQLBracket), alignof(TSQLBracket));
    return TSQLBracketPtr(new (memory) TSQLBracket(&FPool));
}

TSQLConditionPtr TNParserResult::NewCondition()
{
    void *memory = FPool.allocate(sizeof(TSQLCondition), alignof(TSQLCondition));
    return TSQLConditionPtr(new (memory) TSQLCondition(&FPool));
}

void TNParserResult::Clear()
{
    FTables.Clear();
    FResultFields.Clear();
    FResultFields.SetJustSorting(false);
    FWhereClause.reset();
    FPool.release();
    FDistinct = false;
    FAllRFields = false;
}

} // namespace vm20
