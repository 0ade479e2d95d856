// What views cost the core: row moves on a large tree with a view attached,
// and one model change told to several listeners.
#include "model/dbstructure.h"
#include "query/query.h"

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

using namespace vm20;

namespace {

class CountingView : public TNQueryObserver
{
public:
    void RowInserted(TFilterRow *) override { ++count; }
    void RowRemoved(TFilterRow *) override { ++count; }
    void RowMoved(TFilterRow *, TFilterBracket *, int) override { ++count; }
    long count = 0;
};

// 1,000 moves (indent, outdent, up, down in turn, on rows picked at random)
// on a tree of 1,000 rows: 100 brackets of 9 conditions each.
void BM_RowMoves(benchmark::State &state)
{
    TNQuery query;
    std::vector<TFilterRow *> rows;
    for (int b = 0; b < 100; ++b) {
        TFilterBracket *bracket = query.AddBracket(nullptr);
        for (int c = 0; c < 9; ++c)
            rows.push_back(query.AddCondition(bracket, nullptr));
    }
    CountingView view;
    query.AddObserver(&view);
    std::mt19937 random(7);
    std::uniform_int_distribution<std::size_t> pick(0, rows.size() - 1);
    for (auto _ : state) {
        for (int i = 0; i < 250; ++i) {
            TFilterRow *row = rows[pick(random)];
            query.MoveRowRight(row);
            query.MoveRowLeft(row);
            query.MoveRowUp(row);
            query.MoveRowDown(row);
        }
        benchmark::DoNotOptimize(view.count);
    }
    query.RemoveObserver(&view);
}
BENCHMARK(BM_RowMoves)->Unit(benchmark::kMillisecond);

class CountingListener : public TNModelObserver
{
public:
    void ModelChanged(TNCustomDBStructure *, const TModelChange &) override { ++count; }
    long count = 0;
};

// One change told to state.range(0) listeners.
void BM_ModelChangeListeners(benchmark::State &state)
{
    TNDBStructure model;
    std::vector<CountingListener> listeners(std::size_t(state.range(0)));
    for (auto &listener : listeners)
        model.AddObserver(&listener);
    for (auto _ : state)
        model.Changed(mckOptions, &model);
    benchmark::DoNotOptimize(listeners.front().count);
    for (auto &listener : listeners)
        model.RemoveObserver(&listener);
}
BENCHMARK(BM_ModelChangeListeners)->Arg(1)->Arg(10)->Unit(benchmark::kNanosecond);

} // namespace
