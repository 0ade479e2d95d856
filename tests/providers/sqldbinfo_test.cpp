#include "providers/sqldbinfo.h"

#include "common/printers.h"
#include "model/errors.h"
#include "providers/sqlscript.h"

#include <QSqlError>
#include <QSqlQuery>

#include <gtest/gtest.h>

namespace vm20 {
namespace {

// A tiny database with what the provider must get right: a table name with a
// blank, a composite key, a key to the parent's primary key without columns,
// a self-reference, a key to a missing table, a view, untyped columns.
const char *const Schema = R"sql(
CREATE TABLE customers (id INTEGER PRIMARY KEY, name VARCHAR(40) NOT NULL, since DATE, vip BOOLEAN);
CREATE TABLE "Order Heads" (
  id INTEGER PRIMARY KEY,
  customer INTEGER REFERENCES Customers (id),
  placed DATETIME,
  total MONEY);
CREATE TABLE "Order Items" (
  head INTEGER REFERENCES "Order Heads",
  pos SMALLINT,
  note TEXT,
  weight NUMERIC(6,2),
  PRIMARY KEY (head, pos));
CREATE TABLE refunds (
  id INTEGER PRIMARY KEY,
  head INTEGER, pos INTEGER,
  replaces INTEGER REFERENCES refunds (id),
  ledger INTEGER REFERENCES ledgers (id),
  FOREIGN KEY (head, pos) REFERENCES "Order Items" (head, pos));
CREATE TABLE loose (a, b);
CREATE VIEW spend AS SELECT customer, SUM(total) AS amount, 'x' || customer AS tag FROM "Order Heads" GROUP BY customer;
INSERT INTO customers VALUES (1, 'O''Brien', '2020-01-02', 1), (2, 'Müller', NULL, 0), (3, 'Øster', '2021-05-06', NULL);
INSERT INTO "Order Heads" VALUES (10, 1, '2022-01-01 10:00:00', 12.5), (11, 2, '2022-02-02 11:30:00', 7.25);
INSERT INTO loose VALUES (1, 'one');
)sql";

class TNSqlDBInfoTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), Connection);
        db.setDatabaseName(QStringLiteral(":memory:"));
        ASSERT_TRUE(db.open()) << db.lastError().text().toStdString();
        for (const TSQLStatement &statement : SplitSQLScript(QString::fromUtf8(Schema))) {
            QSqlQuery query(db);
            ASSERT_TRUE(query.exec(statement.Text)) << query.lastError().text().toStdString();
        }
    }
    void TearDown() override { QSqlDatabase::removeDatabase(Connection); }

    QStringList Columns(const QString &table)
    {
        QStringList out;
        TDBFieldList list;
        info.FieldsByTable(table, list);
        for (int i = 0; i < list.Count(); ++i)
            out << QStringLiteral("%1:%2:%3")
                       .arg(list.Items(i)->FieldName(), FldTypeToStr(list.Items(i)->FieldType()))
                       .arg(list.Items(i)->FieldSize());
        return out;
    }

    const QString Connection = QStringLiteral("sqldbinfo-test");
    TNSqlDBInfo info{Connection};
};

TEST_F(TNSqlDBInfoTest, ListsTablesThenViewsWithoutSystemTables)
{
    QSqlQuery(info.Database()).exec(QStringLiteral("CREATE TABLE counters (id INTEGER PRIMARY KEY AUTOINCREMENT)"));
    QStringList tables;
    info.GetTableNames(tables);
    EXPECT_EQ(tables, (QStringList{"customers", "Order Heads", "Order Items", "refunds", "loose",
                                   "counters", "spend"}));
}

TEST_F(TNSqlDBInfoTest, TypesColumnsByTheirDeclarationsOrByTheirValues)
{
    EXPECT_EQ(Columns(QStringLiteral("Order Items")),
              (QStringList{"head:ftInteger:0", "pos:ftSmallint:0", "note:ftMemo:0", "weight:ftBCD:2"}));
    // No declared type: the stored values decide, an empty column reads as text.
    EXPECT_EQ(Columns(QStringLiteral("loose")), (QStringList{"a:ftInteger:0", "b:ftString:255"}));
    EXPECT_EQ(Columns(QStringLiteral("spend")),
              (QStringList{"customer:ftInteger:0", "amount:ftFloat:0", "tag:ftString:255"}));
    EXPECT_EQ(Columns(QStringLiteral("no such table")), QStringList{});
}

TEST_F(TNSqlDBInfoTest, DescribesForeignKeysAsLinkLines)
{
    QStringList links;
    info.GetLinkList(links);
    EXPECT_EQ(links, (QStringList{
                         // the key names "Customers": the line uses the table's own spelling
                         "Order Heads-customers:customer=id",
                         // no columns named: the parent's primary key
                         "Order Items-Order Heads:head=id",
                         // composite key: one link, two items; the self-reference
                         // and the key to a missing table are left out
                         "refunds-Order Items:head=head,pos=pos",
                     }));
}

TEST_F(TNSqlDBInfoTest, RunQueryTakesValuesFromTheFirstColumnAndCaptionsFromTheSecond)
{
    QStringList values{"stale"};
    QStringList items{"stale"};
    info.RunQuery(QStringLiteral("SELECT id, name FROM customers ORDER BY id"), values, items);
    EXPECT_EQ(values, (QStringList{"1", "2", "3"}));
    EXPECT_EQ(items, (QStringList{"O'Brien", "Müller", "Øster"}));

    info.RunQuery(QStringLiteral("SELECT since FROM customers ORDER BY id"), values, items);
    EXPECT_EQ(values, (QStringList{"2020-01-02", "", "2021-05-06"}));
    EXPECT_EQ(items, values);
}

TEST_F(TNSqlDBInfoTest, BadSqlRaisesAndLeavesTheProviderUsable)
{
    QStringList values;
    QStringList items;
    try {
        info.RunQuery(QStringLiteral("SELECT nothing FROM nowhere"), values, items);
        FAIL() << "no error raised";
    } catch (const ENDBInfoError &e) {
        EXPECT_TRUE(e.Message().contains(QLatin1String("nowhere"))) << e.Message().toStdString();
    }
    info.RunQuery(QStringLiteral("SELECT name FROM customers WHERE id = 2"), values, items);
    EXPECT_EQ(values, QStringList{"Müller"});
}

TEST(TNSqlDBInfo, IsConnectedOnlyWhileItsDatabaseIsOpenAndNamesOneItCannotOpen)
{
    TNSqlDBInfo none(QStringLiteral("no such connection"));
    EXPECT_FALSE(none.Connected());
    QStringList tables;
    EXPECT_THROW(none.GetTableNames(tables), ENDBInfoError);

    const QString name = QStringLiteral("sqldbinfo-closed");
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        db.setDatabaseName(QStringLiteral(":memory:"));
        TNSqlDBInfo info(db);
        EXPECT_FALSE(info.Connected());
        info.GetTableNames(tables);   // a request opens the connection
        EXPECT_TRUE(info.Connected());
        db.close();
        EXPECT_FALSE(info.Connected());
        db.setDatabaseName(QStringLiteral("/nonexistent-dir/shop.sqlite"));
        try {
            info.GetTableNames(tables);
            ADD_FAILURE() << "no error raised";
        } catch (const ENDBInfoError &e) {
            EXPECT_TRUE(e.Message().startsWith(QLatin1String("Can not open database \"/nonexistent-dir/shop.sqlite\": ")))
                << e.Message().toStdString();
        }
    }
    QSqlDatabase::removeDatabase(name);
}

} // namespace
} // namespace vm20
