// Loading SQL text into the query: which operator, field and values each
// parsed condition becomes, the brackets, the result columns, and bad input.
#include "model/errors.h"
#include "parsesql_dump.h"
#include "query/parsesql.h"
#include "query/sqlparam.h"
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
    // The tree a statement loads into.
    QString TreeOf(const QString &sql)
    {
        Load(sql);
        return DumpTree(query);
    }
};

struct TreeRow
{
    int line;
    const char *where;
    const char *tree;
    const char *reason;
};

const QString CustomersWhere = QStringLiteral("select c.Name from Customers c where ");

TEST_F(TSQLLoaderTest, MatchesEachConditionToAnOperatorAndItsValues)
{
    const TreeRow rows[] = {
        {__LINE__, "c.Name = 'Bob'", "all(Customer name Equal [Bob])", "quoted value"},
        {__LINE__, "c.ID = 5", "all(Customer ID Equal [5])", "the same template, unquoted value"},
        {__LINE__, "c.Name = 'O''Brien'", "all(Customer name Equal [O'Brien])",
         "a literal's doubled quote is one quote in the value"},
        {__LINE__, "c.Name != 'x'", "all(Customer name NotEqual [x])", "first rewrite pair"},
        {__LINE__, "not(c.Name = 'x')", "all(Customer name NotEqual [x])", "second rewrite pair"},
        {__LINE__, "NOT c.Name = 5", "all(Customer name NotEqual [5])",
         "a leading NOT without brackets, unquoted value"},
        {__LINE__, "c.ID <= 5", "all(Customer ID LessOrEqual [5])",
         "the longer template wins over @f < '@1'"},
        {__LINE__, "c.ID >5", "all(Customer ID GreaterThan [5])", "the template without a blank"},
        {__LINE__, "c.Name like 'Jo%'", "all(Customer name StartsWith [Jo])", "starts with"},
        {__LINE__, "c.Name like '%Jo%'", "all(Customer name Contains [Jo])", "contains"},
        {__LINE__, "not (c.Name like 'Jo%')", "all(Customer name NotStartsWith [Jo])",
         "a negated like"},
        {__LINE__, "c.Name not like 'Jo%'", "all(Customer name StartsWith [Jo])",
         "the parser drops a NOT inside the condition"},
        {__LINE__, "c.Name like 'J_n'", "all(Customer name Contains ['J_n'])",
         "no like template fits: contains, the operand kept whole"},
        {__LINE__, "c.Name is not null", "all(Customer name IsNull)", "the inner NOT is lost here too"},
        {__LINE__, "c.City in ('Paris','New York')", "all(City InList [\"Paris\",\"New York\"])",
         "a list in the query's own form"},
        {__LINE__, "c.ID in (1, 2)", "all(Customer ID InList [1, 2])", "an unquoted list as written"},
        {__LINE__, "not (c.ID in (1,2))", "all(Customer ID NotInList [1,2])", "a negated list"},
        {__LINE__, "o.Total between 10 and 20", "all(Order total Between [10] [20])", "two values"},
        {__LINE__, "c.Vip='TRUE'", "all(#VIP customers only)",
         "a predefined condition, letter case and blanks aside"},
        {__LINE__, "c.Vip = 'yes'", "all(VIP Equal [yes])", "not the predefined text"},
        {__LINE__, "c.ID in 5", "all(Customer ID Unrecognized operator)",
         "no operator fits: the fallback operator"},
        {__LINE__, "x.Foo = 1", "all(Unrecognized field Equal [1])", "no field fits: the fallback field"},
        {__LINE__, "c.Name = :who", "all(Customer name Equal :who)",
         "a parameter keeps the statement's name"},
    };
    for (const TreeRow &row : rows)
        EXPECT_EQ(TreeOf(CustomersWhere + QString::fromUtf8(row.where)), QString::fromUtf8(row.tree))
            << "line " << row.line << ": " << row.reason;
}

TEST_F(TSQLLoaderTest, TurnsLogicalOperatorsIntoLinkTypes)
{
    const TreeRow rows[] = {
        {__LINE__, "c.ID = 1 or c.ID = 2", "any(Customer ID Equal [1]; Customer ID Equal [2])", "or"},
        {__LINE__, "not (c.ID = 1 or c.ID = 2)", "none(Customer ID Equal [1]; Customer ID Equal [2])",
         "negated or"},
        {__LINE__, "c.ID = 1 and c.ID = 2", "all(Customer ID Equal [1]; Customer ID Equal [2])", "and"},
        {__LINE__, "not (c.ID = 1 and c.ID = 2)",
         "notall(Customer ID Equal [1]; Customer ID Equal [2])", "negated and"},
        {__LINE__, "c.ID = 1 and (c.ID = 2 or c.ID = 3)",
         "all(Customer ID Equal [1]; any(Customer ID Equal [2]; Customer ID Equal [3]))", "nesting"},
        {__LINE__, "((c.ID = 1))", "all(Customer ID Equal [1])", "brackets around one condition vanish"},
    };
    for (const TreeRow &row : rows)
        EXPECT_EQ(TreeOf(CustomersWhere + QString::fromUtf8(row.where)), QString::fromUtf8(row.tree))
            << "line " << row.line << ": " << row.reason;
}

TEST_F(TSQLLoaderTest, QualifiesAnUnqualifiedFieldWithTheFirstTable)
{
    const TreeRow rows[] = {
        {__LINE__, "select * from Orders o where Total > 100", "all(Order total GreaterThan [100])",
         "by the alias, as the field's SQL expression"},
        {__LINE__, "select * from Customers where City = 'Rome'", "all(City Equal [Rome])",
         "by the table name, as the field's full name"},
        {__LINE__, "select * from Customers c, Orders o where Total > 100",
         "all(Unrecognized field GreaterThan [100])", "only the first table is tried"},
        {__LINE__, "select * from \"Order Lines\" Order_Lines where \"Unit Price\" = 2",
         "all(Unit price Equal [2])", "quote symbols do not count"},
    };
    for (const TreeRow &row : rows)
        EXPECT_EQ(TreeOf(QString::fromUtf8(row.where)), QString::fromUtf8(row.tree))
            << "line " << row.line << ": " << row.reason;
}

TEST_F(TSQLLoaderTest, FallsBackFromContainsToStartsWithForAnUnmatchedLike)
{
    s.model->SetExOperators(TExOperators{xoInList, xoBetween, xoStartsWith});
    EXPECT_EQ(TreeOf(CustomersWhere + "c.Name like 'J_n'"), "all(Customer name StartsWith ['J_n'])");
    s.model->SetExOperators(TExOperators{xoInList, xoBetween});
    EXPECT_EQ(TreeOf(CustomersWhere + "c.Name like 'J_n'"), "all(Customer name Unrecognized operator)");
}

TEST_F(TSQLLoaderTest, MarksParametersWithoutStoringTheirText)
{
    Load(CustomersWhere + "c.Name = :who and c.City = :who and o.Total between :low and 10");
    EXPECT_EQ(DumpTree(query),
              "all(Customer name Equal :who; City Equal :City; Order total Between :low [10])")
        << "a name already taken gives way to a generated one";
    const auto *between = static_cast<TSimpleCond *>(query.Filter()->GetRow(2));
    EXPECT_EQ(between->GetValue(1), "");
    EXPECT_EQ(query.QResult().GetParamCount(), 3);
}

TEST_F(TSQLLoaderTest, NormalisesDateValuesAndDropsUnusedOnes)
{
    const QString march4 = VmDateTimeToStr(EncodeDate(2020, 3, 4));
    const QString march5 = VmDateTimeToStr(EncodeDate(2020, 3, 5));
    EXPECT_EQ(TreeOf(CustomersWhere + "c.Since = '2020-03-04'"), "all(Customer since Equal [" + march4 + "])");
    EXPECT_EQ(TreeOf(CustomersWhere + "c.Since between '03/04/2020' and '05.03.20'"),
              "all(Customer since Between [" + march4 + "] [" + march5 + "])");
    Load(CustomersWhere + "c.Since is null");
    const auto *cond = static_cast<TSimpleCond *>(query.Filter()->GetRow(0));
    EXPECT_EQ(cond->GetValue(1), "") << "a value the operator does not use is emptied";
    EXPECT_EQ(cond->GetValueCaption(1), "");
    EXPECT_EQ(TreeOf(CustomersWhere + "c.Since = :day"), "all(Customer since Equal :day)");
}

TEST_F(TSQLLoaderTest, ReadsADateTimeThatFitsAFormThroughTheTimeReader)
{
    Load(CustomersWhere + "c.City = 'Rome'");
    EXPECT_THROW(Load(CustomersWhere + "o.OrderDate = '2020-03-04 10:20:30'"), EConvertError);
    EXPECT_EQ(DumpTree(query), "any()") << "a failed load leaves the query empty";
    EXPECT_EQ(TreeOf(CustomersWhere + "o.OrderDate = 'soon'"),
              "all(Order date Equal [" + VmDateTimeToStr(Date()) + "])");
}

TEST_F(TSQLLoaderTest, NamesColumnsAsTheStatementDoes)
{
    Load("select c.Name as Customer_name, c.City as Town, c.ID, o.Total as \"Sum\"\n"
         "from Customers c inner join Orders o on c.ID = o.CustomerID order by 3 desc, 1");
    struct ColumnRow
    {
        const char *caption;
        const char *alias;
        TSortingType sorting;
        int sortOrder;
        const char *reason;
    };
    const ColumnRow rows[] = {
        {"Customer name", "Customer_name", stAscending, 2, "the model's caption gives the same alias"},
        {"Town", "Town", stNoSort, 0, "the statement's alias"},
        {"ID", "ID", stDescending, 1, "no alias: the column's name, which the select list leaves out"},
        {"Sum", "Sum", stNoSort, 0, "a quoted alias without its quotes"},
    };
    ASSERT_EQ(query.RFields().Count(), int(std::size(rows)));
    for (int i = 0; i < query.RFields().Count(); ++i) {
        const TResultField *column = query.RFields().GetRField(i);
        EXPECT_EQ(column->Caption(), rows[i].caption) << rows[i].reason;
        EXPECT_EQ(column->Alias(), rows[i].alias) << rows[i].reason;
        EXPECT_EQ(column->Sorting(), rows[i].sorting) << rows[i].reason;
        EXPECT_EQ(column->SortOrder(), rows[i].sortOrder) << rows[i].reason;
    }
    Load("select * from Customers c order by c.City desc");
    EXPECT_TRUE(query.RFields().JustSorting());
    ASSERT_EQ(query.RFields().Count(), 1);
    EXPECT_EQ(query.RFields().GetRField(0)->Sorting(), stDescending);
}

struct BadRow
{
    int line;
    const char *sql;
    const char *message;
    const char *reason;
};

TEST_F(TSQLLoaderTest, ReportsMalformedSQLAndStaysEmptyAndUsable)
{
    const BadRow rows[] = {
        {__LINE__, "select", "Wrong SQL statement\r\nLine:1", "no FROM"},
        {__LINE__, "update t set a = 1", "Wrong SQL statement\r\nLine:1", "not a SELECT"},
        {__LINE__, "select a\nfrom t\nwhere (a = 1\nand b = 2", "Lost bracket\r\nLine:4",
         "the line of the token where the bracket was missed"},
        {__LINE__, "select a from t where a =", "Wrong SQL statement\r\nLine:1", "no right operand"},
    };
    query.SetActive(true);
    for (const BadRow &row : rows) {
        Load(CustomersWhere + "c.City = 'Rome'");
        try {
            Load(QString::fromUtf8(row.sql));
            ADD_FAILURE() << "line " << row.line << ": no error";
        } catch (const ESQLParserError &e) {
            EXPECT_EQ(e.Message(), QString::fromUtf8(row.message)) << "line " << row.line << ": " << row.reason;
        }
        EXPECT_EQ(DumpTree(query), "any()") << "line " << row.line;
        EXPECT_EQ(query.RFields().Count(), 0) << "line " << row.line;
        EXPECT_TRUE(query.Active()) << "line " << row.line;
        EXPECT_FALSE(query.Loading()) << "line " << row.line;
    }
    EXPECT_EQ(TreeOf(CustomersWhere + "c.ID = 1"), "all(Customer ID Equal [1])");
}

TEST_F(TSQLLoaderTest, NeedsAModel)
{
    TNQuery bare;
    EXPECT_THROW(bare.ParseSQL({"select a from t"}), ENQueryPanelError);
}

TEST_F(TSQLLoaderTest, TellsObserversOnceAndParameterListenersAtTheEnd)
{
    struct Counter : TNQueryObserver
    {
        int inserted = 0, resets = 0;
        void RowInserted(TFilterRow *) override { ++inserted; }
        void Reset() override { ++resets; }
    } counter;
    query.AddObserver(&counter);
    int paramLists = 0, changes = 0;
    query.OnParamListChange = [&](TNQuery *) { ++paramLists; };
    query.OnConditionChange = [&](TFilterCond *) { ++changes; };
    Load(CustomersWhere + "c.ID = :a or (c.ID = 2 and c.ID = :b)");
    EXPECT_EQ(counter.inserted, 0);
    EXPECT_EQ(counter.resets, 1);
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(paramLists, 1);
}

} // namespace
