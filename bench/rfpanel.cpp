// The result column panel with 200 columns: activating it, and moving or
// deleting one column.
#include "widgetbench.h"
#include "model/dbstructure.h"
#include "query/query.h"
#include "query/resultfield.h"
#include "ui/resultfieldspanel.h"

#include <QApplication>

#include <benchmark/benchmark.h>

namespace {

constexpr int ColumnCount = 200;

// Labels are freed later (a label may be freed from inside its own event);
// without an event loop nothing frees them, and the growing queue of pending
// deletions would slow down every later iteration.
void Settle()
{
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

struct Setup
{
    Setup()
    {
        model.LoadFromFile(QStringLiteral(VM20_SOURCE_DIR "/examples/shop.model"));
        query.SetDBStruct(&model);
        for (int i = 0; i < ColumnCount; ++i) {
            vm20::TDSField *field = model.GetField(i % model.GetFieldCount());
            query.RFields().Add(QString(), {field}, i % 3 ? QStringLiteral("@1") : QStringLiteral("sum(@1)"));
        }
        panel.resize(600, 400);
        panel.SetDBStruct(&model);
    }
    vm20::TNDBStructure model;
    vm20::TNQuery query;
    vm20::TNResultFieldsPanel panel;
};

void BM_ActivateRows(benchmark::State &state)
{
    Setup s;
    for (auto _ : state) {
        s.panel.SetQuery(&s.query);
        benchmark::DoNotOptimize(s.panel.RowCount());
        state.PauseTiming();
        s.panel.SetQuery(nullptr);
        Settle();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_ActivateRows)->Unit(benchmark::kMillisecond);

void BM_MoveRow(benchmark::State &state)
{
    Setup s;
    s.panel.SetQuery(&s.query);
    for (auto _ : state) {
        s.panel.MoveRow(0, ColumnCount / 2);
        state.PauseTiming();
        s.panel.MoveRow(ColumnCount / 2, 0);
        Settle();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_MoveRow)->Unit(benchmark::kMillisecond);

void BM_DeleteRow(benchmark::State &state)
{
    Setup s;
    s.panel.SetQuery(&s.query);
    for (auto _ : state) {
        s.panel.DeleteRow(ColumnCount / 2);
        state.PauseTiming();
        // The panel adds the row back itself, as for any column added in code.
        s.query.RFields().Insert(ColumnCount / 2, QString(), {s.model.GetField(0)}, QStringLiteral("@1"));
        Settle();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_DeleteRow)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    return RunWidgetBenchmarks(argc, argv);
}
