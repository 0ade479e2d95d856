// Parsing speed on large generated WHERE clauses: nested and/or groups of
// comparisons, LIKE, IN lists and BETWEEN, one condition per line.
#include "sqlparse/sqlparser.h"

#include <benchmark/benchmark.h>

#include <QStringList>

namespace {

QString Condition(int i)
{
    switch (i % 4) {
    case 0:
        return QStringLiteral("t%1.Field%2 = 'some value %3'").arg(i % 7).arg(i % 13).arg(i);
    case 1:
        return QStringLiteral("Customers.Name like 'John %1%'").arg(i);
    case 2:
        return QStringLiteral("o.Id in (1, 2, 3, 5, 8, %1)").arg(i);
    default:
        return QStringLiteral("o.Amount between %1 and %2").arg(i).arg(i + 100);
    }
}

// Groups of four, three levels deep, operators alternating inside a group.
QString Group(int level, int &next, int count)
{
    if (level == 0)
        return Condition(next++);
    QStringList parts;
    for (int k = 0; k < 4 && next < count; ++k)
        parts << Group(level - 1, next, count);
    QString text;
    for (int k = 0; k < parts.size(); ++k)
        text += (k == 0 ? QString() : (k % 2 ? QStringLiteral(" and ") : QStringLiteral(" or "))) + parts[k];
    return (level == 1 ? QStringLiteral("(") : QStringLiteral("(\n")) + text + QStringLiteral(")\n");
}

QStringList Statement(int conditions)
{
    QString sql = QStringLiteral("SELECT DISTINCT o.Id, Customers.Name AS \"Customer\", count(o.Amount)\n"
                                 "FROM Orders o INNER JOIN Customers ON o.CustId = Customers.Id\nWHERE ");
    int next = 0;
    for (bool first = true; next < conditions; first = false)
        sql += (first ? QString() : QStringLiteral("  or ")) + Group(3, next, conditions);
    sql += QStringLiteral("GROUP BY o.Id, Customers.Name\nORDER BY 2 DESC, 1");
    return sql.split(QLatin1Char('\n'));
}

void BM_ParseConditions(benchmark::State &state)
{
    const QStringList sql = Statement(int(state.range(0)));
    const qint64 bytes = sql.join(QLatin1Char('\n')).toUtf8().size();
    vm20::TNSQLParser parser;
    for (auto _ : state) {
        parser.SetSQL(sql);
        parser.Parse();
        benchmark::DoNotOptimize(parser.ParserResult().WhereClause());
    }
    state.SetBytesProcessed(state.iterations() * bytes);
    state.counters["KB"] = double(bytes) / 1024;
}
BENCHMARK(BM_ParseConditions)->Arg(10000)->Arg(20000)->Unit(benchmark::kMillisecond);

} // namespace
