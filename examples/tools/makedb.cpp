// Builds an SQLite database file from an SQL script: vm20_makedb SCRIPT OUTPUT.
//
// The script runs statement by statement in one transaction through Qt's
// SQLite driver, so the build needs no database program of its own. The file
// is written under a temporary name and renamed when complete; a failing
// statement leaves no output behind and is reported with its line.
#include "providers/sqlscript.h"

#include <QCoreApplication>
#include <QFile>
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

bool Build(const QString &scriptPath, const QString &dbPath)
{
    QFile file(scriptPath);
    if (!file.open(QIODevice::ReadOnly)) {
        Fail(scriptPath + QStringLiteral(": ") + file.errorString());
        return false;
    }
    const QString script = QString::fromUtf8(file.readAll());

    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("makedb"));
    db.setDatabaseName(dbPath);
    if (!db.open()) {
        Fail(dbPath + QStringLiteral(": ") + db.lastError().text());
        return false;
    }
    // With foreign keys on, a statement that breaks one fails at once and is
    // reported with its line.
    bool ok = Exec(db, QStringLiteral("PRAGMA foreign_keys = ON"), dbPath) && db.transaction();
    for (const vm20::TSQLStatement &statement : vm20::SplitSQLScript(script)) {
        if (!ok)
            break;
        ok = Exec(db, statement.Text, QStringLiteral("%1:%2").arg(scriptPath).arg(statement.Line));
    }
    ok = ok && db.commit();
    if (!ok)
        db.rollback();
    db.close();
    return ok;
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
    const QString output = args[2];
    const QString partial = output + QStringLiteral(".part");
    QFile::remove(partial);
    const bool ok = Build(args[1], partial);
    QSqlDatabase::removeDatabase(QStringLiteral("makedb"));
    if (!ok) {
        QFile::remove(partial);
        return 1;
    }
    QFile::remove(output);
    if (!QFile::rename(partial, output)) {
        Fail(QStringLiteral("cannot rename %1 to %2").arg(partial, output));
        return 1;
    }
    return 0;
}
