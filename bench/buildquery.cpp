// BuildQuery followed by GetSQL on a large query: a model of 200 tables
// linked as a tree, 20 result columns and 10,000 (then 20,000) conditions in
// nested brackets over 100 of the tables.
#include "model/dbstructure.h"
#include "treemodel.h"
#include "query/query.h"

#include <benchmark/benchmark.h>

#include <memory>

using namespace vm20;
using vm20::bench::AddField;

namespace {

constexpr int TableCount = 200;
constexpr int UsedTables = 100;
constexpr int Columns = 20;

struct BigModel
{
    TNDBStructure model;
    std::vector<TDSField *> names;     // a string field per table
    std::vector<TDSField *> amounts;   // a float field per table
    std::vector<TDSField *> ids;       // an integer field per table
};

std::unique_ptr<BigModel> MakeModel()
{
    auto big = std::make_unique<BigModel>();
    TNDBStructure &model = big->model;
    model.BeginUpdate();
    for (int t = 0; t < TableCount; ++t) {
        TDSTable *table = bench::AddTreeTable(model, t, QStringLiteral("t%1").arg(t));
        big->ids.push_back(AddField(model, table, "ID", ftInteger));
        big->names.push_back(AddField(model, table, "Name", ftString));
        big->amounts.push_back(AddField(model, table, "Amount", ftFloat));
    }
    model.EndUpdate();
    return big;
}

// 10 top brackets of 10 brackets each; the conditions are spread over them.
void FillQuery(TNQuery &query, const BigModel &big, int conditions)
{
    query.BeginUpdate();
    for (int c = 0; c < Columns; ++c)
        query.RFields().Add(QString(), {big.names[std::size_t(c * (UsedTables / Columns))]}, QString());
    std::vector<TFilterBracket *> brackets;
    for (int i = 0; i < 10; ++i) {
        TFilterBracket *top = query.Filter()->AddNewBracket();
        top->SetLinkType(i % 2 ? fltAll : fltNone);
        for (int j = 0; j < 10; ++j)
            brackets.push_back(top->AddNewBracket());
    }
    const char *ops[] = {"Equal", "GreaterThan", "Between", "InList"};
    for (int n = 0; n < conditions; ++n) {
        const std::size_t table = std::size_t(n % UsedTables);
        TSimpleCond *cond = brackets[std::size_t(n) % brackets.size()]->AddCond();
        switch (n % 4) {
        case 0: cond->SetField(big.names[table]); break;
        case 1: cond->SetField(big.amounts[table]); break;
        default: cond->SetField(big.ids[table]); break;
        }
        cond->SetOperator(big.model.OperatorByName(QLatin1String(ops[n % 4])));
        cond->SetValue(1, n % 4 == 3 ? QStringLiteral("1,2,3") : QString::number(n));
        cond->SetValue(2, QString::number(n + 10));
    }
    query.EndUpdate();
}

void BM_BuildQueryAndGetSQL(benchmark::State &state)
{
    const std::unique_ptr<BigModel> big = MakeModel();
    TNQuery query;
    query.SetDBStruct(&big->model);
    FillQuery(query, *big, int(state.range(0)));
    qsizetype lines = 0;
    for (auto _ : state) {
        query.BuildQuery();
        lines = query.GetSQL().size();
        benchmark::DoNotOptimize(lines);
    }
    state.counters["sql_lines"] = double(lines);
    state.counters["tables"] = query.QResult().ResultTables().Count();
}

} // namespace

BENCHMARK(BM_BuildQueryAndGetSQL)->Arg(10000)->Arg(20000)->Unit(benchmark::kMillisecond);
