// A value can never leave its quotes: texts full of quotes, comment markers
// and statement separators reach the database as the literals the user typed.
// Each text is stored in a table; a query asks for it by the operators that
// put values into the statement, and the rows that come back must be exactly
// those holding the text.
#include "clirunner.h"

#include "model/dbstructure.h"
#include "providers/sqldbinfo.h"
#include "query/query.h"
#include "support/nstrings.h"

#include <gtest/gtest.h>

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

#include <set>

namespace e2e {
namespace {

using namespace vm20;

const char *const HostileTexts[] = {
    "O'Brien",
    "''",
    "'; DROP TABLE notes; --",
    "x' OR '1'='1",
    "-- not a comment",
    "/* not a comment */",
    "a;b;c",
    "back\\slash\\'",
    "\"double\" quotes",
    "Zoë's café, Øster & Müller",
    "%_% wildcard-looking",
    "trailing quote'",
};

class HostileValuesFixture : public ::testing::Test
{
protected:
    void SetUp() override
    {
        db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("hostile"));
        db.setDatabaseName(QStringLiteral(":memory:"));
        ASSERT_TRUE(db.open());
        QSqlQuery q(db);
        ASSERT_TRUE(q.exec(QStringLiteral("CREATE TABLE notes (id INTEGER PRIMARY KEY, body VARCHAR(80))")));
        ASSERT_TRUE(q.prepare(QStringLiteral("INSERT INTO notes (id, body) VALUES (?, ?)")));
        int id = 0;
        for (const char *text : HostileTexts) {
            q.addBindValue(++id);
            q.addBindValue(QString::fromUtf8(text));
            ASSERT_TRUE(q.exec()) << q.lastError().text().toStdString();
        }
        info = std::make_unique<TNSqlDBInfo>(db);
        model.SetDatabaseInfo(info.get());
        model.RetriveDataModelInfo();
        body = model.FieldByName(2, QStringLiteral("notes.body"));
        ASSERT_NE(body, nullptr);
    }

    void TearDown() override
    {
        model.SetDatabaseInfo(nullptr);
        info.reset();
        db.close();
        db = QSqlDatabase();
        QSqlDatabase::removeDatabase(QStringLiteral("hostile"));
    }

    // The bodies of the rows the query returns; the table must be intact after.
    std::multiset<QString> Run(const char *op, const QString &value)
    {
        TNQuery query;
        query.SetDBStruct(&model);
        query.RFields().Add(QString(), {body}, QString());
        TSimpleCond *cond = query.AddCondition(query.Filter(), body);
        cond->SetOperator(model.OperatorByName(QString::fromLatin1(op)));
        cond->SetValue(1, value);
        query.BuildQuery();
        const QString sql = query.GetSQL().join(QLatin1Char('\n'));
        QSqlQuery q(db);
        std::multiset<QString> bodies;
        EXPECT_TRUE(q.exec(sql)) << q.lastError().text().toStdString() << "\n" << sql.toStdString();
        while (q.next())
            bodies.insert(q.value(0).toString());
        QSqlQuery count(db);
        EXPECT_TRUE(count.exec(QStringLiteral("SELECT COUNT(*) FROM notes")) && count.next());
        EXPECT_EQ(count.value(0).toInt(), int(std::size(HostileTexts))) << sql.toStdString();
        return bodies;
    }

    QSqlDatabase db;
    std::unique_ptr<TNSqlDBInfo> info;
    TNDBStructure model;
    TDSField *body = nullptr;
};

TEST_F(HostileValuesFixture, EqualFindsExactlyTheRowHoldingTheText)
{
    for (const char *raw : HostileTexts) {
        const QString text = QString::fromUtf8(raw);
        SCOPED_TRACE(raw);
        EXPECT_EQ(Run("Equal", text), std::multiset<QString>{text});
    }
}

TEST_F(HostileValuesFixture, ContainsAndStartsWithReturnOnlyRowsHoldingTheText)
{
    for (const char *op : {"Contains", "StartsWith"}) {
        for (const char *raw : HostileTexts) {
            const QString text = QString::fromUtf8(raw);
            // LIKE gives "%" and "_" their wildcard meaning; the text's own
            // row must still be among the rows, and quotes must not widen it.
            if (text.contains(QLatin1Char('%')) || text.contains(QLatin1Char('_')))
                continue;
            SCOPED_TRACE(testing::Message() << op << " " << raw);
            const std::multiset<QString> rows = Run(op, text);
            EXPECT_EQ(rows.count(text), 1u);
            for (const QString &row : rows)
                EXPECT_TRUE(row.contains(text, Qt::CaseInsensitive)) << row.toStdString();
        }
    }
}

TEST_F(HostileValuesFixture, InListTakesEachItemAsOneLiteral)
{
    const QStringList items{QString::fromUtf8(HostileTexts[2]), QString::fromUtf8(HostileTexts[3]),
                            QString::fromUtf8(HostileTexts[9])};
    const std::multiset<QString> rows = Run("InList", ListToCommaText(items));
    EXPECT_EQ(rows, std::multiset<QString>(items.begin(), items.end()));
}

} // namespace
} // namespace e2e
