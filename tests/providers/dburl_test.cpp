#include "providers/dburl.h"

#include "common/printers.h"
#include "model/errors.h"
#include "providers/sqlerrors.h"

#include <QFileInfo>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace vm20 {
namespace {

const QString SampleDb = QStringLiteral(VM20_BINARY_DIR "/examples/shop.sqlite");

TEST(OpenDatabaseUrl, RefusesWhatItCannotOpenWithAClearMessage)
{
    QTemporaryDir dir;
    const QString missing = dir.path() + QStringLiteral("/missing.sqlite");
    struct Row { int line; QString url; int code; QString message; const char *reason; };
    const Row rows[] = {
        {__LINE__, QStringLiteral("mysql://host/db"), dbieBadUrl,
         QStringLiteral("Unsupported database URL \"mysql://host/db\": expected sqlite:PATH or "
                        "postgresql://USER@HOST:PORT/DATABASE"),
         "unknown scheme"},
        {__LINE__, QStringLiteral("shop.sqlite"), dbieBadUrl, {}, "no scheme at all"},
        {__LINE__, QStringLiteral("sqlite:"), dbieBadUrl, {}, "no path"},
        {__LINE__, QStringLiteral("postgresql:///db"), dbieBadUrl, {}, "no host"},
        {__LINE__, QStringLiteral("sqlite:") + missing, dbieCannotOpen,
         QStringLiteral("Database file \"%1\" does not exist").arg(missing), "missing file"},
        {__LINE__, QStringLiteral("sqlite:") + dir.path(), dbieCannotOpen, {}, "a directory is no file"},
        {__LINE__, QStringLiteral("postgresql://u@127.0.0.1:1/db?application_name=x"), dbieBadUrl,
         QStringLiteral("Database URL parameter \"application_name\" is not supported: known are "
                        "connect_timeout and sslmode"),
         "a parameter the driver is not given is refused, not ignored"},
        {__LINE__, QStringLiteral("postgresql://u@127.0.0.1:1/db?connect_timeout=10 options=x"), dbieBadUrl, {},
         "a timeout is a number, so no other option rides on it"},
        {__LINE__, QStringLiteral("postgresql://u@127.0.0.1:1/db?connect_timeout=-1"), dbieBadUrl, {},
         "no negative timeout"},
        {__LINE__, QStringLiteral("postgresql://u@127.0.0.1:1/db?sslmode=require%20options%3Dx"), dbieBadUrl, {},
         "an SSL mode is one of the known words"},
        {__LINE__, QStringLiteral("postgresql://u@127.0.0.1:1/db/other"), dbieBadUrl, {}, "one database"},
        {__LINE__, QStringLiteral("postgresql://u@127.0.0.1:1/db?connect_timeout=1&sslmode=disable"),
         dbieCannotOpen, {}, "known parameters reach the driver, which then finds no server"},
    };
    for (const Row &row : rows) {
        try {
            OpenDatabaseUrl(row.url);
            ADD_FAILURE() << "line " << row.line << ": no error raised";
        } catch (const ENDBInfoError &e) {
            EXPECT_EQ(e.ErrorCode(), row.code) << "line " << row.line << ": " << row.reason;
            if (!row.message.isEmpty()) {
                EXPECT_EQ(e.Message(), row.message) << "line " << row.line << ": " << row.reason;
            }
        }
    }
    EXPECT_FALSE(QFileInfo::exists(missing)) << "opening must not create the file";
}

TEST(OpenDatabaseUrl, OpensEachSqliteUrlUnderAConnectionOfItsOwn)
{
    QSqlDatabase a = OpenDatabaseUrl(QStringLiteral("sqlite:") + SampleDb, true);
    QSqlDatabase b = OpenDatabaseUrl(QStringLiteral("SQLite://") + SampleDb);
    QSqlDatabase c = OpenDatabaseUrl(QStringLiteral("sqlite::memory:"));
    EXPECT_TRUE(a.isOpen() && b.isOpen() && c.isOpen());
    EXPECT_NE(a.connectionName(), b.connectionName());
    CloseDatabase(c);

    const QString name = a.connectionName();
    CloseDatabase(a);
    EXPECT_FALSE(a.isValid());
    EXPECT_FALSE(QSqlDatabase::contains(name));
    CloseDatabase(b);
}

TEST(OpenDatabaseUrl, ReadOnlyRefusesWrites)
{
    QTemporaryDir dir;
    const QString path = dir.path() + QStringLiteral("/copy.sqlite");
    ASSERT_TRUE(QFile::copy(SampleDb, path));

    QSqlDatabase db = OpenDatabaseUrl(QStringLiteral("sqlite:") + path, true);
    {
        QSqlQuery query(db);
        EXPECT_TRUE(query.exec(QStringLiteral("SELECT COUNT(*) FROM regions")));
        EXPECT_FALSE(query.exec(QStringLiteral("DELETE FROM regions")));
    }
    CloseDatabase(db);

    db = OpenDatabaseUrl(QStringLiteral("sqlite:") + path);
    {
        QSqlQuery query(db);
        EXPECT_TRUE(query.exec(QStringLiteral("UPDATE regions SET name = name")));
    }
    CloseDatabase(db);
}

} // namespace
} // namespace vm20
