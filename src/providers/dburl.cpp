#include "providers/dburl.h"

#include "model/errors.h"
#include "providers/sqlerrors.h"

#include <QAtomicInteger>
#include <QFileInfo>
#include <QSqlError>
#include <QUrl>
#include <QUrlQuery>

namespace vm20 {

namespace {

constexpr int DefaultConnectTimeout = 10;   // seconds

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

// The driver's connection options from the URL's parameters: only those
// known here are passed on, anything else is refused rather than ignored.
QString PostgreSQLOptions(const QUrl &url, bool readOnly)
{
    static const QStringList sslModes{QStringLiteral("disable"), QStringLiteral("allow"),
                                      QStringLiteral("prefer"), QStringLiteral("require"),
                                      QStringLiteral("verify-ca"), QStringLiteral("verify-full")};
    QString timeout = QString::number(DefaultConnectTimeout);
    QString sslMode;
    for (const auto &[key, value] : QUrlQuery(url).queryItems(QUrl::FullyDecoded)) {
        if (key == QLatin1String("connect_timeout")) {
            bool ok = false;
            const int seconds = value.toInt(&ok);
            if (!ok || seconds < 0)
                throw ENDBInfoError(dbieBadUrl, SBadUrlParameter,
                                    {key, QStringLiteral("expected a number of seconds")});
            timeout = QString::number(seconds);
        } else if (key == QLatin1String("sslmode")) {
            if (!sslModes.contains(value))
                throw ENDBInfoError(dbieBadUrl, SBadUrlParameter,
                                    {key, QStringLiteral("expected one of ") + sslModes.join(u", ")});
            sslMode = value;
        } else {
            throw ENDBInfoError(dbieBadUrl, SBadUrlParameter,
                                {key, QStringLiteral("known are connect_timeout and sslmode")});
        }
    }
    QStringList options{QStringLiteral("connect_timeout=") + timeout};
    if (!sslMode.isEmpty())
        options << QStringLiteral("sslmode=") + sslMode;
    // Backslashes in literals are plain characters, as this library writes
    // them; a read-only session cannot change the database whatever it runs.
    QString settings = QStringLiteral("-c standard_conforming_strings=on");
    if (readOnly)
        settings += QStringLiteral(" -c default_transaction_read_only=on");
    options << QStringLiteral("options='%1'").arg(settings);
    return options.join(QLatin1Char(';'));
}

QSqlDatabase AddPostgreSQL(const QString &url, bool readOnly)
{
    const QUrl parsed(url, QUrl::StrictMode);
    const QString database = parsed.path().mid(1);
    if (!parsed.isValid() || parsed.host().isEmpty() || database.isEmpty() || database.contains(u'/')
        || parsed.hasFragment())
        throw ENDBInfoError(dbieBadUrl, SUnsupportedUrl, {url});
    const QString options = PostgreSQLOptions(parsed, readOnly);
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), NewConnectionName());
    db.setHostName(parsed.host());
    if (parsed.port() > 0)
        db.setPort(parsed.port());
    db.setDatabaseName(database);
    db.setUserName(parsed.userName());
    db.setPassword(parsed.password());
    db.setConnectOptions(options);
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
        db = AddPostgreSQL(url, readOnly);
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
