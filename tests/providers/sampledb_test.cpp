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
    static QStringList OperatorNames(const TDSField *field)
    {
        QStringList names;
        field->GetOperatorNames(names);
        return names;
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

TEST_F(SampleDatabaseImport, TypesEveryColumnAndOffersTheOperatorsOfItsType)
{
    struct Row { int line; const char *table; const char *column; TFieldType type; int size; QStringList operators; };
    const QStringList ordered{"Equal", "NotEqual", "LessThan", "LessOrEqual", "GreaterThan",
                              "GreaterOrEqual", "IsNull", "InList", "NotInList", "Between", "NotBetween"};
    const QStringList textual{"Equal", "NotEqual", "LessThan", "LessOrEqual", "GreaterThan",
                              "GreaterOrEqual", "IsNull", "InList", "NotInList", "StartsWith",
                              "NotStartsWith", "Contains", "NotContains", "Between", "NotBetween"};
    const QStringList memo{"IsNull", "StartsWith", "NotStartsWith", "Contains", "NotContains"};
    const QStringList boolean{"Equal", "NotEqual", "IsNull", "InList", "NotInList"};
    const Row rows[] = {
        {__LINE__, "products", "unit_price", ftCurrency, 0, ordered},
        {__LINE__, "products", "units_in_stock", ftSmallint, 0, ordered},
        {__LINE__, "products", "discontinued", ftBoolean, 0, boolean},
        {__LINE__, "products", "weight_kg", ftBCD, 3, ordered},
        {__LINE__, "products", "added_on", ftDate, 0, ordered},
        {__LINE__, "customers", "company_name", ftString, 60, textual},
        {__LINE__, "customers", "country_code", ftFixedChar, 2, textual},
        {__LINE__, "orders", "order_date", ftDateTime, 0, ordered},
        {__LINE__, "orders", "comment", ftMemo, 0, memo},
        {__LINE__, "shippers", "pickup_time", ftTime, 0, ordered},
        {__LINE__, "payments", "paid_at", ftTimeStamp, 0, ordered},
        {__LINE__, "Order Lines", "discount", ftFloat, 0, ordered},
        {__LINE__, "order_totals", "total", ftFloat, 0, ordered},
        {__LINE__, "employees", "photo", ftBlob, 0, {}},
    };
    for (const Row &row : rows) {
        const TDSField *field = Field(QString::fromUtf8(row.table), QString::fromUtf8(row.column));
        ASSERT_NE(field, nullptr) << "line " << row.line;
        EXPECT_EQ(field->FieldType(), row.type) << "line " << row.line;
        EXPECT_EQ(field->FieldSize(), row.size) << "line " << row.line;
        EXPECT_EQ(OperatorNames(field), row.operators) << "line " << row.line;
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

TEST_F(SampleDatabaseImport, KeepsApostrophesAndNonAsciiLettersInQueryValues)
{
    QStringList values;
    QStringList items;
    info.RunQuery(QStringLiteral("SELECT supplier_id, company_name FROM suppliers WHERE supplier_id <= 4 "
                                 "ORDER BY supplier_id"),
                  values, items);
    EXPECT_EQ(values, (QStringList{"1", "2", "3", "4"}));
    EXPECT_EQ(items, (QStringList{"Müller Feinkost GmbH", "O'Brien & Sons", "Øster Fisk A/S", "José's Cantina"}));
}

} // namespace
} // namespace vm20
