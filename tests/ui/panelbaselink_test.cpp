// A query store switches a condition panel and a result column panel over
// one query, and keeps what the user did on them.
#include "ui/panelbaselink.h"
#include "query/queryitem.h"
#include "query/resultfield.h"
#include "ui/querypanel.h"
#include "ui/resultfieldspanel.h"
#include "uitest.h"

#include "query/shopmodel.h"

namespace vm20 {
namespace {

class TMemoryItem : public TNQueryItem
{
public:
    using TNQueryItem::TNQueryItem;
    void LoadContent(QStringList &lines) override { lines = Text; }
    void SaveContent(const QStringList &lines) override { Text = lines; }
    QStringList Text;
};

class PanelBaseLinkTest : public HostTest
{
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        conditions = new TNQueryPanel(host.get());
        conditions->SetDBStruct(shop.model.get());
        conditions->Loaded();
        columns = new TNResultFieldsPanel(host.get());
        columns->SetQuery(conditions->Query());
        conditionLink = std::make_unique<TNPanelBaseLink>(conditions);
        columnLink = std::make_unique<TNPanelBaseLink>(columns);
        conditionLink->SetQueryBase(&store);
        columnLink->SetQueryBase(&store);
        first = AddItem("first", shop.custName, shop.custCity);
        second = AddItem("second", shop.orderTotal, shop.productName);
    }

    // An item whose text has one condition and one column.
    TMemoryItem *AddItem(const char *name, TDSField *condition, TDSField *column)
    {
        TNQuery query;
        query.SetDBStruct(shop.model.get());
        query.AddCondition(query.Filter(), condition);
        query.RFields().Add(QString(), {column}, QStringLiteral("@1"));
        auto item = std::make_unique<TMemoryItem>(QString::fromUtf8(name));
        query.SaveToStrings(item->Text);
        TMemoryItem *raw = item.get();
        store.AddItem(std::move(item));
        return raw;
    }
    int ConditionCount() const { return int(conditions->Query()->Filter()->GetRowCount()); }
    QString FirstColumn() const { return columns->Row(0)->FieldLabel()->Caption(); }

    shop::ShopModel shop = shop::MakeShopModel();
    TNQueryBase store;
    TNQueryPanel *conditions = nullptr;
    TNResultFieldsPanel *columns = nullptr;
    std::unique_ptr<TNPanelBaseLink> conditionLink, columnLink;
    TMemoryItem *first = nullptr, *second = nullptr;
};

TEST_F(PanelBaseLinkTest, BothPanelsFollowTheCurrentItemAndKeepTheirEdits)
{
    store.SetItemIndex(0);
    ASSERT_EQ(columns->RowCount(), 1);
    EXPECT_EQ(FirstColumn(), shop.custCity->DisplayName());
    EXPECT_EQ(ConditionCount(), 1);
    EXPECT_EQ(conditions->Query()->QueryName(), "first");

    // What the user does on each panel.
    QTest::mouseClick(columns->AddRowLabel(), Qt::LeftButton);
    conditions->AddCondition(conditions->Query()->Filter(), shop.custVip);
    ASSERT_EQ(columns->RowCount(), 2);

    store.SetItemIndex(1);
    EXPECT_EQ(columns->RowCount(), 1) << "the second item's columns";
    EXPECT_EQ(FirstColumn(), shop.productName->DisplayName());
    EXPECT_EQ(ConditionCount(), 1);
    EXPECT_TRUE(first->Text.join('\n').contains("[RField2]")) << "the new column was saved first";

    store.SetItemIndex(0);
    EXPECT_EQ(columns->RowCount(), 2);
    EXPECT_EQ(ConditionCount(), 2) << "the added condition came back";
    EXPECT_EQ(columns->Row(1)->RField(), conditions->Query()->RFields().GetRField(1))
        << "the result panel views the reloaded query, not a stale list";
}

TEST_F(PanelBaseLinkTest, SavingAndDeletingGoThroughOneLink)
{
    store.SetItemIndex(1);
    columns->DeleteRow(0);
    second->Save();
    EXPECT_FALSE(second->Text.join('\n').contains("[RField1]")) << "the item saved what the panels show";

    // Loading an item's text explicitly must not let the next switch save it
    // into the item shown before.
    first->Load();
    EXPECT_EQ(columns->RowCount(), 1);
    EXPECT_EQ(columnLink->ShownItem(), nullptr);
    EXPECT_EQ(conditionLink->ShownItem(), nullptr);

    store.SetItemIndex(0);
    store.DeleteQuery(0);
    EXPECT_EQ(columns->RowCount(), 0) << "deleting the shown item clears the panels";
    EXPECT_EQ(ConditionCount(), 0);
    EXPECT_EQ(store.ItemIndex(), -1);
}

TEST_F(PanelBaseLinkTest, QueryOwnLinkIsLeftInCharge)
{
    // The query follows the store itself: the panels' links neither load
    // nor save it a second time.
    conditions->Query()->SetQueryBase(&store);
    store.SetItemIndex(0);
    QTest::mouseClick(columns->AddRowLabel(), Qt::LeftButton);
    const QStringList before = first->Text;
    store.SetItemIndex(1);
    EXPECT_EQ(first->Text, before);
    EXPECT_EQ(FirstColumn(), shop.productName->DisplayName());
    conditions->Query()->SetQueryBase(nullptr);
}

} // namespace
} // namespace vm20
