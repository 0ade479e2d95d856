// The sample database on both engines: one script makes the same rows on
// SQLite and PostgreSQL, every sample query returns them alike, and an import
// from PostgreSQL describes what its catalog holds.
#include "clirunner.h"
#include "sampledb.h"


#include <gtest/gtest.h>

#include <QDir>

namespace e2e {
namespace {

// The data lines `vm20 run` prints for a sample query, sorted; the header
// differs, as PostgreSQL folds unquoted aliases to lower case.
QStringList RunLines(TEngine engine, const QString &name)
{
    const TRun run = RunVm20({QStringLiteral("run"), QStringLiteral("--model"), Examples(QStringLiteral("shop.model")),
                              QStringLiteral("--formats"), FormatsFile(engine), QStringLiteral("--query"),
                              Examples(QStringLiteral("queries/")) + name, QStringLiteral("--db"),
                              SampleDbUrl(engine), QStringLiteral("--format"), QStringLiteral("csv")});
    EXPECT_EQ(run.ExitCode, 0) << EngineName(engine) << ": " << run.Err.toStdString();
    QStringList lines = run.Out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    if (!lines.isEmpty())
        lines.removeFirst();
    lines.sort();
    return lines;
}

TEST(Engines, EverySampleQueryReturnsTheSameRowsOnBothEngines)
{
    ASSERT_FALSE(SampleDbUrl(TEngine::PostgreSQL).isEmpty()) << "the PostgreSQL test server is not running";
    const QStringList names =
        QDir(Examples(QStringLiteral("queries"))).entryList({QStringLiteral("*.vmq")}, QDir::Files, QDir::Name);
    ASSERT_GE(names.size(), 10);
    for (const QString &name : names) {
        SCOPED_TRACE(name.toStdString());
        const QStringList expected = RunLines(TEngine::SQLite, name);
        EXPECT_FALSE(expected.isEmpty());
        EXPECT_EQ(RunLines(TEngine::PostgreSQL, name), expected);
    }
}

TEST(Engines, EveryTableHoldsTheSameRowsOnBothEngines)
{
    E2E_OPEN_SAMPLE_DB(sqlite, TEngine::SQLite);
    E2E_OPEN_SAMPLE_DB(postgres, TEngine::PostgreSQL);
    // Text columns only where the engines store the value in another form.
    const char *const tables[] = {"regions", "categories", "suppliers", "shippers", "products",
                                  "customers", "employees", "orders", "\"Order Lines\"", "payments",
                                  "returns", "order_totals"};
    for (const char *table : tables) {
        SCOPED_TRACE(table);
        const QString sql = QStringLiteral("SELECT * FROM %1").arg(QLatin1String(table));
        const QStringList expected = ComparableRows(sqlite.Get(), sql);
        EXPECT_GT(expected.size(), 3);
        EXPECT_EQ(ComparableRows(postgres.Get(), sql), expected);
    }
}

} // namespace
} // namespace e2e
