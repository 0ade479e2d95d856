// Loading SQL text into the query: which operator, field and values each
// parsed condition becomes, the brackets, the result columns, sub-queries and
// bad input.
#include "model/errors.h"
#include "model/valueeditors.h"
#include "parsesql_dump.h"
#include "common/raises.h"
#include "shopquery.h"
#include "sqlparse/sqlparsererror.h"
#include "support/dattime.h"

using namespace vm20;
using namespace shop;

namespace {

class TSQLLoaderTest : public ShopQueryFixture
{
protected:
    void Load(const QString &sql) { query.ParseSQL(sql.split(QLatin1Char('\n'))); }
    QString TreeOf(const QString &sql)
    {
        Load(sql);
        return DumpTree(query);
    }
};

struct TreeRow { int line; const char *sql, *tree, *reason; };

// A row's statement: a WHERE clause on customers, or a whole statement.
QString Statement(const char *sql)
{
    const QString text = QString::fromUtf8(sql);
    return text.startsWith(QLatin1String("select")) ? text : "select c.Name from Customers c where " + text;
}

TEST_F(TSQLLoaderTest, MatchesEachConditionToAnOperatorFieldAndValues)
{
    const TreeRow rows[] = {
        {__LINE__, "c.Name != 'x'", "all(Customer name NotEqual [x])", "first rewrite pair"},
        {__LINE__, "not(c.Name = 'x')", "all(Customer name NotEqual [x])", "second rewrite pair"},
        {__LINE__, "NOT c.Name = 5", "all(Customer name NotEqual [5])", "a bare leading NOT"},
        {__LINE__, "c.ID <= 5", "all(Customer ID LessOrEqual [5])", "not @f < '@1' with '= 5'"},
        {__LINE__, "not (c.Name like 'Jo%')", "all(Customer name NotStartsWith [Jo])", "negated like"},
        {__LINE__, "c.Name not like 'Jo%'", "all(Customer name NotStartsWith [Jo])", "a NOT inside LIKE"},
        {__LINE__, "not (c.Name not like 'Jo%')", "all(Customer name StartsWith [Jo])", "two NOTs cancel"},
        {__LINE__, "(not c.Name like 'Jo%')", "all(Customer name NotStartsWith [Jo])",
         "a NOT inside brackets of one"},
        {__LINE__, "not (not (c.ID = 1 or c.ID = 2))", "any(Customer ID Equal [1]; Customer ID Equal [2])",
         "two NOTs on a group"},
        {__LINE__, "c.Name like 'J_n'", "all(Customer name Unrecognized operator)",
         "no operator keeps a pattern without a final %"},
        {__LINE__, "c.Name like '%J''s%n%'", "all(Customer name Contains [J's%n])", "a pattern no template fits"},
        {__LINE__, "c.Name is not null", "all(none(Customer name IsNull))",
         "no negated operator: a bracket of none"},
        {__LINE__, "c.City in ('Paris','New York', 'O''Brien')", "all(City InList [Paris,\"New York\",O'Brien])",
         "a list in the query's form"},
        {__LINE__, "not (c.ID in (1, 2))", "all(Customer ID NotInList [1,2])", "a negated list"},
        {__LINE__, "c.ID not in (1, 2)", "all(Customer ID NotInList [1,2])", "a NOT inside IN"},
        {__LINE__, "o.Total not between 1 and 2", "all(Order total NotBetween [1] [2])", "a NOT inside BETWEEN"},
        {__LINE__, "c.ID in 5", "all(Customer ID Unrecognized operator)", "no template fits"},
        {__LINE__, "x.Foo = 1", "all(Unrecognized field Equal [1])", "no field fits"},
        {__LINE__, "c.ID = 1 or not (c.ID = 2 and c.ID = 3)",
         "any(Customer ID Equal [1]; notall(Customer ID Equal [2]; Customer ID Equal [3]))", "brackets"},
        {__LINE__, "select * from Orders o where Total > 100", "all(Order total GreaterThan [100])",
         "unqualified: the first table's alias"},
        {__LINE__, "select * from Customers where City = 'Rome'", "all(City Equal [Rome])",
         "unqualified, no alias: by full name"},
        {__LINE__, "select * from Customers c, Orders o where Total > 1",
         "all(Unrecognized field GreaterThan [1])", "only the first table"},
        {__LINE__, "select * from \"Order Lines\" Order_Lines where \"Unit Price\" = 2",
         "all(Unit price Equal [2])", "quote symbols do not count"},
    };
    for (const TreeRow &row : rows)
        EXPECT_EQ(TreeOf(Statement(row.sql)), row.tree) << "line " << row.line << ": " << row.reason;
    s.model->SetExOperators(TExOperators{xoStartsWith});
    EXPECT_EQ(TreeOf(Statement("c.Name like '%J%'")), "all(Customer name StartsWith [%J])")
        << "without contains, starts with keeps the pattern";
    EXPECT_EQ(TreeOf(Statement("c.Name not like '%J%'")), "all(Customer name NotStartsWith [%J])");
    s.model->SetExOperators(TExOperators());
    EXPECT_EQ(TreeOf(Statement("c.Name like '%J%'")), "all(Customer name Unrecognized operator)");
    EXPECT_EQ(TreeOf(Statement("c.ID not in (1)")), "all(Customer ID Unrecognized operator)")
        << "without the list operators nothing reads the IN, negated or not";
}

TEST_F(TSQLLoaderTest, ListsWhatItCouldNotLoadAndTakesTheFromTable)
{
    const struct { int line; const char *sql, *unresolved; } rows[] = {
        {__LINE__, "c.ID = 1 or c.Name not like 'J%'", ""},
        {__LINE__, "x.Foo = 1", "row 1: unknown field (x.Foo = 1)"},
        {__LINE__, "c.ID = 1 and c.Name like '%son'", "row 2: unknown operator (c.Name like '%son')"},
        {__LINE__, "c.Name not like '%son'", "row 1: unknown operator (c.Name not like '%son')"},
        {__LINE__, "not c.Name like '%son'", "row 1: unknown operator (not(c.Name like '%son'))"},
        {__LINE__, "select c.Name from Nowhere n where c.ID = 1", "query: unknown table (FROM Nowhere)"},
    };
    for (const auto &row : rows) {
        Load(Statement(row.sql));
        QStringList texts;
        for (const TUnresolvedItem &item : query.UnresolvedItems())
            texts << item.Text();
        EXPECT_EQ(texts.join("; "), row.unresolved) << "line " << row.line;
    }
    Load("select c.Name from Customers c");
    EXPECT_EQ(query.MainTableName(), s.customers->CompoundName());
    EXPECT_EQ(Sql(), "SELECT c.Name\nFROM " + J + "Customers c") << "no join through orders";
}

TEST_F(TSQLLoaderTest, CaptionsAListByTheItemsItsEditorShows)
{
    s.custCity->SetEditType(etList);
    auto *editor = static_cast<TDSListEditor *>(s.custCity->ValueEditor());
    editor->Items() << "Rome" << "New York";
    editor->Values() << "R" << "NY";
    Load(Statement("c.City in ('NY', 'R', 'X')"));
    const auto *cond = static_cast<TSimpleCond *>(query.Filter()->GetRow(0));
    EXPECT_EQ(cond->GetValue(1), "NY,R,X");
    EXPECT_EQ(cond->GetValueCaption(1), "\"New York\",Rome,X");
}

TEST_F(TSQLLoaderTest, MarksParametersAndNormalisesDates)
{
    EXPECT_EQ(TreeOf(Statement("c.Name = :who and c.City = :who and o.Total between :low and 10")),
              "all(Customer name Equal :who; City Equal :City; Order total Between :low [10])")
        << "a name already taken gives way to a generated one";
    EXPECT_EQ(static_cast<TSimpleCond *>(query.Filter()->GetRow(2))->GetValue(1), "");
    const QString march4 = VmDateTimeToStr(EncodeDate(2020, 3, 4));
    const QString march5 = VmDateTimeToStr(EncodeDate(2020, 3, 5));
    EXPECT_EQ(TreeOf(Statement("c.Since between '03/04/2020' and '05.03.20' and c.Since = :day")),
              "all(Customer since Between [" + march4 + "] [" + march5 + "]; Customer since Equal :day)");
    Load(Statement("c.Since is null"));
    EXPECT_EQ(static_cast<TSimpleCond *>(query.Filter()->GetRow(0))->GetValueCaption(1), "")
        << "a value the operator does not use is empty";
    EXPECT_THROW(Load(Statement("o.OrderDate = '2020-03-04 10:20:30'")), EConvertError);
    EXPECT_EQ(DumpTree(query), "any()") << "a failed load leaves the query empty";
}

TEST_F(TSQLLoaderTest, NamesColumnsAsTheStatementDoes)
{
    Load("select c.Name as Customer_name, c.City as Town, c.ID, o.Total as \"Sum\"\n"
         "from Customers c inner join Orders o on c.ID = o.CustomerID order by 3 desc, 1");
    QStringList columns;
    for (const auto &column : query.RFields().Items())
        columns << QStringLiteral("%1/%2/%3/%4").arg(column->Caption(), column->Alias())
                       .arg(column->Sorting()).arg(column->SortOrder());
    EXPECT_EQ(columns, QStringList({"Customer name/Customer_name/1/2", "Town/Town/0/0", "ID/ID/2/1",
                                    "Sum/Sum/0/0"}))
        << "the model's caption when it gives the statement's alias, else the statement's name";
    Load("select count(*), max(o.ID + 1), 1 + 2 from Orders o");
    QStringList select;
    for (const auto &column : query.RFields().Items())
        select << column->GetSelectExpr();
    EXPECT_EQ(select, QStringList({"count(*) as count", "max(o.ID + 1)", "1 + 2 as Column3"}))
        << "a computed column without alias gets an alias that SQL accepts";
    Load("select * from Customers c order by c.City desc");
    EXPECT_TRUE(query.RFields().JustSorting());
    EXPECT_EQ(query.RFields().GetRField(0)->Sorting(), stDescending);
}

TEST_F(TSQLLoaderTest, LoadsASubQueryThroughAHiddenQuery)
{
    s.model->AddOperator("InQuery", "is in query", "@f in (@1)", QString(), ComparableTypes());
    s.Op("InQuery")->SetValueKind(vkSubQuery);
    s.custId->AddOperator(s.Op("InQuery"));
    query.SetSQLOptions(TSQLOptions{soSelectDistinct});
    Load(Statement("c.ID in (select o.CustomerID from Orders o where o.Total > 100)"));
    const QString inner = "SELECT DISTINCT o.CustomerID as CustomerID\r\nFROM \r\n     Orders o\r\n"
                          "WHERE\r\n(\r\no.Total >100\r\n)";
    EXPECT_EQ(DumpTree(query), "all(Customer ID InQuery [" + inner + "])");
    const auto *cond = static_cast<TSimpleCond *>(query.Filter()->GetRow(0));
    EXPECT_EQ(cond->SubQueryOptions(), query.SQLOptions());
    QStringList lines;
    query.GetSubQueryText(cond->SubQuery(), lines);
    EXPECT_EQ(lines.join("\r\n"), inner) << "the saved sub-query builds the same statement";
    const QString built = Sql();
    Load(built);
    EXPECT_EQ(Sql(), built) << "the built statement reads back";
    EXPECT_EQ(TreeOf(Statement("c.ID in (select x from Nowhere)")),
              "all(Customer ID InQuery [select x from Nowhere])")
        << "a sub-query the model cannot build keeps its text";
    Load(Statement("c.ID in (select o.CustomerID from Orders o where o.Nope = 1)"));
    ASSERT_EQ(query.UnresolvedItems().size(), 1u);
    EXPECT_EQ(query.UnresolvedItems()[0].Text(), "query: unknown field (in a sub-query: o.Nope = 1)");
    EXPECT_EQ(TreeOf(Statement("c.ID in (1)")), "all(Customer ID InList [1])")
        << "a sub-query operator takes only a sub-query";
    s.model->DeleteOperatorByName("InQuery");
    EXPECT_EQ(TreeOf(Statement("c.ID in (select 1 from t)")), "all(Customer ID Unrecognized operator)")
        << "only a sub-query operator takes a sub-query";
}

TEST_F(TSQLLoaderTest, ReportsMalformedSQLAndStaysEmptyAndUsable)
{
    const struct { const char *sql, *message; } rows[] = {
        {"select", "Wrong SQL statement\r\nLine:1"},
        {"update t set a = 1", "Wrong SQL statement\r\nLine:1"},
        {"select a\nfrom t\nwhere (a = 1\nand b = 2", "Lost bracket\r\nLine:4"},
    };
    int changes = 0;
    query.OnChange = [&](TNQuery *) { ++changes; };
    for (const auto &row : rows) {
        Load(Statement("c.City = 'Rome'"));
        EXPECT_EQ(Raised<ESQLParserError>([&] { Load(QString::fromUtf8(row.sql)); }), row.message);
        EXPECT_EQ(DumpTree(query) + QString::number(query.RFields().Count()), "any()0") << row.sql;
        EXPECT_TRUE(query.Active() && !query.Loading()) << row.sql;
    }
    EXPECT_EQ(changes, 0) << "loading is silent";
    EXPECT_EQ(TreeOf(Statement("c.ID = 1")), "all(Customer ID Equal [1])");
    TNQuery bare;
    EXPECT_THROW(bare.ParseSQL({"select a from t"}), ENQueryPanelError);
}

} // namespace
