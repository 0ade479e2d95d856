// What a query does when its model frees an entity it may use: nothing of the
// query may keep pointing at freed memory, and nothing the user set up is
// lost in silence (a condition keeps its row and values and shows up as
// unrecognized).
#include "query/filtercond.h"
#include "query/query.h"

namespace vm20 {

namespace {

bool Matches(const void *used, const TModelChange &entity, const void *placeholder)
{
    if (!used || used == placeholder)
        return false;
    return !entity.Entity || entity.Entity == used;
}

} // namespace

void TNQuery::DropModelEntity(const TModelChange &entity, bool modelGone)
{
    TNCustomDBStructure *model = FDBStruct;
    switch (entity.Kind) {
    case mckTables:
        FTableFilters.RemoveTable(static_cast<const TDSTable *>(entity.Entity));
        FResult.ResultTables().Clear();
        return;
    case mckLinks:
        FResult.ResultTables().Clear();
        return;
    case mckFields:
    case mckOperators:
    case mckConditions:
        break;
    default:
        return;
    }
    TDSField *field = modelGone || !model ? nullptr : model->UnrecognizedField();
    TDSOperator *op = modelGone || !model ? nullptr : model->UnrecognizedOperator();
    TDSCondition *condition = modelGone || !model ? nullptr : model->UnrecognizedCondition();
    EnsureNumbers();
    const std::vector<TFilterRow *> rows = FRowsByNum;
    for (TFilterRow *row : rows) {
        bool changed = false;
        if (row->RowType() == frtSimpleCondition) {
            auto *simple = static_cast<TSimpleCond *>(row);
            if (entity.Kind == mckFields && Matches(simple->FField, entity, field)) {
                simple->FField = field;
                changed = true;
            }
            if (entity.Kind == mckOperators && Matches(simple->FOperator, entity, op)) {
                simple->FOperator = op;
                simple->FCountedOperator = nullptr;
                changed = true;
            }
        } else if (row->RowType() == frtCustomCondition && entity.Kind == mckConditions) {
            auto *custom = static_cast<TCustomCond *>(row);
            if (Matches(custom->FCondition, entity, condition)) {
                custom->FCondition = condition;
                changed = true;
            }
        }
        if (changed)
            RowChanged(row);
    }
}

} // namespace vm20
