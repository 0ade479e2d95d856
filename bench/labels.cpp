// Drop-down labels in bulk: a condition panel of n/5 rows holds about n
// labels; and opening the field menu of a large model.
#include "widgetbench.h"
#include "ui/dropdownchecklistbox.h"
#include "ui/dropdownedit.h"
#include "ui/dropdownpopup.h"
#include "ui/menuview.h"

#include <QApplication>
#include <QTimer>

#include <benchmark/benchmark.h>

#include <memory>

using namespace vm20;

namespace {

// One row: field, operator, two values and a check list.
void AddRow(QWidget *host, int row)
{
    const int y = row * 18;
    auto *field = new TDropDownPopup(host);
    field->AddItem(QString(), QStringLiteral("f"), QStringLiteral("Field"));
    field->SetValue(QStringLiteral("f"));
    field->move(30, y);
    auto *op = new TDropDownPopup(host);
    op->AddItem(QString(), QStringLiteral("="), QStringLiteral("equals"));
    op->SetValue(QStringLiteral("="));
    op->move(90, y);
    auto *value = new TDropDownEdit(host);
    value->SetValue(QString::number(row));
    value->move(150, y);
    auto *second = new TDropDownEdit(host);
    second->move(200, y);
    auto *list = new TDropDownCheckListBox(host);
    list->move(250, y);
}

void BM_CreatePlaceShowLabels(benchmark::State &state)
{
    const int labels = int(state.range(0));
    for (auto _ : state) {
        auto host = std::make_unique<QWidget>();
        host->resize(800, 600);
        for (int row = 0; row < labels / 5; ++row)
            AddRow(host.get(), row);
        host->show();
        QApplication::processEvents();
        state.PauseTiming();
        host.reset();
        QApplication::processEvents();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * labels);
}
BENCHMARK(BM_CreatePlaceShowLabels)->Arg(5000)->Arg(100000)->Unit(benchmark::kMillisecond);

// Open, paint once, close: the user sees the menu at the first paint.
// Field i goes into the group group(i); an empty group name makes a flat menu.
template <typename Group>
void OpenMenu(benchmark::State &state, Group group)
{
    const int fields = int(state.range(0));
    QWidget host;
    host.resize(400, 300);
    auto *label = new TDropDownPopup(&host);
    for (int i = 0; i < fields; ++i)
        label->AddItem(group(i), QString::number(i), QStringLiteral("Field %1").arg(i));
    host.show();
    QApplication::processEvents();
    for (auto _ : state) {
        QTimer::singleShot(0, label, [label] {
            label->Menu()->TopView()->repaint();
            label->Menu()->Close();
        });
        label->DropDown();
    }
}

void BM_OpenFieldMenu(benchmark::State &state)
{
    OpenMenu(state, [](int i) { return QStringLiteral("Table %1").arg(i / 50); });
}
BENCHMARK(BM_OpenFieldMenu)->Arg(5000)->Unit(benchmark::kMillisecond);

void BM_OpenFlatMenu(benchmark::State &state)
{
    OpenMenu(state, [](int) { return QString(); });
}
BENCHMARK(BM_OpenFlatMenu)->Arg(5000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    return RunWidgetBenchmarks(argc, argv);
}
