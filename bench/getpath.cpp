// Join path search on a large sparse model and on a small fully meshed one,
// each call between a random pair of tables.
#include "model/dbstructure.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <random>

namespace {

using vm20::TNCustomDBStructure;

struct TModel
{
    std::unique_ptr<TNCustomDBStructure> Model = std::make_unique<TNCustomDBStructure>();
    std::vector<QString> Aliases;
    std::vector<std::pair<int, int>> Pairs;
};

void AddLink(TNCustomDBStructure &model, int a, int b)
{
    auto link = std::make_unique<vm20::TDSLink>();
    link->SetTable1(model.GetTable(a));
    link->SetTable2(model.GetTable(b));
    link->Fields1() << "ID";
    link->Fields2() << "RefID";
    model.AddLinkByRef(std::move(link));
}

TModel MakeModel(int tables, bool meshed, int linksPerTable)
{
    TModel m;
    std::mt19937 random(1234);
    m.Model->BeginUpdate();
    for (int i = 0; i < tables; ++i) {
        m.Model->AddTable(QString("Table%1").arg(i), QString());
        m.Aliases.push_back(m.Model->GetTable(i)->TableAlias());
    }
    if (meshed) {
        for (int a = 0; a < tables; ++a)
            for (int b = a + 1; b < tables; ++b)
                AddLink(*m.Model, a, b);
    } else {
        for (int a = 0; a < tables; ++a)
            for (int k = 0; k < linksPerTable; ++k)
                AddLink(*m.Model, a, int(random() % unsigned(tables)));
    }
    m.Model->EndUpdate();
    for (int i = 0; i < 4096; ++i)
        m.Pairs.emplace_back(int(random() % unsigned(tables)), int(random() % unsigned(tables)));
    return m;
}

void Run(benchmark::State &state, TModel &m)
{
    size_t next = 0;
    int found = 0;
    for (auto _ : state) {
        const auto &pair = m.Pairs[next++ % m.Pairs.size()];
        found += m.Model->GetPath(m.Aliases[pair.first], m.Aliases[pair.second]) != nullptr;
    }
    benchmark::DoNotOptimize(found);
}

void BM_GetPath_1000Tables8LinksEach(benchmark::State &state)
{
    static TModel m = MakeModel(1000, false, 8);
    Run(state, m);
}
BENCHMARK(BM_GetPath_1000Tables8LinksEach)->Unit(benchmark::kMicrosecond);

void BM_GetPath_16TablesFullyMeshed(benchmark::State &state)
{
    static TModel m = MakeModel(16, true, 0);
    Run(state, m);
}
BENCHMARK(BM_GetPath_16TablesFullyMeshed)->Unit(benchmark::kMicrosecond);

} // namespace
