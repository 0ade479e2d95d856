// Making every condition of a large query a parameter: each new parameter
// gets a free name on its field's name (Amount, Amount1, Amount2, ...), so
// the time per parameter must not grow with the parameters already there.
#include "query/query.h"
#include "treemodel.h"

#include <benchmark/benchmark.h>

using namespace vm20;

namespace {

void BM_AddParameters(benchmark::State &state)
{
    TNDBStructure model;
    model.BeginUpdate();
    TDSTable *table = bench::AddTreeTable(model, 0, QStringLiteral("t"));
    TDSField *field = bench::AddField(model, table, QStringLiteral("Amount"), ftInteger);
    model.EndUpdate();
    const int count = int(state.range(0));
    for (auto _ : state) {
        TNQuery query;
        query.SetDBStruct(&model);
        query.BeginUpdate();
        for (int i = 0; i < count; ++i) {
            TSimpleCond *cond = query.Filter()->AddCond();
            cond->SetField(field);
            cond->SetOperator(field->GetOperator(0));
            cond->SetValueIsParam(1, true);
        }
        query.EndUpdate();
        benchmark::DoNotOptimize(query.QResult().GetParamCount());
    }
    state.SetItemsProcessed(state.iterations() * count);
}

} // namespace

// The sizes run in one program so that their ratio compares like with like.
BENCHMARK(BM_AddParameters)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
