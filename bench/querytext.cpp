// Saving and loading the query text of large queries: groups of ten rows (a
// bracket and nine conditions of every kind), a parameter in every tenth
// group. Twice the rows should take about twice the time.
#include "../tests/query/shopmodel.h"
#include "query/query.h"
#include "query/sqlparam.h"

#include <benchmark/benchmark.h>

namespace {

using namespace vm20;

void AddGroup(TNQuery &query, const shop::ShopModel &s, int group)
{
    TFilterBracket *bracket = query.Filter()->AddNewBracket();
    bracket->SetLinkType(TFilterLinkType(group % 4));
    const auto add = [&](TDSField *field, const char *op, const QString &v1, const QString &v2 = {}) {
        TSimpleCond *cond = bracket->AddCond();
        cond->SetField(field);
        cond->SetOperator(s.Op(op));
        cond->SetValue(1, v1);
        cond->SetValue(2, v2);
        return cond;
    };
    add(s.custCity, "Equal", QStringLiteral("Paris"));
    add(s.orderTotal, "Between", QString::number(group), QStringLiteral("2000"));
    add(s.custName, "InList", QStringLiteral("Ann,Bob,\"Smith, J\""));
    add(s.orderDate, "GreaterThan", QStringLiteral("44928.5"));
    add(s.custVip, "Equal", QStringLiteral("True"));
    add(s.productName, "Contains", QStringLiteral("lamp"));
    TSimpleCond *qty = add(s.lineQty, "LessThan", QStringLiteral("7"));
    if (group % 10 == 0) {
        qty->SetValueIsParam(1, true);
        qty->GetParam(1)->SetValueFormat(QStringLiteral("@v"));
    }
    bracket->AddCustomCond(s.bigCustomers)->SetValue(1, QString::number(group));
    bracket->AddCustomCond(s.vipOnly)->SetEnabled(false);
}

struct TBigQuery
{
    shop::ShopModel s = shop::MakeShopModel();
    TNQuery query;
    explicit TBigQuery(int rows)
    {
        query.SetDBStruct(s.model.get());
        query.RFields().Add(QString(), {s.custName}, QString());
        query.RFields().Add(QString(), {s.orderTotal}, QString());
        for (int group = 0; group < rows / 10; ++group)
            AddGroup(query, s, group);
    }
};

void BM_SaveToStrings(benchmark::State &state)
{
    TBigQuery big(int(state.range(0)));
    QStringList lines;
    for (auto _ : state) {
        big.query.SaveToStrings(lines);
        benchmark::DoNotOptimize(lines.size());
    }
    state.counters["lines"] = double(lines.size());
}

void BM_LoadFromStrings(benchmark::State &state)
{
    TBigQuery big(int(state.range(0)));
    QStringList lines;
    big.query.SaveToStrings(lines);
    TNQuery target;
    target.SetDBStruct(big.s.model.get());
    for (auto _ : state) {
        target.LoadFromStrings(lines);
        benchmark::DoNotOptimize(target.GetRowCount());
    }
    state.counters["rows"] = double(target.GetRowCount());
}

BENCHMARK(BM_SaveToStrings)->Arg(10000)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LoadFromStrings)->Arg(10000)->Arg(20000)->Unit(benchmark::kMillisecond);

} // namespace
