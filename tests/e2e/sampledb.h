#pragma once
// The curated shop model with the SQL formats of the sample database, and the
// sample database itself, on SQLite (built with the project) or PostgreSQL
// (the test run's server, started by tests/pgserver/pgserver.sh).
#include "model/dbstructure.h"

#include <QSqlDatabase>
#include <QString>
#include <QStringList>

#include <memory>

namespace e2e {

enum class TEngine { SQLite, PostgreSQL };

inline const TEngine Engines[] = {TEngine::SQLite, TEngine::PostgreSQL};
const char *EngineName(TEngine engine);

// The sample database's URL: empty for PostgreSQL when the test run's server
// is not running (VM20_PG_URL overrides the server's URL).
QString SampleDbUrl(TEngine engine);
// examples/sqlite.formats or examples/postgresql.formats.
QString FormatsFile(TEngine engine);

// The model with the engine's formats (as its formats file sets them).
std::unique_ptr<vm20::TNDBStructure> LoadShopModel(TEngine engine = TEngine::SQLite);

// Opens the sample database read-only for the life of the object; `Get()` is
// invalid when it could not be opened, and `Error()` says why.
class TSampleDb
{
public:
    explicit TSampleDb(TEngine engine = TEngine::SQLite);
    ~TSampleDb();
    TSampleDb(const TSampleDb &) = delete;
    TSampleDb &operator=(const TSampleDb &) = delete;
    QSqlDatabase &Get() { return FDatabase; }
    bool IsOpen() const { return FDatabase.isOpen(); }
    const QString &Error() const { return FError; }

private:
    QSqlDatabase FDatabase;
    QString FError;
};

// Executes `sql` and steps through at most `maxRows` rows: empty when the
// database took it, else the database's message.
QString ExecutionError(QSqlDatabase &database, const QString &sql, int maxRows = 20);

// All rows of `sql`, each as one line of its values in a form both engines
// agree on (numbers to four decimals, Booleans as numbers, dates and times as
// ISO text), sorted. A failing statement gives one line with its error.
QStringList ComparableRows(QSqlDatabase &database, const QString &sql);

} // namespace e2e

// Fails the test when the sample database of `engine` cannot be opened; a
// missing PostgreSQL server is a failure, never a skipped test.
#define E2E_OPEN_SAMPLE_DB(db, engine)                                                              \
    ::e2e::TSampleDb db(engine);                                                                      \
    ASSERT_TRUE(db.IsOpen()) << ::e2e::EngineName(engine) << " sample database: "                   \
                             << db.Error().toStdString()
