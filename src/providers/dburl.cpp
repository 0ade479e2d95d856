#include "providers/dburl.h"

#include "model/errors.h"
#include "providers/sqlerrors.h"

#include <QAtomicInteger>
#include <QFileInfo>
#include <QSqlError>
#include <QUrl>

namespace vm20 {

namespace {

QString NewConnectionName()
{
    static QAtomicInteger<int> counter;
    return QStringLiteral("vm20-url-%1").arg(++counter);
}

QSqlDatabase AddSQLite(const QString &url, const QString &rest, bool readOnly)
{
    QString path = rest.startsWith(QLatin1String("//")) ? rest.mid(2) : rest;
    if (path.isEmpty())
        throw ENDBInfoError(dbieBadUrl, SUnsupportedUrl, {url});
    const bool memory = path == QLatin1String(":memory:");
    if (!memory && !QFileInfo(path).isFile())
        throw ENDBInfoError(dbieCannotOpen, SNoDatabaseFile, {path});
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), NewConnectionName());
    db.setDatabaseName(path);
    if (readOnly && !memory)
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
    return db;
}

QSqlDatabase AddPostgreSQL(const QString &url)
{
    const QUrl parsed(url, QUrl::StrictMode);
    const QString database = parsed.path().mid(1);
    if (!parsed.isValid() || parsed.host().isEmpty() || database.isEmpty())
        throw ENDBInfoError(dbieBadUrl, SUnsupportedUrl, {url});
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), NewConnectionName());
    db.setHostName(parsed.host());
    if (parsed.port() > 0)
        db.setPort(parsed.port());
    db.setDatabaseName(database);
    db.setUserName(parsed.userName());
    db.setPassword(parsed.password());
    return db;
}

} // namespace

QSqlDatabase OpenDatabaseUrl(const QString &url, bool readOnly)
{
    const qsizetype colon = url.indexOf(QLatin1Char(':'));
    const QString scheme = colon < 0 ? QString() : url.left(colon).toLower();
    QSqlDatabase db;
    if (scheme == QLatin1String("sqlite"))
        db = AddSQLite(url, url.mid(colon + 1), readOnly);
    else if (scheme == QLatin1String("postgresql") || scheme == QLatin1String("postgres"))
        db = AddPostgreSQL(url);
    else
        throw ENDBInfoError(dbieBadUrl, SUnsupportedUrl, {url});
    if (!db.open()) {
        const QString reason = db.lastError().text();
        const QString name = db.databaseName();
        CloseDatabase(db);
        throw ENDBInfoError(dbieCannotOpen, SCannotOpen, {name, reason});
    }
    return db;
}

void CloseDatabase(QSqlDatabase &db)
{
    const QString name = db.connectionName();
    db.close();
    db = QSqlDatabase();
    if (!name.isEmpty())
        QSqlDatabase::removeDatabase(name);
}

} // namespace vm20
