#include "sqlparse/sqlparser.h"

#include "common/printers.h"
#include "resultdump.h"

#include <gtest/gtest.h>

namespace vm20 {
namespace {

using testing::Dump;

struct StatementRow { int line; const char *why; QStringList sql; QString result; };

class TNSQLParserTest : public ::testing::TestWithParam<StatementRow>
{
};

TEST_P(TNSQLParserTest, ReadsTheStatementIntoThisResult)
{
    const StatementRow &row = GetParam();
    SCOPED_TRACE(::testing::Message() << "row at line " << row.line << ": " << row.why);
    TNSQLParser parser;
    parser.SetSQL(row.sql);
    ASSERT_NO_THROW(parser.Parse());
    EXPECT_EQ(Dump(parser.ParserResult()), row.result);
    if (const TSQLBracket *where = parser.ParserResult().WhereClause()) {
        EXPECT_TRUE(testing::ParentsKept(where));
    }
}

INSTANTIATE_TEST_SUITE_P(
    SelectAndFrom, TNSQLParserTest,
    ::testing::Values(
        StatementRow{__LINE__, "a star selects all and sorts by appending", {"select * from Customers"},
                     "all just |  | Customers:Customers | -"},
        StatementRow{__LINE__, "distinct, a quoted alias and a table alias",
                     {"SELECT DISTINCT c.Name AS \"Customer Name\" FROM Customers c"},
                     "distinct | c.Name[Name] as Customer Name | Customers:c | -"},
        StatementRow{__LINE__, "a call keeps its whole text as caption, the first dot splits the rest",
                     {"select count(o.id), o.f(x), a.b.c, Total from Orders o"},
                     "- | count(o.id)[count(o.id)], o.f(x)[f(x)], a.b.c[b.c], Total[Total] | Orders:o | -"},
        StatementRow{__LINE__, "an expression ends at AS or FROM only with its brackets closed",
                     {"select COUNT(x) as n, f(a, (b)) from t"},
                     "- | COUNT(x)[COUNT(x)] as n, f(a, (b))[f(a, (b))] | t:t | -"},
        StatementRow{__LINE__, "an alias without AS stays in the expression", {"select a  b from t"},
                     "- | a  b[a  b] | t:t | -"},
        StatementRow{__LINE__, "dotted and quoted table names lose their quotes",
                     {"select * from dbo.Orders o, \"My Schema\".\"Order Lines\" ol"},
                     "all just |  | dbo.Orders:o, My Schema.Order Lines:ol | -"},
        StatementRow{__LINE__, "nested-bracket joins list every table, join conditions are dropped",
                     {"SELECT * FROM ((A INNER JOIN B ON A.id = B.aid)", "  LEFT OUTER JOIN C c ON (B.id = c.bid))",
                      "  RIGHT JOIN D ON D.x = c.x FULL JOIN E e on e.y = 1"},
                     "all just |  | A:A, B:B, C:c, D:D, E:e | -"},
        StatementRow{__LINE__, "a join may follow an alias", {"select * from A a join B b on a.id = b.id where b.x = 1"},
                     "all just |  | A:a, B:b | _(<b.x|=|1>)"},
        StatementRow{__LINE__, "trailing text after a clause is ignored, HAVING included",
                     {"select a from t having a > 1"}, "- | a[a] | t:having | -"}));

INSTANTIATE_TEST_SUITE_P(
    Where, TNSQLParserTest,
    ::testing::Values(
        StatementRow{__LINE__, "a lone condition is wrapped in a bracket without operator",
                     {"select a from t where a = 1"}, "- | a[a] | t:t | _(<a|=|1>)"},
        StatementRow{__LINE__, "a leading NOT before a group marks the single condition",
                     {"select a from t where not (a = 1)"}, "- | a[a] | t:t | _(not <a|=|1>)"},
        StatementRow{__LINE__, "a double-quoted value becomes single-quoted",
                     {"select a from t where name like \"J%\""}, "- | a[a] | t:t | _(<name|like|'J%'>)"},
        StatementRow{__LINE__, "a lone double quote is turned too", {"select a from t where a = \""},
                     "- | a[a] | t:t | _(<a|=|'>)"},
        StatementRow{__LINE__, "the NOT after IS is kept apart, the value lower-cased",
                     {"select a from t where x is not NULL"}, "- | a[a] | t:t | _(innernot <x|is|null>)"},
        StatementRow{__LINE__, "only a NOT before the condition sets Negative",
                     {"select a from t where not x IS NULL"}, "- | a[a] | t:t | _(not <x|is|null>)"},
        StatementRow{__LINE__, "NOT LIKE, NOT IN and NOT BETWEEN keep their NOT apart",
                     {"select a from t where n not like 'J%' and i not in (1, 2) and d not between 1 and 2"},
                     "- | a[a] | t:t | and(innernot <n|like|'J%'>, innernot <i|in|(1, 2)>, "
                     "innernot <d|between|1 and 2>)"},
        StatementRow{__LINE__, "a NOT inside brackets that hold one node is kept apart",
                     {"select a from t where (not a = 1) and not (not (b = 1 or c = 2))"},
                     "- | a[a] | t:t | and(innernot <a|=|1>, not innernot or(<b|=|1>, <c|=|2>))"},
        StatementRow{__LINE__, "three NOTs: one stays in Negative, two cancel apart",
                     {"select a from t where not (not (x is not null))"}, "- | a[a] | t:t | _(not <x|is|null>)"},
        StatementRow{__LINE__, "BETWEEN joins both bounds, turning double quotes in each",
                     {"select a from t where d between '2020-01-01' and \"2020-12-31\""},
                     "- | a[a] | t:t | _(<d|between|'2020-01-01' and '2020-12-31'>)"},
        StatementRow{__LINE__, "only IS lower-cases its value", {"select a from t where x = NULL"},
                     "- | a[a] | t:t | _(<x|=|NULL>)"},
        StatementRow{__LINE__, "a sub-query is one operand, its own FROM and WHERE inside",
                     {"select a from t where id in (select id from u where u.x = 1) and b = 2"},
                     "- | a[a] | t:t | and(<id|in|(select id from u where u.x = 1)>$, <b|=|2>)"},
        StatementRow{__LINE__, "words inside literals do not end an operand",
                     {"select a from t where a = 'x and y from z' or b <> 'or'"},
                     "- | a[a] | t:t | or(<a|=|'x and y from z'>, <b|<>|'or'>)"},
        StatementRow{__LINE__, "AND binds tighter than OR, runs of one operator stay flat",
                     {"select a from t where a=1 and b=2 or c=3 or d=4"},
                     "- | a[a] | t:t | or(and(<a|=|1>, <b|=|2>), <c|=|3>, <d|=|4>)"},
        StatementRow{__LINE__, "a group of several conditions is the WHERE bracket itself",
                     {"select a from t where (a=1 or not (b=2 and c>=3))"},
                     "- | a[a] | t:t | or(<a|=|1>, not and(<b|=|2>, <c|>=|3>))"},
        StatementRow{__LINE__, "a trailing OR leaves a bracket of one node", {"select a from t where a = 1 or"},
                     "- | a[a] | t:t | or(<a|=|1>)"},
        StatementRow{__LINE__, "operands keep blanks, case and line breaks",
                     {"select a from t", "where Upper( t.Name )", "  =  :P1"},
                     "- | a[a] | t:t | _(<Upper( t.Name )|=|:P1>)"}));

INSTANTIATE_TEST_SUITE_P(
    GroupAndOrder, TNSQLParserTest,
    ::testing::Values(
        StatementRow{__LINE__, "with a star, ORDER BY columns are appended in order",
                     {"select * from t order by b desc, c"}, "all just | b[b] desc#1, c[c] asc#2 | t:t | -"},
        StatementRow{__LINE__, "positions pick select-list entries, any word but DESC is ascending",
                     {"select a, b, c from t order by 3 desc, 1 up"},
                     "- | a[a] asc#2, b[b], c[c] desc#1 | t:t | -"},
        StatementRow{__LINE__, "columns are found by alias first, then by expression, case-blind",
                     {"select t.a as X, t.b from t order by x, T.B DESC"},
                     "- | t.a[a] as X asc#1, t.b[b] desc#2 | t:t | -"},
        StatementRow{__LINE__, "a quoted ORDER BY column keeps its quotes when appended",
                     {"select * from t order by \"a b\".\"c d\""},
                     "all just | \"a b\".\"c d\"[\"c d\"] asc#1 | t:t | -"},
        StatementRow{__LINE__, "GROUP BY is read and dropped; text after ORDER BY is ignored",
                     {"select a, count(*) from t where a > 0 group by a, f(b, c) order by 1 limit 10"},
                     "- | a[a] asc#1, count(*)[count(*)] | t:t | _(<a|>|0>)"}));

TEST(TNSQLParserLifeTest, StartsEachParseFromAnEmptyResult)
{
    TNSQLParser parser;
    parser.SetSQL({"select distinct * from a, b where x = 1 order by y"});
    parser.Parse();
    parser.SetSQL({"select c from d"});
    parser.Parse();
    EXPECT_EQ(Dump(parser.ParserResult()), "- | c[c] | d:d | -");
}

} // namespace
} // namespace vm20
