// Result columns: expressions, aliases, sorting names and their text sections.
#include "query/resultfield.h"
#include "shopquery.h"

using namespace vm20;
using namespace shop;

namespace {

class TRFieldListTest : public ::testing::Test
{
protected:
    ShopModel s = MakeShopModel();
    TRFieldList list{s.model.get()};
};

TEST_F(TRFieldListTest, ExpandsFormulasInIncreasingPlaceholderOrder)
{
    TResultField *product = list.Add("Amount", {s.lineQty, s.linePrice}, "@1 * @2");
    EXPECT_EQ(product->GetSQLExpr(), "Order_Lines.Qty * Order_Lines.\"Unit Price\"");
    EXPECT_EQ(product->GetNormalSQLExpr(), "Order_Lines.\"Qty\" * Order_Lines.\"Unit Price\"");
    std::vector<TDSField *> ten(10, s.custCity);
    ten.front() = s.custName;
    EXPECT_EQ(list.Add("Ten", ten, "@10")->GetSQLExpr(), "c.Name0") << "@1 is replaced inside @10 first";
}

struct AliasRow { int line; bool useAliases, quote, ascii; QString caption; QString alias; const char *reason; };

TEST_F(TRFieldListTest, MakesAliasesFromCaptions)
{
    const AliasRow rows[] = {
        {__LINE__, true, false, true, "2nd Total", "ndTotal", "a leading digit is dropped"},
        {__LINE__, true, false, true, " 2nd", "2nd", "a digit after the first character stays"},
        {__LINE__, true, false, true, "Größe-1", "Gre1", "only ASCII letters, digits and _"},
        {__LINE__, false, false, false, "Customer name", "", "no aliases at all"},
    };
    TResultField *column = list.Add("x", {s.custName}, "");
    for (const AliasRow &row : rows) {
        list.SetUseAliases(row.useAliases);
        list.SetQuoteAliases(row.quote);
        list.SetAsciiAliases(row.ascii);
        column->SetCaption(row.caption);
        column->GenerateAlias();
        EXPECT_EQ(column->Alias(), row.alias) << "line " << row.line << ": " << row.reason;
    }
}

TEST_F(TRFieldListTest, ComparesAliasAndFieldNameWithoutCaseOnlyInTheSelectList)
{
    TResultField *column = list.Add("Customer", {s.custName}, "");
    column->SetNumber(3);
    column->SetAlias("name");
    EXPECT_EQ(column->GetSelectExpr(), "c.Name");
    EXPECT_EQ(column->GetOrderName(), "name");
    column->SetAlias("Name");
    EXPECT_EQ(column->GetOrderName(), "c.Name");
    column->SetAlias("");
    EXPECT_EQ(column->GetOrderName(), "3");
    list.SetQuoteAliases(true);
    column->SetAlias("Who");
    EXPECT_EQ(column->GetSelectExpr(), "c.Name as \"Who\"");
}

struct SQLAliasRow { int line; bool quote; QString caption; QString select; QString order; const char *reason; };

// Whatever a caption holds, the select list and ORDER BY name one column by
// one identifier, written the same in both places.
TEST_F(TRFieldListTest, QuotesEveryAliasThatIsNotOnePlainName)
{
    const SQLAliasRow rows[] = {
        {__LINE__, false, "Customer name", "c.Name as Customer_name", "Customer_name", "a plain name stays bare"},
        {__LINE__, false, "Größe", "c.Name as Größe", "Größe", "letters of any script are plain"},
        {__LINE__, false, "Weight (kg)", "c.Name as \"Weight_(kg)\"", "\"Weight_(kg)\"", "brackets"},
        {__LINE__, false, "2nd", "c.Name as \"2nd\"", "\"2nd\"", "a leading digit"},
        {__LINE__, false, "order", "c.Name as \"order\"", "\"order\"", "a reserved word"},
        {__LINE__, true, "Customer Name", "c.Name as \"Customer Name\"", "\"Customer Name\"",
         "quoted aliases sort by the quoted alias"},
        {__LINE__, true, "say \"hi\"", "c.Name as \"say \"\"hi\"\"\"", "\"say \"\"hi\"\"\"",
         "the quote doubled inside"},
    };
    TResultField *column = list.Add("x", {s.custName}, "");
    for (const SQLAliasRow &row : rows) {
        list.SetQuoteAliases(row.quote);
        column->SetCaption(row.caption);
        column->GenerateAlias();
        EXPECT_EQ(column->GetSelectExpr(), row.select) << "line " << row.line << ": " << row.reason;
        EXPECT_EQ(column->GetOrderName(), row.order) << "line " << row.line << ": " << row.reason;
    }
    s.model->SQLFormats().SetQuoteSymbol1('[');
    s.model->SQLFormats().SetQuoteSymbol2(']');
    column->SetAlias("a]b");
    EXPECT_EQ(column->GetSelectExpr(), "c.Name as [a]]b]") << "the closing character is the one doubled";
}

TEST_F(TRFieldListTest, TellsAggregatedColumnsByFieldOrFormula)
{
    EXPECT_TRUE(list.Add("", {s.totalSales}, "")->GetAgregate());
    EXPECT_TRUE(list.Add("", {s.custId}, "Count(@1)")->GetAgregate());
    EXPECT_FALSE(list.Add("", {s.custId}, "List(@1)")->GetAgregate()) << "list( is no aggregate here";
    EXPECT_FALSE(list.Add("", {s.custId, s.totalSales}, "@1 + @2")->GetAgregate()) << "only the first field counts";
}

TEST_F(TRFieldListTest, ResolvesTypedExpressionsToModelFields)
{
    struct Row { int line; QString expr; QString formula; int fields; QString caption; } rows[] = {
        {__LINE__, "SUM(o.Total)", "@1", 1, "Total sales"},
        {__LINE__, "Order_Lines.Qty * p.Weight + 1.5", "@1 * @2 + 1.5", 2, "Order_Lines.Qty * p.Weight + 1.5"},
        {__LINE__, "c.Name || ' c.City ' || c.Name", "@1 || ' c.City ' || @1", 1, "c.Name || ' c.City ' || c.Name"},
        {__LINE__, "upper(x.y)", "upper(x.y)", 0, "upper(x.y)"},
        {__LINE__, "Order_Lines.\"Unit Price\"", "@1", 1, "Unit price"},
    };
    for (const Row &row : rows) {
        TResultField *column = list.AddBySQLExpr(row.expr, QString(), stDescending, 2);
        EXPECT_EQ(column->Formula(), row.formula) << "line " << row.line;
        EXPECT_EQ(column->DSFields().Count(), row.fields) << "line " << row.line;
        EXPECT_EQ(column->Caption(), row.caption) << "line " << row.line;
        EXPECT_EQ(column->Sorting(), stDescending);
    }
    EXPECT_EQ(list.AddByExpression("", "Products.Weight * 2", stNoSort, 0)->GetSQLExpr(), "p.Weight * 2")
        << "full names are read first";
}

TEST_F(TRFieldListTest, ReadsOlderVersionsByName)
{
    struct Row { int line; QString version; QString aliasKey; QString fields; } rows[] = {
        {__LINE__, "Version=1.3", "Name", "Customers.Name,Nowhere.Field"},
        {__LINE__, "Version=1.9", "Alias", "c.Name"},
        {__LINE__, "", "Alias", "c.Name"},   // a missing version reads as 1.7
        {__LINE__, "Version=2.0", "Alias", QString::number(s.custName->ID()) + ",x,999"},
    };
    for (const Row &row : rows) {
        const QStringList lines = {"[RFields]", "Count=1", row.version, "", "[RField1]", "Formula=@1",
                                   "Fields=" + row.fields, row.aliasKey + "=Who", "Caption=Customer", ""};
        list.LoadFromStrings(lines);
        ASSERT_EQ(list.Count(), 1) << "line " << row.line;
        const TResultField *column = list.GetRField(0);
        EXPECT_EQ(column->Alias(), "Who") << "line " << row.line;
        ASSERT_EQ(column->DSFields().Count(), 1) << "line " << row.line << ": unknown entries are skipped";
        EXPECT_EQ(column->DSFields().Items(0), s.custName) << "line " << row.line;
    }
}

TEST_F(TRFieldListTest, StopsAtAMissingSectionWhateverTheCountSays)
{
    const QStringList lines = {"[RFields]", "Count=2000000000", "", "[RField1]", "Formula=@1", "Fields=1", ""};
    EXPECT_EQ(list.LoadFromStrings(lines), 7);
    EXPECT_EQ(list.Count(), 1);
}

} // namespace
