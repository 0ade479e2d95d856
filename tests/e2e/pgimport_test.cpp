// Importing a model from PostgreSQL: what the current schema's catalog holds,
// by the names the server knows them by, with links by constraint and table,
// and a clear refusal where the user may read no column.
#include "sampledb.h"

#include "model/dbstructure.h"
#include "model/errors.h"
#include "providers/dburl.h"
#include "providers/sqldbinfo.h"
#include "providers/sqlerrors.h"
#include "support/exception.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QSqlError>
#include <QSqlQuery>
#include <QUrl>

namespace e2e {
namespace {

using namespace vm20;

const char *const CatalogSchema[] = {
    "CREATE TABLE \"Customers\" (\"Id\" integer PRIMARY KEY, \"Name\" varchar(40), span interval, "
    "place point, tags text[], doc jsonb, uid uuid, amount money, flag boolean, at timestamptz, "
    "price numeric(8,3), code char(2))",
    "CREATE TABLE invoices (id integer PRIMARY KEY, customer_id integer, "
    "CONSTRAINT fk_owner FOREIGN KEY (customer_id) REFERENCES \"Customers\" (\"Id\"))",
    "CREATE TABLE \"Inventory\" (id integer PRIMARY KEY, invoice_id integer, "
    "CONSTRAINT fk_owner FOREIGN KEY (invoice_id) REFERENCES invoices (id))",
    "CREATE TABLE pg_things (id integer)",
    "CREATE TABLE \"select\" (x integer)",
    "CREATE VIEW v_names AS SELECT \"Name\" FROM \"Customers\"",
    "CREATE MATERIALIZED VIEW mv_count AS SELECT count(*) AS n FROM invoices",
    "CREATE TABLE measures (at date, v integer) PARTITION BY RANGE (at)",
    "CREATE TABLE measures_2024 PARTITION OF measures FOR VALUES FROM ('2024-01-01') TO ('2025-01-01')",
    "CREATE SCHEMA other",
    "CREATE TABLE other.hidden (x integer)",
};

class PostgreSQLImport : public ::testing::Test
{
protected:
    void SetUp() override
    {
        server = SampleDbUrl(TEngine::PostgreSQL);
        ASSERT_FALSE(server.isEmpty()) << "the PostgreSQL test server is not running";
        const QString pid = QString::number(QCoreApplication::applicationPid());
        name = QStringLiteral("vm20_catalog_") + pid;
        role = QStringLiteral("vm20_reader_") + pid;
        Admin(server, QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(name));
        Admin(server, QStringLiteral("DROP ROLE IF EXISTS %1").arg(role));
        ASSERT_TRUE(Admin(server, QStringLiteral("CREATE DATABASE %1").arg(name)));
        ASSERT_TRUE(Admin(server, QStringLiteral("CREATE ROLE %1 LOGIN").arg(role)));
        QUrl url(server);
        url.setPath(QLatin1Char('/') + name);
        catalogUrl = url.toString();
        for (const char *sql : CatalogSchema)
            ASSERT_TRUE(Admin(catalogUrl, QLatin1String(sql))) << sql;
    }

    void TearDown() override
    {
        if (name.isEmpty())
            return;
        Admin(server, QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(name));
        Admin(server, QStringLiteral("DROP ROLE IF EXISTS %1").arg(role));
    }

    static bool Admin(const QString &url, const QString &sql)
    {
        QSqlDatabase db = OpenDatabaseUrl(url, false);
        bool ok;
        {
            QSqlQuery query(db);
            ok = query.exec(sql);
            EXPECT_TRUE(ok) << sql.toStdString() << ": " << query.lastError().text().toStdString();
        }
        CloseDatabase(db);
        return ok;
    }

    QString server, name, role, catalogUrl;
};

TEST_F(PostgreSQLImport, DescribesTheCurrentSchemaByTheServersNames)
{
    QSqlDatabase db = OpenDatabaseUrl(catalogUrl, true);
    TNSqlDBInfo info(db);
    QStringList tables;
    QStringList links;
    info.GetTableNames(tables);
    info.GetLinkList(links);
    // Byte order of the names; no partition, no other schema's table.
    EXPECT_EQ(tables, (QStringList{"Customers", "Inventory", "invoices", "measures", "mv_count", "pg_things",
                                   "select", "v_names"}));
    // Two constraints share a name; each keeps its own table's columns.
    EXPECT_EQ(links, (QStringList{"Inventory-invoices:invoice_id=id", "invoices-Customers:customer_id=Id"}));

    TNDBStructure model;
    model.SetDatabaseInfo(&info);
    model.RetriveDataModelInfo();
    model.SetDatabaseInfo(nullptr);
    struct Row { int line; const char *table; bool quoted; const char *why; };
    const Row tableRows[] = {
        {__LINE__, "Customers", true, "the server folds unquoted names to lower case"},
        {__LINE__, "select", true, "a reserved word"},
        {__LINE__, "invoices", false, "a plain lower-case name"},
        {__LINE__, "mv_count", false, "a materialized view has its columns"},
    };
    for (const Row &row : tableRows) {
        const TDSTable *table = model.TableByName(0, QLatin1String(row.table));
        ASSERT_NE(table, nullptr) << "line " << row.line;
        EXPECT_EQ(table->Quoted(), row.quoted) << "line " << row.line << ": " << row.why;
    }
    struct FieldRow { int line; const char *field; TFieldType type; bool quoted; const char *why; };
    const FieldRow fieldRows[] = {
        {__LINE__, "Id", ftInteger, true, "mixed case"},
        {__LINE__, "span", ftString, false, "an interval is compared through its text"},
        {__LINE__, "tags", ftString, false, "an array is no integer, whatever it holds"},
        {__LINE__, "doc", ftMemo, false, "a JSON document"},
        {__LINE__, "uid", ftString, false, "a UUID"},
        {__LINE__, "amount", ftCurrency, false, "money"},
        {__LINE__, "flag", ftBoolean, false, "a Boolean"},
        {__LINE__, "at", ftTimeStamp, false, "a time stamp with time zone"},
        {__LINE__, "price", ftBCD, false, "an exact numeric"},
        {__LINE__, "code", ftFixedChar, false, "a fixed-length text"},
        {__LINE__, "n", ftLargeint, false, "a materialized view's count"},
    };
    for (const FieldRow &row : fieldRows) {
        const TDSField *field = nullptr;
        for (int i = 0; i < model.GetFieldCount() && !field; ++i)
            if (model.GetField(i)->FieldExpr() == QLatin1String(row.field))
                field = model.GetField(i);
        ASSERT_NE(field, nullptr) << "line " << row.line << ": " << row.field;
        EXPECT_EQ(field->FieldType(), row.type) << "line " << row.line << ": " << row.why;
        EXPECT_EQ(field->Quoted(), row.quoted) << "line " << row.line << ": " << row.why;
    }
    CloseDatabase(db);
}

TEST_F(PostgreSQLImport, AUserWhoMayReadNoColumnGetsAClearError)
{
    QUrl url(catalogUrl);
    url.setUserName(role);
    QSqlDatabase db = OpenDatabaseUrl(url.toString(), true);
    TNSqlDBInfo info(db);
    TNDBStructure model;
    model.SetDatabaseInfo(&info);
    try {
        model.RetriveDataModelInfo();
        ADD_FAILURE() << "a model without columns was made";
    } catch (const ENDBInfoError &e) {
        EXPECT_EQ(e.ErrorCode(), dbieNoColumns);
        EXPECT_TRUE(e.Message().contains(QStringLiteral("privileges"))) << e.Message().toStdString();
    }
    model.SetDatabaseInfo(nullptr);
    CloseDatabase(db);
}

TEST(PostgreSQLSession, IsReadOnlyAndReadsBackslashesAsPlainCharacters)
{
    E2E_OPEN_SAMPLE_DB(db, TEngine::PostgreSQL);
    QSqlQuery query(db.Get());
    ASSERT_TRUE(query.exec(QStringLiteral("SELECT 'a\\b', current_setting('default_transaction_read_only')"))
                && query.next());
    EXPECT_EQ(query.value(0).toString(), QStringLiteral("a\\b"));
    EXPECT_EQ(query.value(1).toString(), QStringLiteral("on"));
    EXPECT_FALSE(query.exec(QStringLiteral("CREATE TABLE intruder (x integer)")));
}

} // namespace
} // namespace e2e
