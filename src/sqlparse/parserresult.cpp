#include "sqlparse/parserresult.h"

namespace vm20 {

void TNParserResult::Clear()
{
    FTables.Clear();
    FResultFields.Clear();
    FResultFields.SetJustSorting(false);
    FWhereClause.reset();
    FDistinct = false;
    FAllRFields = false;
}

} // namespace vm20
