// The curated sample model checked against the sample database it describes.
#include "shopmodel.h"

#include "common/printers.h"
#include "model/vmglobal.h"
#include "providers/dburl.h"
#include "providers/sqldbinfo.h"

#include <QFile>
#include <QSet>

#include <gtest/gtest.h>

namespace vm20 {
namespace {

class ShopModel : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        db = new QSqlDatabase(
            OpenDatabaseUrl(QStringLiteral("sqlite:" VM20_BINARY_DIR "/examples/shop.sqlite"), true));
    }
    static void TearDownTestSuite()
    {
        CloseDatabase(*db);
        delete db;
        db = nullptr;
    }
    void SetUp() override { BuildShopModel(model, info); }

    QStringList Run(const QString &sql)
    {
        QStringList values;
        QStringList items;
        info.RunQuery(sql, values, items);
        return values;
    }
    TDSField *Field(const char *caption) const { return model.FieldByName(1, QString::fromUtf8(caption)); }

    static QSqlDatabase *db;
    TNSqlDBInfo info{db->connectionName()};
    TNCustomDBStructure model;
};

QSqlDatabase *ShopModel::db = nullptr;

TEST_F(ShopModel, ListsEveryFieldOnceUnderACaptionOfItsOwn)
{
    int listed = model.RootGroup().Count();
    for (int i = 0; i < model.FieldGroups().Count(); ++i)
        listed += model.FieldGroups().Items(i)->Count();
    EXPECT_EQ(listed, model.GetFieldCount());
    // SQL read back finds fields by caption, so two alike would be confused.
    QStringList captions;
    model.GetFieldNames(1, captions);
    EXPECT_EQ(captions.size(), QSet<QString>(captions.begin(), captions.end()).size())
        << captions.join(", ").toStdString();
}

// Whether they run on the database is left to the random queries of the e2e tests.
TEST_F(ShopModel, CalculatedFieldsNameTheirTablesAndOnlyTotalsAggregate)
{
    const struct { const char *caption, *table; bool aggregate; } rows[] = {
        {"Order total", "Order Lines", true}, {"Number of orders", "orders", true},
        {"Line amount", "Order Lines", false}, {"Sales person", "employees", false},
    };
    for (const auto &row : rows) {
        const TDSField *field = Field(row.caption);
        ASSERT_NE(field, nullptr) << row.caption;
        EXPECT_EQ(field->Tables().CommaText(), row.table) << row.caption;
        EXPECT_EQ(field->IsAggregate(), row.aggregate) << row.caption;
    }
}

TEST_F(ShopModel, PickListsOfferExactlyTheValuesTheDatabaseHolds)
{
    const auto listValues = [&](const char *caption) {
        QStringList values = static_cast<TDSListEditor *>(Field(caption)->ValueEditor())->Values();
        values.sort();
        return values;
    };
    EXPECT_EQ(listValues("Status"), Run(QStringLiteral("SELECT DISTINCT status FROM orders ORDER BY 1")));
    EXPECT_EQ(listValues("Payment method"), Run(QStringLiteral("SELECT DISTINCT method FROM payments ORDER BY 1")));

    auto *categories = static_cast<TDSSQLEditor *>(Field("Category")->ValueEditor());
    categories->SetOpened(true);
    EXPECT_EQ(categories->Items(), (QStringList{"Beverages", "Condiments", "Confections", "Dairy", "Grains",
                                                "Meat", "Produce", "Seafood"}));
}

TEST_F(ShopModel, PredefinedConditionsSelectOrdersOfTheSampleData)
{
    struct Row { int line; const char *caption; const char *value; int orders; };
    const Row rows[] = {
        {__LINE__, "Order is not yet shipped", "", 58},
        {__LINE__, "Ordered in the year ", "2023", 400},
        {__LINE__, "Order has returns", "", 58},
    };
    QStringList captions;
    model.GetConditionCaptions(captions);
    ASSERT_EQ(captions.size(), int(std::size(rows)));
    for (int i = 0; i < model.Conditions().Count(); ++i) {
        const Row &row = rows[i];
        const TDSCondition *condition = model.Conditions().Items(i);
        EXPECT_EQ(condition->Caption(), QString::fromUtf8(row.caption)) << "line " << row.line;
        ASSERT_EQ(condition->Tables().Count(), 1) << "line " << row.line;
        EXPECT_EQ(condition->Tables().Items(0)->TableName(), QStringLiteral("orders")) << "line " << row.line;
        QString where = condition->SQLExpr();
        where.replace(QStringLiteral("@1"), QString::fromUtf8(row.value));
        EXPECT_EQ(Run(QStringLiteral("SELECT COUNT(*) FROM orders WHERE ") + where),
                  QStringList{QString::number(row.orders)})
            << "line " << row.line;
    }
}

QStringList FileLines(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? SplitAnsiText(file.readAll()) : QStringList{};
}

// examples/ holds what the curation writes; a stale file means the database
// script or the curation changed without vm20_update_sample_model being run.
TEST_F(ShopModel, IsStoredInExamplesAsTheCurationWritesItAndReadsBack)
{
    const QString text = QStringLiteral(VM20_SOURCE_DIR "/examples/shop.model");
    QStringList lines;
    model.SaveToStrings(lines);
    EXPECT_EQ(FileLines(text), lines);
    TNCustomDBStructure loaded;
    loaded.SetDatabaseInfo(&info);
    loaded.LoadFromFile(text);
    QStringList reread;
    loaded.SaveToStrings(reread);
    EXPECT_EQ(reread, lines);
}

} // namespace
} // namespace vm20
