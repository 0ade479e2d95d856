// Reading a query text of many sections in order must stay linear: each read
// starts where the previous one ended.
#include "support/nstrings.h"

#include <benchmark/benchmark.h>

using namespace vm20;

namespace {

QStringList QueryLikeText(int sections)
{
    QStringList lines{"[Main]", "QueryName=Bench", "Version=3.6", ""};
    for (int i = 1; i <= sections; ++i) {
        lines << QStringLiteral("[Cond%1]").arg(i) << QStringLiteral("Type=1") << QStringLiteral("Parent=0")
              << QStringLiteral("Field=%1").arg(i % 97) << QStringLiteral("Operator=equal")
              << QStringLiteral("Value1=%1").arg(i) << QStringLiteral("Value2=") << QStringLiteral("Enabled=1")
              << QString();
    }
    return lines;
}

void ReadSectionsInOrder(benchmark::State &state)
{
    const int count = int(state.range(0));
    const QStringList lines = QueryLikeText(count);
    QStringList names;
    for (int i = 1; i <= count; ++i)
        names << QStringLiteral("Cond%1").arg(i);
    QStringList values;
    for (auto _ : state) {
        int pos = XReadSLSectionValues(0, lines, QStringLiteral("Main"), values);
        for (const QString &name : names)
            pos = XReadSLSectionValues(pos, lines, name, values);
        benchmark::DoNotOptimize(pos);
    }
    state.SetComplexityN(count);
}
BENCHMARK(ReadSectionsInOrder)->Arg(1000)->Arg(10000)->Arg(40000)->Complexity(benchmark::oN)->Unit(benchmark::kMillisecond);

void IndexSectionsAndFetchAll(benchmark::State &state)
{
    const int count = int(state.range(0));
    const QStringList lines = QueryLikeText(count);
    for (auto _ : state) {
        const TSectionIndex index(lines);
        qsizetype total = 0;
        for (int i = 1; i <= count; ++i)
            total += index.Values(QStringLiteral("cond%1").arg(i)).size();
        benchmark::DoNotOptimize(total);
    }
    state.SetComplexityN(count);
}
BENCHMARK(IndexSectionsAndFetchAll)->Arg(1000)->Arg(10000)->Arg(40000)->Complexity(benchmark::oN)->Unit(benchmark::kMillisecond);

void ComposeLongCommaText(benchmark::State &state)
{
    QStringList items;
    for (int i = 0; i < state.range(0); ++i)
        items << QStringLiteral("item %1").arg(i) << QStringLiteral("x\"y") << QString();
    const QString text = ListToCommaText(items);
    for (auto _ : state)
        benchmark::DoNotOptimize(ComposeCommaText(text));
    state.SetBytesProcessed(state.iterations() * text.size() * qsizetype(sizeof(QChar)));
}
BENCHMARK(ComposeLongCommaText)->Arg(10000)->Unit(benchmark::kMicrosecond);

} // namespace
