#include "common/printers.h"
#include "common/raises.h"
#include "model/dbstructure.h"
#include "model/errors.h"
#include "richmodel.h"

#include <gtest/gtest.h>

namespace vm20 {
namespace {

// A provider that knows one table and can be switched off.
class TOneTableInfo : public TNDBInfo
{
public:
    bool Connected() const override { return FConnected; }
    void FieldsByTable(const QString &tableName, TDBFieldList &list) override
    {
        ++Requests;
        if (tableName == "Orders") {
            list.Add("ID", 4, ftInteger);
            list.Add("Ship Name", 40, ftWideString);
            list.Add("Scan", 0, ftBlob);
        }
    }
    bool FConnected = true;
    int Requests = 0;
};

class TNCustomDBStructureTest : public ::testing::Test
{
protected:
    TNCustomDBStructureTest()
    {
        model.OnChange = [this](TNCustomDBStructure *sender) {
            EXPECT_EQ(sender, &model);
            ++changes;
        };
    }
    TNCustomDBStructure model;
    int changes = 0;
};

TEST_F(TNCustomDBStructureTest, NewFieldIdsFollowTheLargestPresentOne)
{
    TDSTable *t = testing::AddTable(model, "T", "T");
    auto withId = [&](int id) {
        auto field = std::make_unique<TDSField>(&model);
        field->SetID(id);
        field->Tables().Add(t);
        return model.AddFieldRef(std::move(field));
    };
    withId(3);
    withId(7);
    EXPECT_EQ(model.GetLastFieldID(), 7);
    EXPECT_EQ(model.GetField(withId(0))->ID(), 8);
    model.DelField(2);
    model.DelField(1);
    EXPECT_EQ(model.GetField(withId(0))->ID(), 4) << "with 7 gone the next is 4";
    model.GetField(0)->SetID(20);
    EXPECT_EQ(model.GetLastFieldID(), 20);
    EXPECT_EQ(model.FieldByID(3), nullptr);
    EXPECT_EQ(model.FieldByID(4), model.GetField(1));
}

TEST_F(TNCustomDBStructureTest, DataFieldsNeedAProviderAndAreTypedByIt)
{
    TDSTable *orders = testing::AddTable(model, "Orders", "Orders");
    EXPECT_EQ(Raised<ENVellumError>([&] { model.AddField(nfkData, "ID", "ID", orders); }),
              "11: DatabaseInfo is not specified");

    TOneTableInfo info;
    model.SetDatabaseInfo(&info);
    TDSField *shipName = model.GetField(model.AddField(nfkData, "Ship Name", "Ship", orders));
    EXPECT_TRUE(shipName->Quoted()) << "a column with a blank is quoted";
    TDSField *scan = model.GetField(model.AddField(nfkData, "scan", "Scan", orders));
    EXPECT_FALSE(scan->UseInResult()) << "binary columns are not offered as results";
    EXPECT_EQ(info.Requests, 1) << "the provider caches the last table";

    EXPECT_EQ(Raised<ENVellumError>([&] { model.AddField(nfkData, "Missing", "M", orders); }),
              "10: Can not find field \"Missing\" in table \"Orders\"");
    EXPECT_EQ(model.GetFieldCount(), 2);

    info.FConnected = false;
    TDSField *loose = model.GetField(model.AddField(nfkData, "Missing", "M", orders));
    EXPECT_EQ(loose->FieldType(), ftString);

    TDSField *virt = model.GetField(model.AddField(nfkVirtual, "Orders.ID + 1", "Next", nullptr));
    EXPECT_EQ(virt->Tables().CommaText(), "Orders");
}

TEST_F(TNCustomDBStructureTest, TableByNameComparesTheTextOfEachMode)
{
    testing::BuildRichModel(model);
    model.DMOptions().SetDefaultDBOwner("dbo");
    // found: the TableName, or nullptr for none
    const struct { int line; int mode; const char *name; const char *found; } rows[] = {
        {__LINE__, 0, "orders", "Orders"},
        {__LINE__, 1, "ORDER_LINES", "Order Lines"},
        {__LINE__, 2, "products, ALL", "Products"},
        {__LINE__, 3, "Customers - c", "Customers"},
        {__LINE__, 4, "orders o with nolock", "Orders"},
        {__LINE__, 5, "DBO.Employees", "Employees"},
        {__LINE__, 9, "Orders", nullptr},
    };
    for (const auto &row : rows) {
        const TDSTable *table = model.TableByName(row.mode, row.name);
        EXPECT_EQ(table ? table->TableName() : QString(), row.found ? row.found : "") << "line " << row.line;
    }
}

TEST_F(TNCustomDBStructureTest, AliasLookupFollowsRenamesAndPrefersTheFirstTable)
{
    TDSTable *a = testing::AddTable(model, "A", "A");
    TDSTable *b = testing::AddTable(model, "B", "B");
    a->SetTableAlias("X");
    EXPECT_EQ(model.TableByName(1, "a"), nullptr);
    b->SetTableAlias("x");
    EXPECT_EQ(model.TableByName(1, "X"), a);
    a->SetTableAlias("Y");
    EXPECT_EQ(model.TableByName(1, "X"), b);
}

TEST_F(TNCustomDBStructureTest, FieldByNameComparesTheTextOfEachMode)
{
    testing::BuildRichModel(model);
    model.SQLFormats().SetQuoteSymbol1('[');
    model.SQLFormats().SetQuoteSymbol2(']');
    // found: the DisplayName, or nullptr for none
    const struct { int line; int mode; const char *name; const char *found; } rows[] = {
        {__LINE__, 0, "unit price", "Unit price"},
        {__LINE__, 1, "ORDER DATE", "Order date"},
        {__LINE__, 2, "order lines.quantity", "Quantity"},
        {__LINE__, 2, "Order_Lines.Quantity", nullptr},     // FullName uses the table name
        {__LINE__, 3, "[Order_Lines].[Unit Price]", "Unit price"},   // quote symbols ignored
        {__LINE__, 3, "O.Order Date", nullptr},
        {__LINE__, 0, "Name", "Customer name"},              // first match in model order
        {__LINE__, 7, "Name", nullptr},
    };
    for (const auto &row : rows) {
        const TDSField *field = model.FieldByName(row.mode, row.name);
        EXPECT_EQ(field ? field->DisplayName() : QString(), row.found ? row.found : "") << "line " << row.line;
    }
}

TEST_F(TNCustomDBStructureTest, ChangesAreSignalledUnlessAnUpdateIsInProgress)
{
    model.AddTable("A", "A");
    EXPECT_EQ(changes, 1);
    model.BeginUpdate();
    model.AddTable("B", "B");
    model.AddLinkByExpr("A-B:x=y");
    model.AddOperator("Op", "op", "@f", "", {});
    model.EndUpdate();
    EXPECT_EQ(changes, 1) << "EndUpdate does not notify";
    model.Changed();
    EXPECT_EQ(changes, 2);
    model.ClearStructure();
    EXPECT_EQ(changes, 3) << "clearing is one change";
}

TEST_F(TNCustomDBStructureTest, LinkLinesAreReadAndWrittenInOneLineForm)
{
    testing::AddTable(model, "Orders", "Orders");
    testing::AddTable(model, "Order-Lines", "Lines");
    testing::AddTable(model, "Order", "Order");
    testing::AddTable(model, "Lines", "Lines");
    model.LoadLinksFromStrings({"Order-Lines-Orders:OrderID=ID,Kind!=val:2", "",
                                "orders-order: a <= b , fld:c>d",
                                "Order-Lines:x=y"});
    ASSERT_EQ(model.GetLinkCount(), 3);
    EXPECT_EQ(model.GetLink(0)->Table1()->TableName(), "Order-Lines") << "the split that names two tables";
    EXPECT_EQ(model.GetLink(0)->Operators(), (QStringList{"=", "<>"}));
    EXPECT_EQ(model.GetLink(2)->Table1()->TableName(), "Order");
    QStringList lines;
    model.SaveLinksToStrings(lines);
    EXPECT_EQ(lines, (QStringList{"Order-Lines-Orders:OrderID=ID,Kind<>val:2",
                                  "Orders-Order:a<=b,fld:c>d", "Order-Lines:x=y"}));
}

TEST_F(TNCustomDBStructureTest, BadLinkLinesRaiseAndAddNothing)
{
    testing::AddTable(model, "A", "A");
    testing::AddTable(model, "B", "B");
    const struct { int line; const char *text, *raised; } rows[] = {
        {__LINE__, "A-C:x=y", "4: No such table C"},
        {__LINE__, "AB:x=y", "4: No such table AB"},
        {__LINE__, "A-B x=y", "12: Invalid link text \"A-B x=y\""},
    };
    for (const auto &row : rows)
        EXPECT_EQ(Raised<ENVellumError>([&] { model.AddLinkByExpr(row.text); }), row.raised) << "line " << row.line;
    EXPECT_EQ(model.GetLinkCount(), 0);
}

TEST_F(TNCustomDBStructureTest, ExpressionTablesAreFoundByAliasThenByName)
{
    testing::BuildRichModel(model);
    TSimpleDSTableList tables;
    QStringList columns;
    model.ExcludeTablesBySQLExpr(
        "SUM(o.Freight) + \"Order Lines\".\"Unit Price\" - Products.Kind + x.y + 'C.City' + E . Hired",
        tables, columns);
    EXPECT_EQ(tables.CommaText(), "Orders,Order Lines,Products,Employees");
    EXPECT_EQ(columns, (QStringList{"o.Freight", "\"Order Lines\".\"Unit Price\"", "Products.Kind",
                                    "E . Hired"}));
    model.ExcludeTablesBySQLExpr("'unterminated . \" x", tables, columns);
    EXPECT_EQ(tables.Count(), 0);
}

TEST_F(TNCustomDBStructureTest, DeletingATableDropsItsLinksAndEveryReferenceToIt)
{
    testing::BuildRichModel(model);
    TDSTable *orders = model.TableByName(0, "Orders");
    TDSTable *customers = model.TableByName(0, "Customers");
    TDSCondition *condition = model.Conditions().Items(0);
    TDSField *total = model.FieldByName(1, "Order total");
    ASSERT_NE(model.GetPath("C", "Order_Lines"), nullptr);
    const int links = model.GetLinkCount();
    model.DelTable(model.IndexOfTable(orders));
    EXPECT_EQ(model.GetLinkCount(), links - 3);
    EXPECT_EQ(customers->LinkCount(), 0);
    EXPECT_EQ(condition->Tables().CommaText(), "Customers");
    EXPECT_EQ(total->Tables().CommaText(), "Order Lines");
    EXPECT_EQ(model.GetPath("C", "Order_Lines"), nullptr);
    EXPECT_EQ(Raised<ENVellumError>([&] { model.DelTable(99); }), "1: Invalid table index 99");
}

TEST_F(TNCustomDBStructureTest, ClearStructureLeavesTheStateOfANewModel)
{
    testing::BuildRichModel(model);
    model.SetExOperators({xoBetween});
    model.ClearStructure();
    EXPECT_EQ(model.GetTableCount() + model.GetFieldCount() + model.GetLinkCount() + model.FieldGroups().Count()
                  + model.RootGroup().Count() + model.Conditions().Count(), 0);
    EXPECT_EQ(model.DefaultMainTable(), nullptr);
    EXPECT_EQ(model.GetOperatorCount(), 9) << "the operators the current groups allow";

    testing::BuildRichModel(model);
    EXPECT_EQ(model.GetField(0)->ID(), 1);
}

} // namespace
} // namespace vm20
