// Hostile input through the command line, on both engines: payloads that try
// to widen a condition, read the catalog or run a second statement are fed as
// a value of each type or a LIKE pattern, as a list or Between item, as a column caption, as an
// option and inside the database URL, to `vm20 sql` (whose statement is then
// executed as it stands on a writable session, as a careless host program
// would) and to `vm20 run`. A canary table must survive every one, and a
// command either refuses (exit 1, or 2 for a malformed option) or returns
// exactly the rows the user asked for.
#include "clirunner.h"
#include "sampledb.h"

#include "model/dbstructure.h"
#include "providers/dburl.h"
#include "providers/sqldbinfo.h"
#include "query/query.h"
#include "support/exception.h"
#include "support/nstrings.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QUrl>

namespace e2e {
namespace {

using namespace vm20;

const char *const Payloads[] = {
    "1 OR 1=1",
    "0) UNION SELECT sql FROM sqlite_master WHERE (1=1",
    "0) UNION SELECT tablename FROM pg_tables WHERE (1=1",
    "1; DROP TABLE canary",
    "0); DROP TABLE canary; SELECT (1",
    "'; DROP TABLE canary; --",
    "\\'; DROP TABLE canary; --",
    "O'Brien \\\" \\\\ '' \"",
};

// One column per value type; the types SQLite has no name for are set on
// the imported model.
const char *const Schema[] = {
    "CREATE TABLE probe (id INTEGER, small_v SMALLINT, large_v BIGINT, word_v INTEGER, "
    "auto_v INTEGER, bcd_v NUMERIC(8,3), bool_v BOOLEAN, float_v DOUBLE PRECISION, date_v DATE, "
    "text_v VARCHAR(60))",
    "INSERT INTO probe VALUES (1, 1, 1, 1, 1, 1.5, TRUE, 1.5, '2024-01-01', 'one')",
    "INSERT INTO probe VALUES (2, 2, 2, 2, 2, 2.5, FALSE, 2.5, '2024-01-02', 'two')",
    "INSERT INTO probe VALUES (3, 3, 3, 3, 3, 3.5, TRUE, 3.5, '2024-01-03', 'three')",
    "CREATE TABLE canary (id INTEGER)",
    "INSERT INTO canary VALUES (1)",
};
constexpr int ProbeRows = 3;

enum TTarget { tgValue, tgPattern, tgListItem, tgBetweenItem, tgCaption, tgLimit, tgTop, tgOptions, tgUrl };
// What must come of a payload: a refusal with exit 1 (a number field), or
// either a refusal or exactly the rows asked for.
enum TExpect { exRefused, exRowsOrRefused };

struct TCase
{
    int Line;
    TTarget Target;
    const char *Field;        // probe column the condition is on
    TFieldType Type;          // set on that column's field
    TExpect Expect;
    int Rows;                 // rows asked for when not refused
    const char *Why;
};

const TCase Cases[] = {
    {__LINE__, tgValue, "id", ftInteger, exRefused, 0, "integer values are numbers"},
    {__LINE__, tgValue, "large_v", ftLargeint, exRefused, 0, "large integers too"},
    {__LINE__, tgValue, "bcd_v", ftBCD, exRefused, 0, "BCD values are decimal numbers"},
    {__LINE__, tgValue, "bool_v", ftBoolean, exRefused, 0, "Booleans are True or False"},
    {__LINE__, tgValue, "float_v", ftFloat, exRefused, 0, "floats are numbers"},
    {__LINE__, tgValue, "date_v", ftDate, exRefused, 0, "dates are dates"},
    {__LINE__, tgValue, "text_v", ftString, exRowsOrRefused, 0, "a string stays one literal"},
    {__LINE__, tgPattern, "text_v", ftString, exRowsOrRefused, 0, "a LIKE pattern stays one literal"},
    {__LINE__, tgListItem, "id", ftInteger, exRefused, 0, "each list item is checked"},
    {__LINE__, tgListItem, "text_v", ftString, exRowsOrRefused, 0, "each string item stays a literal"},
    {__LINE__, tgBetweenItem, "id", ftInteger, exRefused, 0, "each Between item is checked"},
    {__LINE__, tgBetweenItem, "date_v", ftDate, exRefused, 0, "a Between date is a date"},
    {__LINE__, tgCaption, "", ftUnknown, exRowsOrRefused, ProbeRows, "a caption only names a column"},
    {__LINE__, tgLimit, "", ftUnknown, exRowsOrRefused, ProbeRows, "a LIMIT is a row count"},
    {__LINE__, tgTop, "", ftUnknown, exRowsOrRefused, ProbeRows, "a TOP is a row count"},
    {__LINE__, tgOptions, "", ftUnknown, exRowsOrRefused, ProbeRows, "options are a number"},
    {__LINE__, tgUrl, "", ftUnknown, exRowsOrRefused, ProbeRows, "a URL names one database"},
};

// The probe database of one engine, made for this test and removed after.
class TProbeDb
{
public:
    explicit TProbeDb(TEngine engine) : FEngine(engine)
    {
        if (engine == TEngine::SQLite) {
            FUrl = QStringLiteral("sqlite:") + FDir.filePath(QStringLiteral("probe.sqlite"));
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("probe-make"));
            db.setDatabaseName(FDir.filePath(QStringLiteral("probe.sqlite")));
            if (!db.open())
                FError = db.lastError().text();
            else
                Fill(db);
            db.close();
            db = QSqlDatabase();
            QSqlDatabase::removeDatabase(QStringLiteral("probe-make"));
        } else {
            const QString server = SampleDbUrl(engine);
            if (server.isEmpty()) {
                FError = QStringLiteral("the PostgreSQL test server is not running");
                return;
            }
            FName = QStringLiteral("vm20_probe_%1").arg(QCoreApplication::applicationPid());
            QUrl url(server);
            url.setPath(QLatin1Char('/') + FName);
            FUrl = url.toString();
            FServer = server;
            Admin(QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(FName));
            Admin(QStringLiteral("CREATE DATABASE %1").arg(FName));
            if (FError.isEmpty()) {
                QSqlDatabase db = Writable();
                if (db.isValid())
                    Fill(db);
                CloseDatabase(db);
            }
        }
    }

    ~TProbeDb()
    {
        if (!FName.isEmpty())
            Admin(QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(FName));
    }

    const QString &Url() const { return FUrl; }
    const QString &Error() const { return FError; }

    // A session that may change the database, as a host program may hold.
    QSqlDatabase Writable()
    {
        try {
            return OpenDatabaseUrl(FUrl, false);
        } catch (const Exception &e) {
            FError = e.Message();
            return {};
        }
    }

private:
    void Fill(QSqlDatabase &db)
    {
        QSqlQuery query(db);
        for (const char *sql : Schema)
            if (!query.exec(QLatin1String(sql)))
                FError = query.lastError().text();
    }

    void Admin(const QString &sql)
    {
        try {
            QSqlDatabase db = OpenDatabaseUrl(FServer, false);
            QSqlQuery query(db);
            if (!query.exec(sql))
                FError = query.lastError().text();
            query = QSqlQuery();
            CloseDatabase(db);
        } catch (const Exception &e) {
            FError = e.Message();
        }
    }

    TEngine FEngine;
    QTemporaryDir FDir;
    QString FUrl;
    QString FServer;
    QString FName;
    QString FError;
};

class HostileInput : public ::testing::Test
{
protected:
    // The model is the probe table as imported from SQLite, with the types
    // SQLite cannot name set by hand; both engines share it.
    void WriteModel(TProbeDb &sqlite)
    {
        QSqlDatabase db = OpenDatabaseUrl(sqlite.Url(), true);
        {
            TNSqlDBInfo info(db);
            model.SetDatabaseInfo(&info);
            model.RetriveDataModelInfo();
            model.SetDatabaseInfo(nullptr);
        }
        CloseDatabase(db);
        for (const TCase &c : Cases)
            if (*c.Field)
                Field(c.Field)->SetFieldType(c.Type);
        model.SaveToFile(dir.filePath(QStringLiteral("probe.model")));
    }

    TDSField *Field(const char *column)
    {
        TDSField *field = model.FieldByName(2, QStringLiteral("probe.") + QLatin1String(column));
        EXPECT_NE(field, nullptr) << column;
        return field;
    }

    // Writes the query file of a case and gives the command-line options it
    // needs besides.
    QStringList WriteQuery(const TCase &c, const QString &payload)
    {
        TNQuery query;
        query.SetDBStruct(&model);
        query.SetActive(true);
        query.SetSaveSQLOptions(true);
        query.RFields().Add(c.Target == tgCaption ? payload : QStringLiteral("Id"), {Field("id")}, QString());
        QStringList options;
        if (c.Target <= tgBetweenItem) {
            TSimpleCond *cond = query.AddCondition(query.Filter(), Field(c.Field));
            const char *const ops[] = {"Equal", "Contains", "InList", "Between"};
            cond->SetOperator(model.OperatorByName(QLatin1String(ops[c.Target])));
            const QString valid = c.Type == ftDate ? QStringLiteral("45000") : QStringLiteral("1");
            if (c.Target <= tgPattern) {
                cond->SetValue(1, payload);
            } else if (c.Target == tgListItem) {
                cond->SetValue(1, ListToCommaText({valid, payload}));
            } else {
                cond->SetValue(1, valid);
                cond->SetValue(2, payload);
            }
        } else if (c.Target == tgLimit) {
            options << QStringLiteral("--limit") << payload;
        } else if (c.Target == tgTop) {
            options << QStringLiteral("--top") << payload;
        } else if (c.Target == tgOptions) {
            options << QStringLiteral("--options") << payload;
        }
        const QString path = dir.filePath(QStringLiteral("probe.vmq"));
        query.SaveToFile(path);
        return options;
    }

    // Whether the canary and the probe rows are all still there.
    static void ExpectIntact(TProbeDb &db, const std::string &where)
    {
        QSqlDatabase session = db.Writable();
        ASSERT_TRUE(session.isValid()) << db.Error().toStdString();
        {
            QSqlQuery query(session);
            EXPECT_TRUE(query.exec(QStringLiteral("SELECT (SELECT COUNT(*) FROM canary), "
                                                  "(SELECT COUNT(*) FROM probe)"))
                        && query.next())
                << "canary gone after " << where << ": " << query.lastError().text().toStdString();
            EXPECT_EQ(query.value(0).toInt(), 1) << where;
            EXPECT_EQ(query.value(1).toInt(), ProbeRows) << where;
        }
        // A lost canary is reported once; the next cases get a new one.
        QSqlQuery restore(session);
        if (!restore.exec(QStringLiteral("SELECT COUNT(*) FROM canary"))) {
            restore.exec(QStringLiteral("CREATE TABLE canary (id INTEGER)"));
            restore.exec(QStringLiteral("INSERT INTO canary VALUES (1)"));
        }
        restore = QSqlQuery();
        CloseDatabase(session);
    }

    static void ExpectOutcome(const TCase &c, const TRun &run, int rows, const std::string &where)
    {
        EXPECT_FALSE(run.Crashed) << where;
        if (c.Expect == exRefused) {
            EXPECT_EQ(run.ExitCode, 1) << where << "\n" << run.Out.toStdString() << run.Err.toStdString();
            return;
        }
        if (run.ExitCode != 0) {
            EXPECT_TRUE(run.ExitCode == 1 || run.ExitCode == 2) << where << ": " << run.Err.toStdString();
            return;
        }
        EXPECT_EQ(rows, c.Rows) << where << "\n" << run.Out.toStdString();
    }

    QTemporaryDir dir;
    TNDBStructure model;
};

TEST_F(HostileInput, NoPayloadChangesWhatAStatementDoes)
{
    TProbeDb sqlite(TEngine::SQLite);
    ASSERT_TRUE(sqlite.Error().isEmpty()) << sqlite.Error().toStdString();
    TProbeDb postgres(TEngine::PostgreSQL);
    ASSERT_TRUE(postgres.Error().isEmpty()) << "PostgreSQL: " << postgres.Error().toStdString();
    WriteModel(sqlite);
    const QString modelPath = dir.filePath(QStringLiteral("probe.model"));
    const QString queryPath = dir.filePath(QStringLiteral("probe.vmq"));

    for (const TCase &c : Cases) {
        for (const char *raw : Payloads) {
            const QString payload = QString::fromUtf8(raw);
            const QStringList extra = WriteQuery(c, payload);
            for (TEngine engine : Engines) {
                TProbeDb &db = engine == TEngine::SQLite ? sqlite : postgres;
                const std::string where = std::string("line ") + std::to_string(c.Line) + " (" + c.Why + "), "
                                          + EngineName(engine) + ", payload " + raw;
                const QStringList common = QStringList{QStringLiteral("--model"), modelPath,
                                                       QStringLiteral("--formats"), FormatsFile(engine),
                                                       QStringLiteral("--query"), queryPath}
                                           + extra;
                if (c.Target != tgUrl) {
                    const TRun sql = RunVm20(QStringList{QStringLiteral("sql")} + common);
                    int rows = -1;
                    if (sql.ExitCode == 0) {
                        QSqlDatabase session = db.Writable();
                        QSqlQuery query(session);
                        if (query.exec(sql.Out))
                            for (rows = 0; query.next();)
                                ++rows;
                        else
                            ADD_FAILURE() << where << ", sql: the statement fails: "
                                          << query.lastError().text().toStdString() << "\n"
                                          << sql.Out.toStdString();
                        query = QSqlQuery();
                        CloseDatabase(session);
                    }
                    ExpectOutcome(c, sql, rows, where + ", sql");
                    ExpectIntact(db, where + ", sql");
                }
                QString url = db.Url();
                if (c.Target == tgUrl)
                    url += engine == TEngine::SQLite ? payload : QStringLiteral("?sslmode=") + payload;
                const TRun run = RunVm20(QStringList{QStringLiteral("run")} + common
                                         + QStringList{QStringLiteral("--db"), url, QStringLiteral("--format"),
                                                       QStringLiteral("csv")});
                const int rows = int(run.Out.split(QLatin1Char('\n'), Qt::SkipEmptyParts).size()) - 1;
                ExpectOutcome(c, run, rows, where + ", run");
                ExpectIntact(db, where + ", run");
            }
        }
    }
}

} // namespace
} // namespace e2e
