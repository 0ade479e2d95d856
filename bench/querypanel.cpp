// The condition panel over large queries: activating it (row views created
// and placed), rebuilding it after an appearance change, painting one
// screenful after a scroll, the memory a row takes, the panel following a
// row moved, inserted or deleted in the query (its posted layout and painting
// included), adding and deleting a row through the menus, and walking the
// rows with the arrow keys.
#include "widgetbench.h"
#include "model/valueeditors.h"
#include "query/filtercond.h"
#include "query/query.h"
#include "treemodel.h"
#include "ui/querypanel.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QScrollBar>

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <memory>

using namespace vm20;

namespace {

struct Fixture
{
    TNDBStructure model;
    std::vector<std::pair<TDSField *, QString>> kinds; // field, operator
    TDSCondition *custom = nullptr;

    Fixture()
    {
        TDSTable *table = bench::AddTreeTable(model, 0, QStringLiteral("t"));
        auto add = [&](const char *column, TFieldType type, const char *op) {
            kinds.emplace_back(bench::AddField(model, table, QString::fromLatin1(column), type), QString::fromLatin1(op));
        };
        add("Name", ftString, "StartsWith");
        add("Qty", ftInteger, "Equal");
        add("Price", ftFloat, "Between");
        add("Day", ftDate, "Less");
        add("Flag", ftBoolean, "Equal");
        add("Code", ftString, "InList");
        add("Status", ftString, "Equal");
        TDSField *status = kinds.back().first;
        status->SetEditType(etList);
        auto *list = static_cast<TDSListEditor *>(status->ValueEditor());
        list->Items() << QStringLiteral("Open") << QStringLiteral("Closed");
        list->Values() << QStringLiteral("O") << QStringLiteral("C");
        custom = model.AddCondition(QStringLiteral("Ordered in @"), QStringLiteral("t.Year = @1"));
    }

    // Rows under brackets three levels deep, every label kind in turn.
    void Fill(TNQuery &q, int rows)
    {
        q.BeginUpdate();
        TFilterBracket *bracket = q.Filter();
        for (int i = 0; i < rows; ++i) {
            if (i % 10 == 0) {
                bracket = i % 40 == 0 ? q.Filter() : bracket;
                bracket = bracket->AddNewBracket();
                ++i;
            }
            if (i % 13 == 0) {
                q.AddCustomCondition(bracket, custom)->SetValue(1, QStringLiteral("2024"));
                continue;
            }
            const auto &[field, op] = kinds[std::size_t(i) % kinds.size()];
            TSimpleCond *c = q.AddCondition(bracket, field);
            if (TDSOperator *o = model.OperatorByName(op))
                c->SetOperator(o);
            c->SetValue(1, QString::number(i));
            if (c->GetValueCount() > 1)
                c->SetValue(2, QString::number(i + 10));
            if (i % 17 == 0)
                c->SetValueIsParam(1, true);
        }
        q.EndUpdate();
    }
};

std::size_t HeapInUse()
{
    return mallinfo2().uordblks;
}

std::unique_ptr<TNQueryPanel> MakePanel(Fixture &f, int rows)
{
    auto panel = std::make_unique<TNQueryPanel>();
    panel->resize(640, 480);
    panel->setAttribute(Qt::WA_DontShowOnScreen);
    panel->SetDBStruct(&f.model);
    f.Fill(*panel->Query(), rows);
    return panel;
}

// A shown panel with its first layout and painting done.
std::unique_ptr<TNQueryPanel> ShownPanel(Fixture &f, int rows)
{
    auto panel = MakePanel(f, rows);
    panel->show();
    QApplication::processEvents();
    return panel;
}

void BM_Activate(benchmark::State &state)
{
    Fixture f;
    auto panel = MakePanel(f, int(state.range(0)));
    for (auto _ : state) {
        panel->Activate();
        state.PauseTiming();
        panel->Deactivate();
        state.ResumeTiming();
    }
    const std::size_t before = HeapInUse();
    panel->Activate();
    state.counters["bytes_per_row"] = double(HeapInUse() - before) / double(panel->RowViewCount());
}
BENCHMARK(BM_Activate)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void BM_RefreshPanel(benchmark::State &state)
{
    Fixture f;
    auto panel = MakePanel(f, int(state.range(0)));
    panel->Activate();
    for (auto _ : state)
        panel->RefreshPanel();
}
BENCHMARK(BM_RefreshPanel)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

// One step of a user action (rows pasted) taken back, the panel's deferred
// placing of rows included: comparable with BM_RefreshPanel.
void BM_UndoStep(benchmark::State &state)
{
    Fixture f;
    auto panel = MakePanel(f, int(state.range(0)));
    panel->Activate();
    panel->SetCurrentRow(panel->Query()->GetRowByNum(5));
    panel->CopyCurrentRow();
    if (!panel->PasteRows())   // a user action: one step
        state.SkipWithError("the paste was refused");
    for (auto _ : state) {
        panel->Undo();
        QCoreApplication::sendPostedEvents();
        state.PauseTiming();
        panel->Redo();
        QCoreApplication::sendPostedEvents();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_UndoStep)->Arg(1000)->Unit(benchmark::kMillisecond);

void BM_PaintAfterScroll(benchmark::State &state)
{
    Fixture f;
    auto panel = ShownPanel(f, int(state.range(0)));
    QImage image(panel->viewport()->size(), QImage::Format_ARGB32_Premultiplied);
    QScrollBar *bar = panel->verticalScrollBar();
    int step = 0;
    for (auto _ : state) {
        bar->setValue((++step * 997) % std::max(1, bar->maximum()));
        QPainter painter(&image);
        panel->viewport()->render(&painter);
    }
}
BENCHMARK(BM_PaintAfterScroll)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

// A condition halfway down, in a bracket with siblings on both sides.
TFilterRow *MiddleCondition(TNQuery &q)
{
    for (int num = q.GetRowCount() / 2;; ++num) {
        TFilterRow *row = q.GetRowByNum(num);
        if (!row->IsBracket() && row->IndexInParent() > 0 && row->IndexInParent() + 1 < row->Parent()->GetRowCount())
            return row;
    }
}

void BM_MoveRow(benchmark::State &state)
{
    Fixture f;
    auto panel = ShownPanel(f, int(state.range(0)));
    TNQuery &q = *panel->Query();
    TFilterRow *row = MiddleCondition(q);
    bool up = true;
    for (auto _ : state) {
        benchmark::DoNotOptimize(up ? q.MoveRowUp(row) : q.MoveRowDown(row));
        up = !up;
        QApplication::processEvents();
    }
}
BENCHMARK(BM_MoveRow)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

// A condition added near the top of the root, so that every row below
// shifts, and the panel brought up to date.
TSimpleCond *InsertNearTop(Fixture &f, TNQuery &q)
{
    TSimpleCond *added = q.AddConditionNum(q.Filter(), 1, f.kinds[0].first);
    QApplication::processEvents();
    return added;
}

void DeleteAndPlace(TNQuery &q, TFilterRow *row)
{
    q.DeleteRow(row);
    QApplication::processEvents();
}

void BM_InsertRow(benchmark::State &state)
{
    Fixture f;
    auto panel = ShownPanel(f, int(state.range(0)));
    TNQuery &q = *panel->Query();
    for (auto _ : state) {
        TSimpleCond *added = InsertNearTop(f, q);
        state.PauseTiming();
        DeleteAndPlace(q, added);
        state.ResumeTiming();
    }
}
BENCHMARK(BM_InsertRow)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void BM_DeleteRow(benchmark::State &state)
{
    Fixture f;
    auto panel = ShownPanel(f, int(state.range(0)));
    TNQuery &q = *panel->Query();
    for (auto _ : state) {
        state.PauseTiming();
        TSimpleCond *added = InsertNearTop(f, q);
        state.ResumeTiming();
        DeleteAndPlace(q, added);
    }
}
BENCHMARK(BM_DeleteRow)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

// One condition added after a middle row through the row menu, then deleted
// through it, each placed as the user would see it.
void BM_MenuAddAndDeleteRow(benchmark::State &state)
{
    Fixture f;
    auto panel = MakePanel(f, int(state.range(0)));
    TQPAppearance &look = panel->Appearance();
    look.SetOptions(look.Options() - TQPAppearance::TQPAppearanceOptions{TQPAppearance::aoFieldsMenuOnAdd});
    panel->Activate();
    TFilterRow *middle = panel->Query()->GetRowByNum(panel->Query()->GetRowCount() / 2);
    for (auto _ : state) {
        panel->SetCurrentRow(middle);
        panel->MenuItemClick(1);
        benchmark::DoNotOptimize(panel->RowView(panel->CurrentRow()));
        panel->MenuItemClick(20);
        benchmark::DoNotOptimize(panel->RowView(middle));
        QApplication::processEvents();
    }
}
BENCHMARK(BM_MenuAddAndDeleteRow)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

// Down then Up on a middle row, as a user walking the rows: the cost of a
// key must not grow with the query.
void BM_ArrowKeys(benchmark::State &state)
{
    Fixture f;
    auto panel = MakePanel(f, int(state.range(0)));
    panel->Activate();
    panel->SetCurrentRowNum(panel->Query()->GetRowCount() / 2);
    QApplication::processEvents();
    const TFilterRow *start = panel->CurrentRow();
    panel->KeyDown(Qt::Key_Down, Qt::NoModifier);
    if (panel->CurrentRow() == start)
        state.SkipWithError("Down did not move the current row");
    panel->KeyDown(Qt::Key_Up, Qt::NoModifier);
    for (auto _ : state) {
        panel->KeyDown(Qt::Key_Down, Qt::NoModifier);
        panel->KeyDown(Qt::Key_Up, Qt::NoModifier);
        benchmark::DoNotOptimize(panel->CurrentRow());
    }
}
BENCHMARK(BM_ArrowKeys)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv)
{
    return RunWidgetBenchmarks(argc, argv);
}
