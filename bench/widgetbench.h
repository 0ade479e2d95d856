#pragma once
// The main of the widget benchmarks: widgets need an application object, the
// offscreen platform unless the caller chose another, and the fixed font of
// the widget tests so that text is measured the same everywhere.
#include <QApplication>
#include <QFont>

#include <benchmark/benchmark.h>

inline int RunWidgetBenchmarks(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
