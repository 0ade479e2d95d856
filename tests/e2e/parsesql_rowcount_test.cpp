// Reading SQL back must not change what it asks for: each statement is read
// into a query, built again, saved as query text and loaded once more, and
// every form returns the rows the original returns on the sample database.
#include "sampledb.h"

#include "query/query.h"
#include "support/exception.h"

#include <gtest/gtest.h>

#include <QSqlError>
#include <QSqlQuery>

namespace e2e {
namespace {

using namespace vm20;

// The number of rows `sql` returns; -1 (and the message) when it fails.
int RowCount(QSqlDatabase &database, const QString &sql, QString &error)
{
    QSqlQuery query(database);
    query.setForwardOnly(true);
    if (!query.exec(sql)) {
        error = query.lastError().text();
        return -1;
    }
    int rows = 0;
    while (query.next())
        ++rows;
    return rows;
}

QString Built(TNQuery &query)
{
    query.BuildQuery();
    return query.GetSQL().join(QLatin1Char('\n'));
}

struct TStatementRow { int Line; const char *Sql; const char *Reason; };

// "c:" stands for a statement on customers, "o:" on orders, else as written.
QString Statement(const char *text)
{
    const QString sql = QString::fromUtf8(text);
    if (sql.startsWith(QLatin1String("c:")))
        return "SELECT customers.company_name FROM customers WHERE " + sql.mid(2);
    if (sql.startsWith(QLatin1String("o:")))
        return "SELECT orders.order_id FROM orders WHERE " + sql.mid(2);
    return sql;
}

TEST(ParseSqlRowCount, EveryStatementReadBackReturnsTheRowsOfTheOriginal)
{
    const TStatementRow rows[] = {
        {__LINE__, "o:orders.status not in ('new','paid')", "NOT inside IN"},
        {__LINE__, "o:not orders.status in ('new','paid')", "NOT before IN"},
        {__LINE__, "o:orders.shipped_date is not null", "IS NOT NULL, no operator of its own"},
        {__LINE__, "o:not orders.shipped_date is null", "leading NOT on IS NULL"},
        {__LINE__, "c:customers.company_name like 'O''Brien%'", "a quote in a prefix"},
        {__LINE__, "c:customers.company_name not like 'O''Brien%'", "NOT inside LIKE"},
        {__LINE__, "c:customers.company_name like '%''%'", "a quote alone between wildcards"},
        {__LINE__, "c:customers.company_name like '%D''A%o%'", "a pattern no template fits"},
        {__LINE__, "c:customers.company_name like 'D_Angelo%'", "a one-character wildcard"},
        {__LINE__, "c:customers.company_name in ('O''Brien Markt', 'x', 'D''Angelo Deli')", "quotes in a list"},
        {__LINE__, "c:customers.city in ('Zürich', 'México D.F.')", "list items with blanks and letters beyond ASCII"},
        {__LINE__, "c:customers.company_name between 'D''A' and 'O''C'", "quotes in both bounds"},
        {__LINE__, "c:customers.company_name not between 'D''A' and 'O''C'", "NOT inside BETWEEN"},
        {__LINE__, "c:customers.company_name = 'O''Brien Markt'", "a quote in a plain value"},
        {__LINE__, "o:orders.freight not between 10 and 50", "numbers between"},
        {__LINE__, "o:not (orders.freight not between 10 and 50)", "two NOTs cancel"},
        {__LINE__, "o:not (not orders.freight > 20)", "NOT of a negated bracket of one"},
        {__LINE__, "o:not (orders.freight > 20 and orders.status = 'new')", "a negated group"},
        {__LINE__, "o:orders.status = 'new' or not (orders.freight < 5 or orders.shipped_date is not null)",
         "a negated group holding an inner NOT"},
        {__LINE__, "o:not (orders.status not in ('new') and not orders.freight >= 30)", "NOTs at three levels"},
        {__LINE__, "o:orders.status <> 'new' and orders.status != 'paid'", "both spellings of not equal"},
        {__LINE__, "SELECT categories.name FROM categories", "no WHERE: the FROM table alone"},
        {__LINE__, "SELECT products.name FROM products WHERE products.name like 'Grandma''s%'", "FROM a table that is not the main one"},
    };
    auto model = LoadShopModel();
    TSampleDb database;
    for (const TStatementRow &row : rows) {
        SCOPED_TRACE(testing::Message() << "line " << row.Line << ": " << row.Reason);
        const QString original = Statement(row.Sql);
        QString error;
        const int expected = RowCount(database.Get(), original, error);
        ASSERT_GE(expected, 0) << error.toStdString();
        TNQuery query;
        query.SetDBStruct(model.get());
        QString rebuilt;
        QStringList text;
        try {
            query.ParseSQL({original});
            EXPECT_TRUE(query.UnresolvedItems().empty());
            rebuilt = Built(query);
            query.SaveToStrings(text);
        } catch (const Exception &e) {
            ADD_FAILURE() << e.Message().toStdString();
            continue;
        }
        EXPECT_EQ(RowCount(database.Get(), rebuilt, error), expected) << rebuilt.toStdString() << error.toStdString();

        TNQuery loaded;
        loaded.SetDBStruct(model.get());
        loaded.LoadFromStrings(text);
        const QString again = Built(loaded);
        EXPECT_EQ(again, rebuilt) << "saved and loaded";
    }
}

} // namespace
} // namespace e2e
