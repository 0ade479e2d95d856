// The condition panel's display side over long queries: which rows stand as
// widgets after a scroll, and the identifiers after rows move, come and go.
#include "ui/querypanel.h"

#include "model/dsfieldgroup.h"
#include "model/dsoperator.h"
#include "ui/dropdownlist.h"
#include "ui/rndbtn.h"
#include "uitest.h"

#include "query/shopmodel.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QScrollBar>

namespace vm20 {
namespace {

class QueryPanelViewTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        panel = std::make_unique<TNQueryPanel>();
        panel->resize(500, 300);
        panel->SetDBStruct(shop.model.get());
        panel->Loaded();
    }

    // Groups of ten conditions, every fourth group in a bracket.
    void Fill(int rows)
    {
        TNQuery *q = panel->Query();
        TFilterBracket *bracket = q->Filter();
        for (int i = 0; i < rows; ++i) {
            if (i % 10 == 0)
                bracket = i % 40 == 20 ? q->AddBracket(q->Filter()) : q->Filter();
            q->AddCondition(bracket, i % 2 ? shop.custName : shop.orderTotal);
        }
        QApplication::processEvents();
    }

    // The identifiers a full renumbering gives, in display order.
    static void Expected(const TFilterBracket *bracket, const QString &prefix, QStringList &ids)
    {
        for (int i = 0; i < bracket->GetRowCount(); ++i) {
            const TFilterRow *row = bracket->Rows()[std::size_t(i)].get();
            ids << prefix + QString::number(i + 1) + QLatin1Char('.');
            if (row->IsBracket())
                Expected(static_cast<const TFilterBracket *>(row), ids.back(), ids);
        }
    }

    void ExpectNumberedAsAFullRenumberSays(int line)
    {
        QApplication::processEvents();
        QStringList ids{QString()};
        Expected(panel->Filter(), QString(), ids);
        const std::vector<TFilterRow *> rows = panel->DisplayRows();
        ASSERT_EQ(int(rows.size()), int(ids.size())) << "line " << line;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const TQueryRowView *view = panel->RowView(rows[i]);
            EXPECT_EQ(view->RowNum(), int(i)) << "line " << line;
            EXPECT_EQ(view->RowID(), ids[qsizetype(i)]) << "line " << line;
            if (i > 0) {
                EXPECT_EQ(view->Button()->Caption(), ids[qsizetype(i)].chopped(1)) << "line " << line;
            }
        }
    }

    shop::ShopModel shop = shop::MakeShopModel();
    std::unique_ptr<TNQueryPanel> panel;
};

TEST_F(QueryPanelViewTest, OnlyRowsInViewStandAsWidgetsWhereThePlacementSays)
{
    Fill(300);
    QScrollBar *bar = panel->verticalScrollBar();
    for (int value : {bar->maximum() / 2, bar->maximum(), 37, 0}) {
        bar->setValue(value);
        const QRect port = panel->viewport()->rect();
        int shown = 0;
        const std::vector<TFilterRow *> rows = panel->DisplayRows();
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const TQueryRowView *view = panel->RowView(rows[i]);
            const QRect button = view->Button()->geometry();
            const int h = button.height();
            EXPECT_EQ(button.top(), RowTop(5, int(i), h, 3) - value) << "row " << i << " at scroll " << value;
            const bool meets = view->GetRowRect().intersects(port);
            EXPECT_EQ(view->Button()->isVisibleTo(panel->viewport()), meets) << "row " << i << " at scroll " << value;
            EXPECT_EQ(view->InView(), meets) << "row " << i;
            shown += meets;
        }
        EXPECT_GT(shown, 5);
        // A screenful of rows, each a handful of widgets.
        EXPECT_LT(panel->viewport()->children().size(), shown * 10) << "at scroll " << value;
    }
}

TEST_F(QueryPanelViewTest, RowsOutOfViewStillReadWhole)
{
    Fill(300);
    panel->verticalScrollBar()->setValue(panel->verticalScrollBar()->maximum());
    const TFilterRow *top = panel->DisplayRows()[1];
    const TQueryRowView *view = panel->RowView(top);
    ASSERT_FALSE(view->InView());
    EXPECT_TRUE(view->Visible());
    EXPECT_FALSE(view->Sentence().isEmpty());
    EXPECT_GE(view->FirstCurControl(), 0) << "the keyboard can land on a row before it is scrolled to";
}

TEST_F(QueryPanelViewTest, IdentifiersAfterMovesInsertsAndDeletesMatchAFullRenumber)
{
    Fill(120);
    TNQuery *q = panel->Query();
    struct Step
    {
        int line;
        const char *why;
        std::function<void()> run;
    };
    const std::vector<Step> steps = {
        {__LINE__, "insert at the top shifts every row below",
         [&] { q->AddConditionNum(q->Filter(), 0, shop.custCity); }},
        {__LINE__, "a row moved down swaps two identifiers", [&] { q->MoveRowDown(q->GetRowByNum(1)); }},
        {__LINE__, "indenting wraps a row in a new bracket", [&] { q->MoveRowRight(q->GetRowByNum(3)); }},
        {__LINE__, "outdenting deletes the emptied bracket", [&] { q->MoveRowLeft(q->GetRowByNum(4)); }},
        {__LINE__, "deleting a bracket takes its rows along",
         [&] {
             for (int n = 1;; ++n)
                 if (q->GetRowByNum(n)->IsBracket()) {
                     q->DeleteRow(q->GetRowByNum(n));
                     return;
                 }
         }},
        {__LINE__, "inserting inside a bracket leaves other brackets alone",
         [&] {
             for (int n = 1;; ++n)
                 if (TFilterRow *row = q->GetRowByNum(n); row->IsBracket()) {
                     q->AddConditionNum(static_cast<TFilterBracket *>(row), 1, shop.custVip);
                     return;
                 }
         }},
        {__LINE__, "deleting the last row", [&] { q->DeleteRow(q->GetRowByNum(q->GetRowCount() - 1)); }},
    };
    panel->verticalScrollBar()->setValue(panel->verticalScrollBar()->maximum() / 3);
    for (const Step &step : steps) {
        SCOPED_TRACE(step.why);
        step.run();
        ExpectNumberedAsAFullRenumberSays(step.line);
    }
    panel->Appearance().SetOptions(panel->Appearance().Options() + TQPAppearance::TQPAppearanceOptions{TQPAppearance::aoHideRootRow});
    q->MoveRowUp(q->GetRowByNum(2));
    QStringList ids;
    Expected(panel->Filter(), QString(), ids);
    const std::vector<TFilterRow *> rows = panel->DisplayRows();
    ASSERT_EQ(int(rows.size()), int(ids.size()));
    for (std::size_t i = 0; i < rows.size(); ++i)
        EXPECT_EQ(panel->RowView(rows[i])->RowID(), ids[qsizetype(i)]) << "hidden root, row " << i;
}

// Drops the list as a user would first open it: the label fills it then.
QStringList Dropped(TDropDownLabel *label)
{
    auto *list = qobject_cast<TDropDownList *>(label);
    if (!list || !list->BeforeDropDown)
        return {};
    list->BeforeDropDown(list);
    QStringList shown;
    for (int g = 0; g < list->Groups().Count(); ++g) {
        const TItemGroup *group = list->Groups().Items(g);
        QStringList items;
        for (int i : group->Items)
            items << list->Items()[i];
        shown << (group->GroupName().isEmpty() ? QString() : group->GroupName() + QStringLiteral(": "))
                     + items.join(QLatin1Char(','));
    }
    return shown;
}

TEST_F(QueryPanelViewTest, FieldListGroupsFollowTheModelsGroupOrder)
{
    TNDBStructure &m = *shop.model;
    // Groups made in one order, fields moved into them in another.
    TDSFieldGroup *orders = m.FieldGroups().AddGroup(QStringLiteral("Orders"));
    TDSFieldGroup *people = m.FieldGroups().AddGroup(QStringLiteral("People"));
    shop.orderTotal->SetGroup(orders);
    shop.custName->SetGroup(people);
    shop.orderDate->SetGroup(orders);
    shop.custCity->SetGroup(people);
    TSimpleCond *row = panel->Query()->AddCondition(panel->Filter(), shop.custName);

    const QStringList grouped = Dropped(panel->RowView(row)->Slot(rsFirstLabel));
    ASSERT_GE(grouped.size(), 3);
    EXPECT_TRUE(grouped[0].startsWith(QStringLiteral("Orders: Order total,Order date"))) << grouped.join('|').toStdString();
    EXPECT_TRUE(grouped[1].startsWith(QStringLiteral("People: Customer name,City"))) << grouped.join('|').toStdString();
    EXPECT_FALSE(grouped.last().contains(QLatin1Char(':'))) << "root fields after the groups by default";

    m.SetRootFieldsFirst(true);
    panel->Appearance().SetOptions(panel->Appearance().Options()
                                   + TQPAppearance::TQPAppearanceOptions{TQPAppearance::aoShowGroupName});
    const QStringList rootsFirst = Dropped(panel->RowView(row)->Slot(rsFirstLabel));
    ASSERT_GE(rootsFirst.size(), 3);
    EXPECT_FALSE(rootsFirst[0].contains(QLatin1Char(':'))) << rootsFirst.join('|').toStdString();
    EXPECT_TRUE(rootsFirst[1].startsWith(QStringLiteral("Orders: Orders.Order total,"))) << rootsFirst.join('|').toStdString();
}

TEST_F(QueryPanelViewTest, EntityDeletedUnderALivePanelLeavesItsRowsUnresolved)
{
    TNQuery *q = panel->Query();
    TSimpleCond *byTotal = q->AddCondition(q->Filter(), shop.orderTotal);
    TSimpleCond *byName = q->AddCondition(q->Filter(), shop.custName);
    TSimpleCond *byCity = q->AddCondition(q->Filter(), shop.custCity);
    Dropped(panel->RowView(byTotal)->Slot(rsFirstLabel));
    Dropped(panel->RowView(byName)->Slot(rsSecondLabel));
    const QString equal = byName->Operator()->Name();

    shop.model->DelField(shop.model->IndexOfField(shop.orderTotal));
    shop.orderTotal = nullptr;
    shop.model->DeleteOperatorByName(equal);
    QApplication::processEvents();

    EXPECT_TRUE(panel->RowView(byTotal)->Missing().startsWith(QStringLiteral("field")));
    EXPECT_EQ(panel->RowView(byName)->Missing(), QStringLiteral("operator"));
    EXPECT_EQ(panel->RowView(byTotal)->Slot(rsFirstLabel)->palette().color(QPalette::WindowText),
              TNQueryPanel::MissingColor());
    EXPECT_FALSE(Dropped(panel->RowView(byCity)->Slot(rsFirstLabel)).join(',').contains(QStringLiteral("Order total")))
        << "a list dropped afterwards no longer offers the field";
    // Reading and painting every row touches nothing freed (the sanitizer run
    // catches a dangling label or list).
    for (TFilterRow *row : panel->DisplayRows())
        EXPECT_FALSE(panel->RowView(row)->Sentence().isEmpty());
    QImage image(panel->viewport()->size(), QImage::Format_ARGB32);
    QPainter painter(&image);
    panel->draw(&painter, image.rect());
    for (TFilterRow *row : panel->DisplayRows())
        panel->PaintRow(row, &painter, true);
}

TEST_F(QueryPanelViewTest, RightToLeftContentEndsAtTheLeftmostLabelShown)
{
    panel->setLayoutDirection(Qt::RightToLeft);
    TNQuery *q = panel->Query();
    TSimpleCond *last = nullptr;
    for (int i = 0; i < 2; ++i)
        last = q->AddCondition(q->Filter(), shop.custName);
    const TQueryRowView *view = panel->RowView(last);
    ASSERT_FALSE(view->ShowsLogOp()) << "the last row joins nothing after it";
    int left = view->Button()->x();
    for (TDropDownLabel *label : view->Controls())
        left = std::min(left, label->x());
    EXPECT_EQ(view->ContentEdge(), left) << "the unshown logical operator does not count (the mark goes there)";
}

TEST_F(QueryPanelViewTest, SubQueryValuesHintAsTheAppearanceAsks)
{
    TNDBStructure &m = *shop.model;
    m.AddOperator(QStringLiteral("InQuery"), QStringLiteral("is in query"), QStringLiteral("@f in (@1)"), QString(),
                  ComparableTypes());
    shop.Op("InQuery")->SetValueKind(vkSubQuery);
    shop.custId->AddOperator(shop.Op("InQuery"));
    panel->ParseSQL({QStringLiteral("select c.Name from Customers c where c.ID in "
                                    "(select o.CustomerID from Orders o where o.Total > 100)")});
    const auto *cond = static_cast<TSimpleCond *>(panel->Filter()->GetRow(0));
    ASSERT_EQ(cond->Operator(), shop.Op("InQuery"));
    const auto hint = [&] { return panel->RowView(cond)->Slot(rsFirstValue)->toolTip(); };
    EXPECT_TRUE(hint().contains(QStringLiteral("SELECT"), Qt::CaseInsensitive)) << "the statement by default";
    panel->SetSubQueryHint(sqhText);
    EXPECT_TRUE(hint().contains(QStringLiteral("Order total"))) << hint().toStdString();
    panel->SetSubQueryHint(sqhNone);
    EXPECT_EQ(hint(), QString());

    QFont font(QStringLiteral("DejaVu Sans"), 14);
    panel->SetSubQueryFont(font);
    panel->SubQueryAppearance().SetValueColor(QColor(10, 20, 30));
    TNQueryPanel sub;
    panel->SetUpSubQueryPanel(sub);
    EXPECT_EQ(sub.DBStruct(), panel->DBStruct());
    EXPECT_EQ(sub.font().pointSize(), 14);
    EXPECT_EQ(sub.Appearance().ValueColor(), QColor(10, 20, 30));
}

} // namespace
} // namespace vm20
