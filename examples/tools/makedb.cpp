// Builds the sample database from its SQL script: vm20_makedb SCRIPT OUTPUT,
// where OUTPUT is an SQLite file or a postgresql:// URL of an empty database.
//
// The script runs statement by statement in one transaction through Qt's SQL
// drivers, so the build needs no database program of its own. An SQLite file
// is written under a temporary name and renamed when complete; a failing
// statement leaves no output behind and is reported with its line.
//
// The script is written for SQLite; for PostgreSQL each statement is turned
// into its dialect (see PostgreSQLStatement), so both engines hold the same
// rows from one source.
#include "providers/dburl.h"
#include "providers/sqlscript.h"

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

#include <cstdio>

namespace {

void Fail(const QString &message)
{
    std::fprintf(stderr, "vm20_makedb: %s\n", qPrintable(message));
}

bool Exec(QSqlDatabase &db, const QString &sql, const QString &where)
{
    QSqlQuery query(db);
    if (query.exec(sql))
        return true;
    Fail(where + QStringLiteral(": ") + query.lastError().text());
    return false;
}

// SQLite's date arithmetic, date(start, '+N days') and datetime(start, '+N
// days', '+M minutes'), for the time the script runs: its modifiers are
// PostgreSQL intervals as they stand.
const char *const PostgreSQLHelpers[] = {
    "CREATE FUNCTION date(start timestamp, step text) RETURNS date "
    "LANGUAGE sql IMMUTABLE AS 'SELECT CAST(start + CAST(step AS interval) AS date)'",
    "CREATE FUNCTION datetime(start timestamp, step1 text, step2 text) RETURNS timestamp "
    "LANGUAGE sql IMMUTABLE AS 'SELECT start + CAST(step1 AS interval) + CAST(step2 AS interval)'",
};
const char *const PostgreSQLCleanup[] = {
    "DROP FUNCTION date(timestamp, text)",
    "DROP FUNCTION datetime(timestamp, text, text)",
};

// A statement of the script in PostgreSQL's dialect; empty when it has none.
// Types SQLite takes by affinity become PostgreSQL's: DATETIME a timestamp,
// BLOB bytea, MONEY and REAL exact numerics (so that sums round alike on
// both), x'..' a decoded hex text.
QString PostgreSQLStatement(QString sql)
{
    if (sql.startsWith(QLatin1String("PRAGMA"), Qt::CaseInsensitive))
        return {};
    if (sql.startsWith(QLatin1String("CREATE TABLE"), Qt::CaseInsensitive)) {
        static const std::pair<const char *, const char *> types[] = {
            {"DATETIME", "TIMESTAMP"}, {"BLOB", "BYTEA"}, {"MONEY", "NUMERIC(12,2)"}, {"REAL", "NUMERIC(6,3)"}};
        for (const auto &[from, to] : types)
            sql.replace(QRegularExpression(QStringLiteral("\\b%1\\b").arg(QLatin1String(from))),
                        QLatin1String(to));
    }
    static const QRegularExpression hex(QStringLiteral("\\bx'([0-9A-Fa-f]*)'"));
    sql.replace(hex, QStringLiteral("decode('\\1', 'hex')"));
    return sql;
}

bool Run(QSqlDatabase &db, const QString &scriptPath, bool postgres)
{
    QFile file(scriptPath);
    if (!file.open(QIODevice::ReadOnly)) {
        Fail(scriptPath + QStringLiteral(": ") + file.errorString());
        return false;
    }
    const QString script = QString::fromUtf8(file.readAll());
    // With foreign keys on, a statement that breaks one fails at once and is
    // reported with its line.
    bool ok = (postgres || Exec(db, QStringLiteral("PRAGMA foreign_keys = ON"), scriptPath)) && db.transaction();
    if (postgres)
        for (const char *helper : PostgreSQLHelpers)
            ok = ok && Exec(db, QLatin1String(helper), scriptPath);
    for (const vm20::TSQLStatement &statement : vm20::SplitSQLScript(script)) {
        if (!ok)
            break;
        const QString sql = postgres ? PostgreSQLStatement(statement.Text) : statement.Text;
        if (!sql.isEmpty())
            ok = Exec(db, sql, QStringLiteral("%1:%2").arg(scriptPath).arg(statement.Line));
    }
    if (postgres)
        for (const char *cleanup : PostgreSQLCleanup)
            ok = ok && Exec(db, QLatin1String(cleanup), scriptPath);
    ok = ok && db.commit();
    if (!ok)
        db.rollback();
    return ok;
}

bool BuildPostgreSQL(const QString &scriptPath, const QString &url)
{
    try {
        QSqlDatabase db = vm20::OpenDatabaseUrl(url, false);
        const bool ok = Run(db, scriptPath, true);
        vm20::CloseDatabase(db);
        return ok;
    } catch (const std::exception &e) {
        Fail(QString::fromUtf8(e.what()));
        return false;
    }
}

bool BuildSQLite(const QString &scriptPath, const QString &output)
{
    const QString partial = output + QStringLiteral(".part");
    QFile::remove(partial);
    bool ok;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("makedb"));
        db.setDatabaseName(partial);
        ok = db.open();
        if (!ok)
            Fail(partial + QStringLiteral(": ") + db.lastError().text());
        ok = ok && Run(db, scriptPath, false);
        db.close();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("makedb"));
    if (!ok) {
        QFile::remove(partial);
        return false;
    }
    QFile::remove(output);
    if (!QFile::rename(partial, output)) {
        Fail(QStringLiteral("cannot rename %1 to %2").arg(partial, output));
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 3) {
        std::fprintf(stderr, "usage: vm20_makedb SCRIPT OUTPUT\n");
        return 2;
    }
    const QString &output = args[2];
    const bool postgres = output.startsWith(QLatin1String("postgresql:"))
                          || output.startsWith(QLatin1String("postgres:"));
    const bool ok = postgres ? BuildPostgreSQL(args[1], output) : BuildSQLite(args[1], output);
    return ok ? 0 : 1;
}
