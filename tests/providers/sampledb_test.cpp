// The sample shop database imported into a model through the Qt Sql provider.
#include "common/printers.h"
#include "model/dbstructure.h"
#include "providers/dburl.h"
#include "providers/sqldbinfo.h"

#include <gtest/gtest.h>

namespace vm20 {
namespace {

class SampleDatabaseImport : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        db = new QSqlDatabase(OpenDatabaseUrl(QStringLiteral("sqlite:" VM20_BINARY_DIR "/examples/shop.sqlite"),
                                              true));
    }
    static void TearDownTestSuite()
    {
        CloseDatabase(*db);
        delete db;
        db = nullptr;
    }
    void SetUp() override
    {
        model.SetDatabaseInfo(&info);
        model.RetriveDataModelInfo();
    }

    TDSField *Field(const QString &table, const QString &column) const
    {
        return model.FieldByName(2, table + QLatin1Char('.') + column);
    }

    static QSqlDatabase *db;
    TNSqlDBInfo info{db->connectionName()};
    TNCustomDBStructure model;
};

QSqlDatabase *SampleDatabaseImport::db = nullptr;

TEST_F(SampleDatabaseImport, MakesOneTableAndOneGroupPerTableAndView)
{
    QStringList tables;
    model.GetTableNames(0, tables);
    const QStringList expected{"regions", "categories", "suppliers", "shippers", "products",
                               "customers", "employees", "orders", "Order Lines", "payments",
                               "returns", "order_totals"};
    EXPECT_EQ(tables, expected);
    QStringList groups;
    model.FieldGroups().GetGroupNames(groups);
    EXPECT_EQ(groups, expected);
    EXPECT_EQ(model.DefaultMainTable(), model.GetTable(0));

    const TDSTable *lines = model.TableByName(0, QStringLiteral("Order Lines"));
    ASSERT_NE(lines, nullptr);
    EXPECT_TRUE(lines->Quoted());
    EXPECT_EQ(lines->TableAlias(), QStringLiteral("Order_Lines"));
}

TEST_F(SampleDatabaseImport, TypesEveryColumnAndKeepsBlobsOutOfConditionsAndResults)
{
    EXPECT_EQ(model.GetFieldCount(), 77);
    for (int i = 0; i < model.GetFieldCount(); ++i)
        EXPECT_NE(model.GetField(i)->FieldType(), ftUnknown) << model.GetField(i)->FullName().toStdString();
    const TDSField *photo = Field(QStringLiteral("employees"), QStringLiteral("photo"));
    ASSERT_NE(photo, nullptr);
    EXPECT_EQ(photo->FieldType(), ftBlob);
    EXPECT_FALSE(photo->UseInConditions());
    EXPECT_FALSE(photo->UseInResult());
    const TDSField *total = Field(QStringLiteral("order_totals"), QStringLiteral("total"));
    ASSERT_NE(total, nullptr);
    EXPECT_EQ(total->FieldType(), ftFloat) << "a computed view column is typed by its values";
}

TEST_F(SampleDatabaseImport, LinksTheTablesAsTheirForeignKeysSay)
{
    QStringList links;
    model.SaveLinksToStrings(links);
    EXPECT_EQ(links, (QStringList{
                         "products-categories:category_id=category_id",
                         "products-suppliers:supplier_id=supplier_id",
                         "customers-regions:region_id=region_id",
                         "employees-regions:region_id=region_id",
                         "orders-customers:customer_id=customer_id",
                         "orders-employees:employee_id=employee_id",
                         "orders-shippers:shipper_id=shipper_id",
                         "Order Lines-orders:order_id=order_id",
                         "Order Lines-products:product_id=product_id",
                         "payments-orders:order_id=order_id",
                         "returns-Order Lines:order_id=order_id,line_no=line_no",
                     }));
    const TDSLink *back = model.FindLink(QStringLiteral("returns"), QStringLiteral("Order Lines"));
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->SQLExpr(),
              QStringLiteral("(returns.order_id=Order_Lines.order_id) and (returns.line_no=Order_Lines.line_no)"));
}

} // namespace
} // namespace vm20
