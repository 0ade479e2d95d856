// ParseSQL of one large statement into a query: 10,000, 20,000 and 100,000
// conditions in nested brackets over 40 tables, every built-in operator, the
// statement the library itself writes (about 40 bytes per condition).
#include "model/dbstructure.h"
#include "treemodel.h"
#include "query/query.h"

#include <benchmark/benchmark.h>

#include <memory>

using namespace vm20;
using vm20::bench::AddField;

namespace {

constexpr int TableCount = 40;

struct BigModel
{
    TNDBStructure model;
    std::vector<TDSField *> fields;   // an integer, text, float and date field per table
};

std::unique_ptr<BigModel> MakeModel()
{
    auto big = std::make_unique<BigModel>();
    TNDBStructure &model = big->model;
    model.BeginUpdate();
    for (int t = 0; t < TableCount; ++t) {
        TDSTable *table = bench::AddTreeTable(model, t, QStringLiteral("tab%1").arg(t));
        big->fields.push_back(AddField(model, table, "RecordID", ftInteger));
        big->fields.push_back(AddField(model, table, "FullName", ftString));
        big->fields.push_back(AddField(model, table, "TotalAmount", ftFloat));
        big->fields.push_back(AddField(model, table, "CreatedOn", ftDate));
    }
    model.EndUpdate();
    return big;
}

// The statement of a query of `conditions` conditions: 10 top brackets of 10
// brackets each, the conditions spread over them, each field with each of its
// operators in turn.
QStringList MakeStatement(BigModel &big, int conditions)
{
    TNQuery query;
    query.SetDBStruct(&big.model);
    query.BeginUpdate();
    for (int c = 0; c < 10; ++c)
        query.RFields().Add(QString(), {big.fields[std::size_t(c * 4 + 1)]}, QString());
    std::vector<TFilterBracket *> brackets;
    for (int i = 0; i < 10; ++i) {
        TFilterBracket *top = query.Filter()->AddNewBracket();
        top->SetLinkType(TFilterLinkType(i % 4));
        for (int j = 0; j < 10; ++j) {
            brackets.push_back(top->AddNewBracket());
            brackets.back()->SetLinkType(TFilterLinkType(j % 4));
        }
    }
    const int day = 43900;
    for (int n = 0; n < conditions; ++n) {
        TDSField *field = big.fields[std::size_t(n) % big.fields.size()];
        TSimpleCond *cond = brackets[std::size_t(n) % brackets.size()]->AddCond();
        cond->SetField(field);
        TDSOperator *op = field->GetOperator((n / int(big.fields.size())) % field->OperatCount());
        if (op->ValueKind() == vkList && field->FieldType() == ftDate)
            op = field->GetOperator(0);
        cond->SetOperator(op);
        QString value;
        switch (field->FieldType()) {
        case ftString: value = QStringLiteral("Customer name %1").arg(n); break;
        case ftFloat: value = QStringLiteral("%1.125").arg(n * 7); break;
        case ftDate: value = QString::number(day + n % 1000); break;
        default: value = QString::number(n * 1009); break;
        }
        if (op->ValueKind() == vkList)
            value = value + QLatin1Char(',') + value + QLatin1Char('1');
        cond->SetValue(1, value);
        cond->SetValue(2, value);
    }
    query.EndUpdate();
    query.BuildQuery();
    return query.GetSQL();
}

void BM_ParseSQL(benchmark::State &state)
{
    const std::unique_ptr<BigModel> big = MakeModel();
    const QStringList statement = MakeStatement(*big, int(state.range(0)));
    qsizetype bytes = 0;
    for (const QString &line : statement)
        bytes += line.toUtf8().size() + 1;
    TNQuery query;
    query.SetDBStruct(&big->model);
    for (auto _ : state) {
        query.ParseSQL(statement);
        benchmark::DoNotOptimize(query.Filter()->GetRowCount());
    }
    state.SetBytesProcessed(state.iterations() * bytes);
    state.counters["KB"] = double(bytes) / 1024;
    state.counters["rows"] = query.GetRowCount();
}

} // namespace

// The sizes run in one program so that their ratio compares like with like.
BENCHMARK(BM_ParseSQL)->Arg(10000)->Arg(20000)->Arg(100000)->Unit(benchmark::kMillisecond);
