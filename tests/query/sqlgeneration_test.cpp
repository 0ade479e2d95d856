// Whole statements, compared character for character.
#include "model/errors.h"
#include "support/exception.h"
#include "query/valueformat.h"
#include "common/raises.h"
#include "shopquery.h"


using namespace vm20;
using namespace shop;

namespace {

using TNQueryTest = ShopQueryFixture;

const QString CategorySelect = QStringLiteral("SELECT c.Name as Customer_name, Categories.Name as Category");
const QString ExplicitJoins =
    QStringLiteral("FROM ") + J + QStringLiteral("Customers c INNER JOIN  Orders o ON (c.ID=o.CustomerID)") + J
    + QStringLiteral("INNER JOIN  \"Order Lines\" Order_Lines ON (o.ID=Order_Lines.OrderID)") + J
    + QStringLiteral("INNER JOIN  Products p ON (Order_Lines.ProductID=p.ID)") + J
    + QStringLiteral("LEFT OUTER JOIN  Categories ON (p.CategoryID=Categories.ID)");
const QString CommaJoins = QStringLiteral("FROM ") + J + QStringLiteral("Customers c, ") + J
                           + QStringLiteral("Orders o, ") + J + QStringLiteral("\"Order Lines\" Order_Lines, ")
                           + J + QStringLiteral("Products p, ") + J + QStringLiteral("Categories");
const QString CityWhere = QStringLiteral("(\nc.City = 'Paris'\n)");

struct SyntaxRow { int line; TSQLSyntax syntax; QString expected; const char *reason; };

TEST_F(TNQueryTest, WritesTheStatementOfEverySyntax)
{
    const SyntaxRow rows[] = {
        {__LINE__, ssSQL1,
         CategorySelect + "\n" + CommaJoins + "\nWHERE\n   (c.ID=o.CustomerID) AND\n   (o.ID=Order_Lines.OrderID) AND\n"
             "   (Order_Lines.ProductID=p.ID) AND\n   (p.CategoryID=Categories.ID) AND\n" + CityWhere,
         "comma list, join conditions lead the WHERE lines"},
        {__LINE__, ssSQL2, CategorySelect + "\n" + ExplicitJoins + "\nWHERE\n" + CityWhere,
         "explicit joins, the outer link turned into LEFT OUTER"},
        {__LINE__, ssOracle,
         CategorySelect + "\n" + CommaJoins + "\nWHERE\n   (c.ID=o.CustomerID) AND\n   (o.ID=Order_Lines.OrderID) AND\n"
             "   (Order_Lines.ProductID=p.ID) AND\n   (p.CategoryID=Categories.ID (+) ) AND\n" + CityWhere,
         "the optional side carries the (+) mark"},
    };
    // Customers with their category: five tables joined, one condition.
    AddColumn(s.custName);
    AddColumn(s.categoryName);
    AddCond(s.custCity, "Equal", "Paris");
    for (const SyntaxRow &row : rows) {
        query.SetSQLSyntax(row.syntax);
        EXPECT_EQ(Sql(), row.expected) << "line " << row.line << ": " << row.reason;
    }
}

struct OptionRow { int line; TSQLOptions options; QString expected; const char *reason; };

TEST_F(TNQueryTest, AppliesEachOptionAloneAndAllTogether)
{
    const QString select = QStringLiteral("SELECT c.Name as Customer_name, o.OrderDate as Order_date");
    const QString from = "FROM " + J + "Customers c INNER JOIN  Orders o ON (c.ID=o.CustomerID)" + J;
    const QString where = QStringLiteral("WHERE\n(\nc.City = 'Paris' AND\no.Total >100\n)");
    const QString bracketedFrom =
        "FROM " + J + "(Customers c INNER JOIN  Orders o\r\n         ON (c.ID=o.CustomerID))";
    const QString bracketedWhere = QStringLiteral("WHERE\n(\n(c.City = 'Paris') AND\n(o.Total >100)\n)");
    const OptionRow rows[] = {
        {__LINE__, {}, select + "\n" + from + "\n" + where + "\nORDER BY 1 ASC", "no option"},
        {__LINE__, {soASCIIRFields},
         "SELECT c.Name as Customername, o.OrderDate\n" + from + "\n" + where + "\nORDER BY 1 ASC",
         "aliases keep letters only; Orderdate names the field itself (any case), so no alias"},
        {__LINE__, {soSelectDistinct},
         "SELECT DISTINCT c.Name as Customer_name, o.OrderDate as Order_date\n" + from + "\n" + where
             + "\nORDER BY 1 ASC",
         "DISTINCT"},
        {__LINE__, {soQuoteAliases},
         "SELECT c.Name as \"Customer name\", o.OrderDate as \"Order date\"\n" + from + "\n" + where
             + "\nORDER BY 1 ASC",
         "aliases are the captions in quotes"},
        {__LINE__, {soSortByNames}, select + "\n" + from + "\n" + where + "\nORDER BY Customer_name ASC",
         "ORDER BY the alias"},
        {__LINE__,
         {soASCIIRFields, soSelectDistinct, soQuoteAliases, soBracketJoins, soBracketConditions, soSortByNames,
          soFilter},
         "SELECT DISTINCT c.Name as \"Customer name\", o.OrderDate as \"Order date\"\n" + bracketedFrom + "\n"
             + bracketedWhere + "\nORDER BY \"Customer name\" ASC",
         "all together: quoting wins over the ASCII filter; ORDER BY names the alias as the select list does"},
    };
    AddColumn(s.custName)->SetSorting(stAscending);
    AddColumn(s.orderDate);
    query.Filter()->SetLinkType(fltAll);
    AddCond(s.custCity, "Equal", "Paris");
    AddCond(s.orderTotal, "GreaterThan", "100");
    for (const OptionRow &row : rows) {
        query.SetSQLOptions(row.options);
        EXPECT_EQ(Sql(), row.expected) << "line " << row.line << ": " << row.reason;
    }
}

TEST_F(TNQueryTest, GivesNonAsciiAliasesAPositionalName)
{
    query.SetSQLOptions({soASCIIRFields, soQuoteAliases});
    AddColumn(s.custName);
    AddColumn(s.custCity, QStringLiteral("Größe"));
    EXPECT_EQ(Sql(), "SELECT c.Name as \"Customer name\", c.City as \"C2\"\nFROM " + J + "Customers c");
}

TEST_F(TNQueryTest, FiltersASingleTableQueryWithUnqualifiedFields)
{
    query.SetSQLOptions({soFilter});
    AddColumn(s.custName);
    AddCond(s.custCity, "Equal", "Paris");
    EXPECT_EQ(Sql(), "SELECT c.Name as Customer_name\nFROM " + J + "Customers c\nWHERE\n(\nCity = 'Paris'\n)");
}

struct LinkRow { int line; TDSLinkType type; bool ordersFirst; bool outerKeyword; QString join; const char *reason; };

TEST_F(TNQueryTest, WritesTheJoinWordOfEveryLinkType)
{
    const LinkRow rows[] = {
        {__LINE__, ltInner, false, true, "Customers c INNER JOIN  Orders o", "inner"},
        {__LINE__, ltOuterLeft, false, true, "Customers c LEFT OUTER JOIN  Orders o", "main table is Table1"},
        {__LINE__, ltOuterLeft, true, true, "Orders o RIGHT OUTER JOIN  Customers c", "main table is Table2"},
        {__LINE__, ltOuterRight, false, true, "Customers c RIGHT OUTER JOIN  Orders o", "mirror of left"},
        {__LINE__, ltOuterRight, true, true, "Orders o LEFT OUTER JOIN  Customers c", "mirror of left"},
        {__LINE__, ltOuterFull, false, true, "Customers c FULL JOIN  Orders o", "FULL takes no OUTER"},
        {__LINE__, ltOuterLeft, false, false, "Customers c LEFT JOIN  Orders o", "formats without OUTER"},
    };
    AddColumn(s.custName);
    AddColumn(s.orderDate);
    for (const LinkRow &row : rows) {
        s.customerOrders->SetLinkType(row.type);
        s.model->SQLFormats().SetUseOuterKeyword(row.outerKeyword);
        query.SetMainTableName(row.ordersFirst ? "Orders - o" : "Customers - c");
        query.BuildQuery();
        EXPECT_EQ(query.GetSQL().value(1), "FROM " + J + row.join + " ON (c.ID=o.CustomerID)" + J)
            << "line " << row.line << ": " << row.reason;
    }
}

struct ClauseRow { int line; const char *top; const char *limit; bool valid; const char *reason; };

// Row counts come from outside the model (options, dialogs): only counts pass.
TEST_F(TNQueryTest, TakesOnlyRowCountsForTopAndLimit)
{
    const ClauseRow rows[] = {
        {__LINE__, "10 PERCENT", "5 OFFSET 10", true, "the percent and offset forms"},
        {__LINE__, "(3) with ties", "5, 10", true, "brackets, ties and the comma form"},
        {__LINE__, "1 (SELECT sql FROM sqlite_master) AS s,", "", false, "a column smuggled in by TOP"},
        {__LINE__, "", "1; DROP TABLE t", false, "a second statement after LIMIT"},
    };
    AddColumn(s.custName);
    for (const ClauseRow &row : rows) {
        query.SetSQLTopClause(row.top);
        query.SetSQLLimitClause(row.limit);
        const QString raised = Raised<EConvertError>([&] { Sql(); });
        EXPECT_EQ(raised == "no error", row.valid) << "line " << row.line << ": " << row.reason << ": "
                                                   << raised.toStdString();
    }
}

TEST_F(TNQueryTest, WritesParametersAndKeepsTheirValueFormat)
{
    s.model->SQLFormats().SetWildcardChar('*');
    AddColumn(s.custName);
    query.Filter()->SetLinkType(fltAll);
    TSimpleCond *contains = AddCond(s.custName, "Contains");
    contains->SetValueIsParam(1, true);
    contains->GetParam(1)->SetValue("Smi");
    TSimpleCond *starts = AddCond(s.custCity, "StartsWith");
    starts->SetValueIsParam(1, true);
    EXPECT_EQ(Sql(), "SELECT c.Name as Customer_name\nFROM " + J
                         + "Customers c\nWHERE\n(\nc.Name like :Name AND\nc.City like :City\n)");
    EXPECT_EQ(contains->GetParam(1)->ValueFormat(), "*@v*");
    EXPECT_EQ(contains->GetParam(1)->GetFullValue(), "*Smi*");
    EXPECT_EQ(starts->GetParam(1)->ValueFormat(), "@v*");
}

TEST_F(TNQueryTest, SendsAggregateConditionsToHavingAndGroupsTheOtherColumns)
{
    AddColumn(s.custName);
    AddColumn(s.totalSales);
    query.Filter()->SetLinkType(fltAll);
    AddCond(s.custCity, "Equal", "Paris");
    AddCond(s.totalSales, "GreaterThan", "1000");
    const QString head = "SELECT c.Name as Customer_name, SUM(o.Total) as Total_sales\nFROM " + J
                         + "Customers c INNER JOIN  Orders o ON (c.ID=o.CustomerID)" + J;
    EXPECT_EQ(Sql(), head + "\nWHERE\n(\nc.City = 'Paris'\n)\nGROUP BY c.Name\nHAVING ( SUM(o.Total) >1000 )");
    query.SetSQLOptions({soBracketConditions});
    EXPECT_EQ(Sql().section('\n', -1), "HAVING ( (SUM(o.Total) >1000) )");
    query.SetSQLOptions({});
    TFilterBracket *none = query.AddBracket(query.Filter());
    none->SetLinkType(fltNone);
    AddCond(none, s.totalSales, "GreaterThan", "5000");
    TFilterBracket *any = query.AddBracket(query.Filter());
    AddCond(any, s.totalSales, "GreaterThan", "1");
    EXPECT_EQ(Sql().section('\n', -1),
              "HAVING ( SUM(o.Total) >1000 AND NOT ( SUM(o.Total) >5000 ) AND ( SUM(o.Total) >1 ) )")
        << "a link word and the next opener stay two words";
}

TEST_F(TNQueryTest, NestsBracketsAndLeavesOutDisabledOnes)
{
    AddColumn(s.custName);
    TFilterBracket *root = query.Filter();
    root->SetLinkType(fltAll);
    AddCond(s.custCity, "Equal", "Paris");
    TFilterBracket *any = query.AddBracket(root);
    AddCond(any, s.custCity, "Equal", "Rome");
    AddCond(any, s.custCity, "Equal", "Oslo");
    TFilterBracket *silent = query.AddBracket(root);
    silent->SetLinkType(fltNone);
    AddCond(silent, s.custName, "Equal", "X")->SetEnabled(false);
    AddCond(s.custVip, "Equal", "True")->SetEnabled(false);
    TFilterBracket *notAll = query.AddBracket(root);
    notAll->SetLinkType(fltNotAll);
    AddCond(notAll, s.custId, "GreaterThan", "5");
    EXPECT_EQ(Sql(), "SELECT c.Name as Customer_name\nFROM " + J
                         + "Customers c\nWHERE\n(\nc.City = 'Paris' AND\n(\nc.City = 'Rome' OR\nc.City = 'Oslo'\n) AND\n"
                           "NOT (\nc.ID >5\n)\n)");
    root->SetEnabled(false);
    EXPECT_EQ(Sql(), "SELECT c.Name as Customer_name\nFROM " + J + "Customers c");
}

TEST_F(TNQueryTest, SortsByEachColumnsSortOrderKeepingColumnOrderOnTies)
{
    AddColumn(s.custName)->SetSorting(stAscending);
    AddColumn(s.custCity)->SetSorting(stDescending);
    AddColumn(s.custId)->SetSorting(stAscending);
    AddColumn(s.custVip);
    query.RFields().GetRField(0)->SetSortOrder(2);
    query.RFields().GetRField(1)->SetSortOrder(1);
    query.RFields().GetRField(2)->SetSortOrder(2);
    EXPECT_EQ(Sql().section('\n', -1), "ORDER BY 2 DESC, 1 ASC, 3 ASC");
    query.RFields().SetJustSorting(true);
    EXPECT_EQ(Sql(), "SELECT *\nFROM " + J + "Customers c\nORDER BY c.City DESC, Customer_name ASC, Customer_ID ASC");
}

TEST_F(TNQueryTest, FillsTablesAndValuesOfPredefinedConditions)
{
    s.bigCustomers->Values().Items(0)->SetDataType(ftInteger);
    s.model->AddCondition("Named @", "c.ID = c.ID and @t.Name = '@1' and @m.ID > 0");
    AddColumn(s.orderDate);
    query.Filter()->SetLinkType(fltAll);
    query.AddCustomCondition(query.Filter(), s.bigCustomers)->SetValue(1, "3");
    query.AddCustomCondition(query.Filter(), s.vipOnly);
    query.AddCustomCondition(query.Filter(), s.model->Conditions().Items(2))->SetValue(1, "x");
    query.BuildQuery();
    EXPECT_EQ(query.QResult().WhereLines().join('\n'),
              "(\n(select count(*) from Orders x where x.CustomerID = c.ID) > 3 AND\nc.Vip = 'true' AND\n"
              "c.ID = c.ID and c.Name = 'x' and o.ID > 0\n)");
}

TEST_F(TNQueryTest, LetsTheBuildHandlerRewriteAConditionsText)
{
    AddColumn(s.custName);
    AddCond(s.custCity, "Equal", "Paris");
    query.OnBuildSQL = [](TFilterCond *, QString &text) { text = "(" + text + " OR 1=1)"; };
    query.BuildQuery();
    EXPECT_EQ(query.QResult().WhereLines().join('\n'), "(\n(c.City = 'Paris' OR 1=1)\n)");
}

TEST_F(TNQueryTest, BuildsOneFilterPerTable)
{
    query.Filter()->SetLinkType(fltAll);
    AddCond(s.custCity, "Equal", "Paris");
    AddCond(s.orderTotal, "GreaterThan", "100");
    AddCond(s.custName, "StartsWith", "A");
    AddCond(s.productName, "Equal", "Tea");
    query.BuildFilters();
    const TNTableFilterList &filters = query.TableFilters();
    ASSERT_EQ(filters.Count(), 3);
    EXPECT_EQ(filters.FindByTable(s.customers)->Filter(), "City = 'Paris' AND Name like 'A%'");
    EXPECT_EQ(filters.FindByTable(s.orders)->Filter(), "Total >100");
    EXPECT_EQ(filters.FindByTableName("PRODUCTS")->Filter(), "Name = 'Tea'");
    EXPECT_FALSE(query.BuildingFilters());
}

TEST_F(TNQueryTest, FailsWithoutTablesWithoutABuildAndWithoutAModel)
{
    EXPECT_TRUE(Raised<ENVellumError>([&] { query.BuildQuery(); }).endsWith(": Not enough information for building query"));
    EXPECT_EQ(Raised<ENQueryPanelError>([&] { query.GetSQL(); }), "8: Query was not built properly");
    EXPECT_THROW(TNQuery().BuildQuery(), ENQueryPanelError) << "no model";
}

TEST_F(TNQueryTest, FailsWithoutAPathAndStaysUsable)
{
    AddColumn(s.custName);
    AddColumn(s.auditNote);
    EXPECT_TRUE(Raised<ENQueryPanelError>([&] { query.BuildQuery(); })
                    .endsWith(": No path between table \"Customers\" and \"$s\""));
    EXPECT_FALSE(query.Building());
    query.RFields().Delete(1);
    EXPECT_EQ(Sql(), "SELECT c.Name as Customer_name\nFROM " + J + "Customers c");
}

} // namespace
