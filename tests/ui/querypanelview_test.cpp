// The condition panel's display side over long queries: which rows stand as
// widgets after a scroll, and the identifiers after rows move, come and go.
#include "ui/querypanel.h"

#include "ui/rndbtn.h"
#include "uitest.h"

#include "query/shopmodel.h"

#include <QApplication>
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

} // namespace
} // namespace vm20
