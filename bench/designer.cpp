// The design panel on a model of 200 tables and 400 links: building the
// diagram, one mouse move of a dragged table, and the diagram written as a
// PNG file from the model file (what `vm20 diagram` does).
#include "designer/designarea.h"
#include "designer/structdesignpanel.h"
#include "model/dbstructure.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDir>
#include <QMouseEvent>
#include <QTemporaryDir>

#include <memory>

using namespace vm20;

namespace {

QApplication &App()
{
    static int argc = 1;
    static char name[] = "bench_designer";
    static char *argv[] = {name, nullptr};
    static QApplication *app = [] {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        return new QApplication(argc, argv);
    }();
    return *app;
}

// Table i holds eight columns and is linked to tables i + 1 and i + 7.
void BuildModel(TNCustomDBStructure &model, int tables)
{
    model.BeginUpdate();
    for (int i = 0; i < tables; ++i) {
        TDSTable *table = model.GetTable(model.AddTable(QStringLiteral("table%1").arg(i),
                                                        QStringLiteral("Table %1").arg(i)));
        for (int c = 0; c < 8; ++c) {
            auto field = std::make_unique<TDSField>(&model);
            field->SetFieldExpr(QStringLiteral("column_%1").arg(c));
            field->Tables().Add(table);
            model.AddFieldRef(std::move(field));
        }
    }
    for (int i = 0; i < tables; ++i)
        for (int step : {1, 7}) {
            auto link = std::make_unique<TDSLink>(&model);
            link->SetTable1(model.GetTable(i));
            link->SetTable2(model.GetTable((i + step) % tables));
            link->SetFields1({QStringLiteral("column_%1").arg(step)});
            link->SetFields2({QStringLiteral("column_0")});
            model.AddLinkByRef(std::move(link));
        }
    model.EndUpdate();
    model.Changed();
}

void FreeDeferred()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// The diagram of 200 tables shown in a panel, its first arrangement not yet
// painted.
struct ShownDiagram
{
    TNDBStructure model;
    TNStructDesignPanel panel;

    ShownDiagram()
    {
        BuildModel(model, 200);
        panel.resize(1400, 900);
        panel.SetStruct(&model);
        panel.show();
    }
};

void BM_ActivateDiagram(benchmark::State &state)
{
    App();
    ShownDiagram diagram;
    TNDBStructure &model = diagram.model;
    TNStructDesignPanel &panel = diagram.panel;
    for (auto _ : state) {
        panel.Activate();
        state.PauseTiming();
        // Forget the saved places so that every round arranges again.
        for (int i = 0; i < model.GetTableCount(); ++i)
            model.GetTable(i)->SetDesignPositions(QStringLiteral("0,0,0,0"));
        FreeDeferred();
        state.ResumeTiming();
    }
    state.counters["links"] = panel.LinkReps().Count();
}
BENCHMARK(BM_ActivateDiagram)->Unit(benchmark::kMillisecond);

void SendMouse(QWidget *widget, QEvent::Type type, QPoint pos)
{
    QMouseEvent event(type, QPointF(pos), QPointF(widget->mapToGlobal(pos)),
                      type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

void BM_DragTableOneMove(benchmark::State &state)
{
    App();
    ShownDiagram diagram;
    TNDBStructure &model = diagram.model;
    TNStructDesignPanel &panel = diagram.panel;
    QApplication::processEvents();
    TTableRep *rep = panel.TableRep(model.GetTable(10));
    const QPoint grip(10, 5);
    // Mouse positions are given where the mouse is on the diagram, as the
    // window under it moves along.
    const QPoint pressed = rep->mapToParent(grip);
    SendMouse(rep, QEvent::MouseButtonPress, grip);
    int step = 0;
    for (auto _ : state) {
        step = (step + 1) % 40;
        SendMouse(rep, QEvent::MouseMove, rep->mapFromParent(pressed + QPoint(step * 3, step * 2)));
        QApplication::processEvents();   // the repaint of what moved
    }
    SendMouse(rep, QEvent::MouseButtonRelease, grip);
}
BENCHMARK(BM_DragTableOneMove)->Unit(benchmark::kMillisecond);

// The table dragged past the diagram's edge: every move also grows the area.
void BM_DragTableGrowingDiagram(benchmark::State &state)
{
    App();
    ShownDiagram diagram;
    TNDBStructure &model = diagram.model;
    TNStructDesignPanel &panel = diagram.panel;
    QApplication::processEvents();
    TTableRep *rep = panel.TableRep(model.GetTable(10));
    const QPoint grip(10, 5);
    QPoint mouse = rep->mapToParent(grip);
    SendMouse(rep, QEvent::MouseButtonPress, grip);
    for (auto _ : state) {
        mouse += QPoint(0, 4);
        const int below = panel.DesignArea()->Canvas()->height() - rep->geometry().bottom();
        mouse.ry() += below > 10 ? below - 10 : 0;   // stay at the bottom edge
        SendMouse(rep, QEvent::MouseMove, rep->mapFromParent(mouse));
        QApplication::processEvents();
    }
    SendMouse(rep, QEvent::MouseButtonRelease, grip);
}
BENCHMARK(BM_DragTableGrowingDiagram)->Unit(benchmark::kMillisecond);

void BM_DiagramCommand(benchmark::State &state)
{
    App();
    QTemporaryDir dir;
    const QString modelFile = QDir(dir.path()).filePath(QStringLiteral("big.model"));
    {
        TNDBStructure model;
        BuildModel(model, 200);
        model.SaveToFile(modelFile);
    }
    const QString png = QDir(dir.path()).filePath(QStringLiteral("big.png"));
    for (auto _ : state) {
        TNDBStructure model;
        model.LoadFromFile(modelFile);
        TNStructDesignPanel panel;
        panel.resize(1200, 800);
        panel.SetStruct(&model);
        panel.Activate();
        panel.SaveDiagram(png);
    }
}
BENCHMARK(BM_DiagramCommand)->Unit(benchmark::kMillisecond);

} // namespace
