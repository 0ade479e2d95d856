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

TEST_F(SampleDatabaseImport, TypesTheColumnsSoThatEachOffersTheOperatorsItCanUse)
{
    struct Row { int line; const char *table; const char *column; TFieldType type; int size; int operators; };
    const Row rows[] = {
        {__LINE__, "products", "unit_price", ftCurrency, 0, 11},
        {__LINE__, "products", "discontinued", ftBoolean, 0, 5},
        {__LINE__, "products", "weight_kg", ftBCD, 3, 11},
        {__LINE__, "customers", "country_code", ftFixedChar, 2, 15},
        {__LINE__, "orders", "comment", ftMemo, 0, 5},
        {__LINE__, "payments", "paid_at", ftTimeStamp, 0, 11},
        {__LINE__, "order_totals", "total", ftFloat, 0, 11},
        {__LINE__, "employees", "photo", ftBlob, 0, 0},
    };
    for (const Row &row : rows) {
        const TDSField *field = Field(QString::fromUtf8(row.table), QString::fromUtf8(row.column));
        ASSERT_NE(field, nullptr) << "line " << row.line;
        EXPECT_EQ(field->FieldType(), row.type) << "line " << row.line;
        EXPECT_EQ(field->FieldSize(), row.size) << "line " << row.line;
        EXPECT_EQ(field->OperatCount(), row.operators) << "line " << row.line;
        EXPECT_EQ(field->GroupName(), QString::fromUtf8(row.table)) << "line " << row.line;
    }
    // A blob can be neither compared nor shown.
    const TDSField *photo = Field(QStringLiteral("employees"), QStringLiteral("photo"));
    EXPECT_FALSE(photo->UseInConditions());
    EXPECT_FALSE(photo->UseInResult());
    EXPECT_EQ(model.GetFieldCount(), 77);
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
