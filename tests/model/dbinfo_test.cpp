#include "common/printers.h"
#include "common/raises.h"
#include "model/dbstructure.h"
#include "model/errors.h"

#include <gtest/gtest.h>

namespace vm20 {
namespace {

TEST(TDBFieldList, TextFormNumbersColumnsFromOne)
{
    TDBFieldList list;
    list.Add("ID", 4, ftInteger);
    list.Add("Ship Name", 40, ftWideString);
    QStringList lines{"stale"};
    list.SaveToStrings(lines);
    EXPECT_EQ(lines, (QStringList{"Count=2", "F1Name=ID", "F1Size=4", "F1Type=ftInteger", "F2Name=Ship Name",
                                  "F2Size=40", "F2Type=ftWideString"}));
    TDBFieldList back;
    back.SetText(list.GetText());
    EXPECT_EQ(back.FindByName("ship name"), back.Items(1));
}

TEST(TDBFieldList, LenientReadingOfDamagedText)
{
    const struct { int line; QStringList text; int count; const char *firstName; int firstSize; int firstType;
    } rows[] = {
        {__LINE__, {"Count=1", "F1Size=abc", "F1Type=ftNothing"}, 1, "", 0, -1},
        {__LINE__, {"count=1", "f1name=A", "F1Type=FTSTRING", "F1Size= 7 "}, 1, "A", 7, ftString},
        {__LINE__, {"Count=2000000000", "F1Name=A"}, 2, "A", 0, -1},   // cut to the line count
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.line);
        TDBFieldList list;
        list.Add("old", 1, ftString);
        list.LoadFromStrings(row.text);
        ASSERT_EQ(list.Count(), row.count);
        if (row.count) {
            EXPECT_EQ(list.Items(0)->FieldName(), row.firstName);
            EXPECT_EQ(list.Items(0)->FieldSize(), row.firstSize);
            EXPECT_EQ(int(list.Items(0)->FieldType()), row.firstType);
        }
    }
}

class TNDBInfoTest : public ::testing::Test
{
protected:
    TNDBInfoTest()
    {
        info.OnFieldsRequest = [this](TNDBInfo *, const QString &table, TDBFieldList &list) {
            asked.append(table);
            if (table == "boom")
                throw ENDBInfoError(1, "connection lost");
            list.Add(table + "_id", 4, ftInteger);
        };
    }
    TNDBInfo info;
    QStringList asked;
};

TEST_F(TNDBInfoTest, CachesTheFieldListOfTheTableAskedLastComparedExactlyButNotAFailure)
{
    EXPECT_EQ(info.GetFieldList("Orders").Items(0)->FieldName(), "Orders_id");
    info.GetFieldList("Orders");
    info.GetFieldList("orders");
    info.GetFieldList("Orders");
    EXPECT_EQ(asked, (QStringList{"Orders", "orders", "Orders"}));
    info.ResetFieldList();
    info.GetFieldList("Orders");
    EXPECT_EQ(asked.size(), 4);
    EXPECT_THROW(info.GetFieldList("boom"), ENDBInfoError);
    EXPECT_THROW(info.GetFieldList("boom"), ENDBInfoError);
    EXPECT_EQ(asked.size(), 6) << "a failed request is not served from the cache";
}

TEST_F(TNDBInfoTest, EventsWinOverTheVirtualFallbacks)
{
    class TFallbacks : public TNDBInfo
    {
    public:
        void TablesByDatabase(QStringList &list) override { list << "FromFallback"; }
        void DatabaseChanged() override { ++Changes; }
        int Changes = 0;
    } provider;
    EXPECT_EQ(provider.GetTableNamesAsText(), "FromFallback\n");
    provider.OnTablesRequest = [](TNDBInfo *, QStringList &list) { list << "FromEvent"; };
    EXPECT_EQ(provider.GetTableNamesAsText(), "FromEvent\n");
    provider.SetCurrentDBName("shop");
    provider.SetCurrentDBName("shop");
    EXPECT_EQ(provider.Changes, 1);
}

// A provider described entirely by event handlers, as an application would.
class RetriveDataModelInfoTest : public ::testing::Test
{
protected:
    RetriveDataModelInfoTest()
    {
        info.OnTablesRequest = [](TNDBInfo *, QStringList &list) {
            list << "Customers" << "Order Lines=Order lines" << "" << "Orders";
        };
        info.OnLinksRequest = [this](TNDBInfo *, QStringList &list) {
            list << "Orders-Customers:CustomerID=ID" << links;
        };
        info.OnFieldsRequest = [](TNDBInfo *, const QString &table, TDBFieldList &list) {
            if (table == "Customers") {
                list.Add("ID", 4, ftAutoInc);
                list.Add("Name", 50, ftString);
                list.Add("Photo", 0, ftBlob);
            } else if (table == "Orders") {
                list.Add("ID", 4, ftInteger);
                list.Add("CustomerID", 4, ftInteger);
            } else {
                list.Add("Unit Price", 8, ftCurrency);
            }
        };
        model.SetDatabaseInfo(&info);
    }
    TNDBInfo info;
    TNCustomDBStructure model;
    QStringList links;
};

TEST_F(RetriveDataModelInfoTest, BuildsTablesLinksGroupsAndTypedFields)
{
    model.RetriveDataModelInfo();
    QStringList names;
    model.GetTableNames(0, names);
    EXPECT_EQ(names, (QStringList{"Customers", "Order Lines", "Orders"}));
    EXPECT_TRUE(model.GetTable(1)->Quoted());

    model.FieldGroups().GetGroupNames(names);
    EXPECT_EQ(names, (QStringList{"Customers", "Order Lines", "Orders"})) << "a group per table, no root fields";
    const TDSField *photo = model.FieldByName(2, "Customers.Photo");
    EXPECT_FALSE(photo->UseInResult());
    EXPECT_FALSE(photo->UseInConditions()) << "no operator applies to a blob";
    const TDSField *price = model.FieldByName(0, "Unit Price");
    EXPECT_EQ(price->SQLExpr(), "Order_Lines.\"Unit Price\"");
    EXPECT_EQ(model.FieldByName(2, "Customers.Name")->OperatCount(), 15);
}

TEST_F(RetriveDataModelInfoTest, RequiresAProviderAndLeavesACleanModelOnFailure)
{
    links << "Orders-Nowhere:a=b";
    model.AddTable("Old", "Old");
    EXPECT_EQ(Raised<ENDBStructError>([&] { model.RetriveDataModelInfo(); }), "4: No such table Nowhere");
    EXPECT_EQ(model.GetTableCount(), 0);

    auto provider = std::make_unique<TNDBInfo>();
    model.SetDatabaseInfo(provider.get());
    provider.reset();
    EXPECT_EQ(model.DatabaseInfo(), nullptr) << "a provider leaving the model is forgotten";
}

TEST_F(RetriveDataModelInfoTest, AttachingHandsOverKeptDescriptionAndTableNamePattern)
{
    class TRemembering : public TNDBInfo
    {
    public:
        void LoadInfo(const QStringList &lines) override { Loaded = lines; }
        QStringList Loaded;
    } provider;
    provider.SetTableNameFormat("OWNER.TABLE");
    model.SetDBSpecInfo({"Server=x"});
    model.SQLFormats().SetFullTableName("");
    model.SetDatabaseInfo(&provider);
    EXPECT_EQ(provider.Loaded, QStringList{"Server=x"});
    EXPECT_EQ(model.SQLFormats().FullTableName(), "OWNER.TABLE");
}

} // namespace
} // namespace vm20
