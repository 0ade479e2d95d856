// Saving and loading the text of a large model: `scale` 1 is 1,000 tables,
// 20,000 fields, 2,000 links and 500 predefined conditions; 2 is twice that.
// Compare the two sizes' medians to see that the cost grows linearly.
#include "model/dbstructure.h"

#include <benchmark/benchmark.h>

#include <map>
#include <memory>

namespace {

using namespace vm20;

void BuildLargeModel(TNCustomDBStructure &model, int scale)
{
    const int tables = 1000 * scale;
    model.BeginUpdate();
    for (int t = 0; t < tables; ++t) {
        TDSTable *table = model.GetTable(model.AddTable(QStringLiteral("Table %1").arg(t), QStringLiteral("Table number %1").arg(t)));
        table->SetDesignPositions(QStringLiteral("%1,%2,120,200").arg(t % 40 * 130).arg(t / 40 * 210));
        TDSFieldGroup *group = model.FieldGroups().AddGroup(table->TableName());
        for (int c = 0; c < 20; ++c) {
            auto field = std::make_unique<TDSField>(&model);
            TDSField *added = field.get();
            if (c == 19) {
                field->SetFieldKind(nfkVirtual);
                field->SetFieldType(ftCurrency);
                model.AddFieldRef(std::move(field));
                added->SetSQLExpr(QStringLiteral("SUM(%1.Column_3 * %1.Column_4)").arg(table->TableAlias()));
            } else {
                field->SetFieldExpr(QStringLiteral("Column_%1").arg(c));
                field->Tables().Add(table);
                field->SetFieldType(c % 3 == 0 ? ftInteger : c % 3 == 1 ? ftString : ftDate);
                field->SetFieldSize(30);
                model.AddFieldRef(std::move(field));
            }
            added->SetDisplayName(QStringLiteral("Column %1 of table %2").arg(c).arg(t));
            if (c == 5) {
                added->SetEditType(etList);
                auto *list = static_cast<TDSListEditor *>(added->ValueEditor());
                list->Items() << "First item" << "Second item";
                list->Values() << "1" << "2";
            }
            added->AddAppliedOperators();
            if (c % 4 != 0)
                added->SetGroup(group);
        }
    }
    for (int t = 0; t < tables; ++t) {
        model.AddLinkByExpr(QStringLiteral("Table %1-Table %2:Column_1=Column_0").arg(t).arg((t + 1) % tables));
        model.AddLinkByExpr(QStringLiteral("Table %1-Table %2:Column_2=Column_0").arg(t).arg((t + 7) % tables));
    }
    for (int i = 0; i < 500 * scale; ++i)
        model.AddCondition(QStringLiteral("Column 1 of table %1 above @").arg(i),
                           QStringLiteral("Table_%1.Column_1 > 100").arg(i));
    model.SetDefaultMainTable(model.GetTable(0));
    model.EndUpdate();
}

const QStringList &LargeModelText(int scale)
{
    static std::map<int, QStringList> texts;
    auto &text = texts[scale];
    if (text.isEmpty()) {
        TNCustomDBStructure model;
        BuildLargeModel(model, scale);
        model.SaveToStrings(text);
    }
    return text;
}

void BM_LoadFromStrings(benchmark::State &state)
{
    const QStringList &text = LargeModelText(int(state.range(0)));
    TNCustomDBStructure model;
    for (auto _ : state)
        model.LoadFromStrings(text);
    state.counters["lines"] = double(text.size());
}

void BM_SaveToStrings(benchmark::State &state)
{
    TNCustomDBStructure model;
    model.LoadFromStrings(LargeModelText(int(state.range(0))));
    QStringList lines;
    for (auto _ : state) {
        model.SaveToStrings(lines);
        benchmark::DoNotOptimize(lines.size());
    }
}

BENCHMARK(BM_LoadFromStrings)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SaveToStrings)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

} // namespace
