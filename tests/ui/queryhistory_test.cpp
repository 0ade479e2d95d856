// Undo and redo on both panels, and copying and pasting rows of the
// condition panel through the clipboard.
#include "ui/querypanel.h"
#include "ui/resultfieldspanel.h"

#include "query/resultfield.h"
#include "uitest.h"

#include "query/shopmodel.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QUndoStack>

namespace vm20 {

// Stands for the panel's own handlers: a change made as a user action ends
// with the panel's change notification.
class TQueryHistoryTestAccess
{
public:
    static void UserAction(TNQueryPanel &panel) { panel.NotifyChange(); }
};

namespace {

class QueryHistoryTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        panel = std::make_unique<TNQueryPanel>();
        panel->resize(500, 400);
        panel->SetDBStruct(shop.model.get());
        q = panel->Query();
        q->OnChange = [this](TNQuery *) { ++changes; };
        // Built in code before the panel shows: where undo stops.
        q->AddCondition(nullptr, shop.custName)->SetValue(1, "Ann");
        TFilterBracket *bracket = q->AddBracket(nullptr);
        q->AddCondition(bracket, shop.custCity)->SetValue(1, "Paris");
        q->AddCondition(bracket, shop.orderTotal);
        panel->Loaded();
    }
    QStringList Text() const
    {
        QStringList lines;
        q->SaveToStrings(lines);
        return lines;
    }
    void Act(const std::function<void()> &change)
    {
        change();
        TQueryHistoryTestAccess::UserAction(*panel);
    }
    int Steps() const { return panel->UndoStack()->count(); }

    shop::ShopModel shop = shop::MakeShopModel();
    std::unique_ptr<TNQueryPanel> panel;
    TNQuery *q = nullptr;
    int changes = 0;
};

TEST_F(QueryHistoryTest, UndoAndRedoWalkEveryUserActionExactly)
{
    struct Action { int line; std::function<void(TNQuery &)> change; const char *reason; };
    const Action actions[] = {
        {__LINE__, [this](TNQuery &) { q->AddCondition(nullptr, shop.custVip); }, "a condition added"},
        {__LINE__, [](TNQuery &query) { static_cast<TFilterCond *>(query.GetRowByNum(1))->SetValue(1, "Bob"); },
         "a value typed in"},
        {__LINE__, [](TNQuery &query) { query.MoveRowRight(query.GetRowByNum(1)); }, "a row indented"},
        {__LINE__, [](TNQuery &query) { static_cast<TFilterBracket *>(query.GetRowByNum(3))->SetLinkType(fltNone); },
         "a link type chosen"},
        {__LINE__, [](TNQuery &query) { query.DeleteRow(query.GetRowByNum(3)); }, "a bracket deleted"},
        {__LINE__, [](TNQuery &query) { query.GetRowByNum(1)->SetEnabled(false); }, "a row disabled"},
        {__LINE__, [](TNQuery &query) { query.Filter()->SetLinkType(fltNotAll); }, "the root's link type"},
    };
    std::vector<QStringList> texts{Text()};
    for (const Action &action : actions) {
        Act([&] { action.change(*q); });
        texts.push_back(Text());
        EXPECT_NE(texts.back(), texts[texts.size() - 2]) << "line " << action.line << ": " << action.reason;
    }
    ASSERT_EQ(Steps(), int(std::size(actions)));
    EXPECT_EQ(changes, int(std::size(actions)));

    struct TResets : TNQueryObserver
    {
        int count = 0;
        void Reset() override { ++count; }
    } resets;
    q->AddObserver(&resets);
    for (std::size_t i = std::size(actions); i-- > 0;) {
        panel->Undo();
        EXPECT_EQ(Text(), texts[i]) << "undo of line " << actions[i].line << ": " << actions[i].reason;
    }
    panel->Undo();
    EXPECT_EQ(Text(), texts[0]) << "nothing before the query the panel was shown with";
    for (std::size_t i = 0; i < std::size(actions); ++i) {
        panel->Redo();
        EXPECT_EQ(Text(), texts[i + 1]) << "redo of line " << actions[i].line << ": " << actions[i].reason;
    }
    q->RemoveObserver(&resets);
    EXPECT_EQ(resets.count, 2) << "only the rows that differ are replaced; the whole text for the root's link type";
    EXPECT_EQ(changes, 3 * int(std::size(actions))) << "every undo and redo is a change the host hears of";
    EXPECT_EQ(Steps(), int(std::size(actions))) << "going back and forth records nothing";
    EXPECT_EQ(panel->RowViewCount(), q->GetRowCount()) << "the rows shown follow";
}

TEST_F(QueryHistoryTest, AQueryReplacedOrChangedInCodeIsNeverTakenBack)
{
    const auto twoSteps = [this] {
        Act([this] { q->AddCondition(nullptr, shop.custVip); });
        Act([this] { q->AddCondition(nullptr, shop.custSince); });
        ASSERT_EQ(Steps(), 2);
    };
    twoSteps();
    QStringList other;
    TNQuery source;
    source.SetDBStruct(shop.model.get());
    source.AddCondition(nullptr, shop.productName);
    source.SaveToStrings(other);
    q->LoadFromStrings(other);
    EXPECT_EQ(Steps(), 0) << "a query loaded in code";
    panel->Undo();
    EXPECT_EQ(q->GetRowCount(), 2);

    for (const bool settled : {false, true}) {
        twoSteps();
        q->AddCondition(nullptr, shop.custCity);
        if (settled)
            QCoreApplication::processEvents();
        const QStringList changed = Text();
        panel->Undo();
        EXPECT_EQ(Text(), changed) << "the code's change stays, settled: " << settled;
        EXPECT_EQ(Steps(), 0);
    }

    twoSteps();
    TNQuery replacement;
    replacement.SetDBStruct(shop.model.get());
    panel->SetQuery(&replacement);
    EXPECT_EQ(Steps(), 0) << "another query";
    panel->Undo();
    EXPECT_EQ(replacement.GetRowCount(), 1);
    panel->SetQuery(nullptr);
}

TEST_F(QueryHistoryTest, CopiesARowWithItsSubTreeAndPastesItAfterIt)
{
    TFilterRow *bracket = q->GetRowByNum(2);
    panel->SetCurrentRow(bracket);
    panel->CopyCurrentRow();
    QStringList copied;
    q->SaveRowToStrings(bracket, copied);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), copied.join('\n'));

    panel->SetCurrentRow(q->GetRowByNum(1));
    const QStringList before = Text();
    ASSERT_TRUE(panel->PasteRows()) << panel->PasteError().toStdString();
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(Steps(), 1);
    TFilterRow *pasted = q->GetRowByNum(2);
    EXPECT_EQ(pasted->RowID(), "2.") << "right after the current row";
    EXPECT_EQ(panel->CurrentRow(), pasted);
    QStringList again;
    q->SaveRowToStrings(pasted, again);
    EXPECT_EQ(again, copied);
    EXPECT_EQ(panel->RowViewCount(), q->GetRowCount());

    // The pasted bracket is current: the next paste goes after its sub-tree.
    ASSERT_TRUE(panel->PasteRows());
    EXPECT_EQ(q->GetRowByNum(5)->RowID(), "3.");
    panel->SetCurrentRow(q->Filter());
    ASSERT_TRUE(panel->PasteRows());
    EXPECT_EQ(panel->CurrentRow()->RowID(), "5.") << "the root current: at the end";

    panel->Undo();
    panel->Undo();
    panel->Undo();
    EXPECT_EQ(Text(), before);
}

TEST_F(QueryHistoryTest, RefusesClipboardTextThatIsNoQueryText)
{
    const QStringList before = Text();
    for (const QString &text : {QString("name = Ann"), QString(), QString("[Main]\nVersion=3.6\n")}) {
        QGuiApplication::clipboard()->setText(text);
        EXPECT_FALSE(panel->PasteRows()) << text.toStdString();
        EXPECT_TRUE(panel->PasteError().contains("not a query text")) << panel->PasteError().toStdString();
    }
    QGuiApplication::clipboard()->setText("[Row]\nEnabled=1\nRowType=1\nLinkType=0\nRowCount=1\n\n"
                                         "[Row1.]\nRowType=5\n");
    EXPECT_FALSE(panel->PasteRows());
    EXPECT_EQ(panel->PasteError(), "'5' is not a valid RowType value");
    EXPECT_EQ(Text(), before);
    EXPECT_EQ(Steps(), 0);
    EXPECT_EQ(changes, 0);
}

class ResultHistoryTest : public HostTest
{
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        query.SetDBStruct(shop.model.get());
        query.RFields().Add(QString(), {shop.custName}, "@1");
        query.RFields().Add(QString(), {shop.custCity}, "@1");
        panel = new TNResultFieldsPanel(host.get());
        panel->resize(380, 280);
        panel->show();
        panel->SetQuery(&query);
        conditions = std::make_unique<TNQueryPanel>();
        conditions->SetQuery(&query);
        conditions->Loaded();
    }
    void TearDown() override
    {
        delete panel;
        conditions.reset();
        HostTest::TearDown();
    }
    QString Columns() const
    {
        QStringList names;
        for (const auto &field : query.RFields().Items())
            names << field->DSFields().Fields().front()->FieldName();
        return names.join(',');
    }

    shop::ShopModel shop = shop::MakeShopModel();
    TNQuery query;
    TNResultFieldsPanel *panel = nullptr;
    std::unique_ptr<TNQueryPanel> conditions;
};

TEST_F(ResultHistoryTest, KeysUndoAndRedoTheColumnsAloneAndTheConditionPanelLeavesThem)
{
    panel->setFocus();
    QTest::keyClick(panel, Qt::Key_Down);
    QTest::keyClick(panel, Qt::Key_Down, Qt::ControlModifier);
    ASSERT_EQ(Columns(), "City,Name");
    QTest::keyClick(panel, Qt::Key_Delete, Qt::ControlModifier);
    ASSERT_EQ(Columns(), "City");
    ASSERT_EQ(panel->UndoStack()->count(), 2);

    // A step on the condition panel undone in between leaves the columns.
    query.AddCondition(nullptr, shop.custVip);
    TQueryHistoryTestAccess::UserAction(*conditions);
    conditions->Undo();
    EXPECT_EQ(query.GetRowCount(), 1);
    EXPECT_EQ(Columns(), "City");

    QTest::keyClick(panel, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Columns(), "City,Name");
    EXPECT_EQ(panel->RowCount(), 2);
    QTest::keyClick(panel, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Columns(), "Name,City");
    QTest::keyClick(panel, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Columns(), "City,Name");
    QTest::keyClick(panel, Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(Columns(), "City");
    EXPECT_EQ(panel->UndoStack()->count(), 2);
    conditions->Redo();
    EXPECT_EQ(query.GetRowCount(), 2) << "and the condition panel's history survived the column steps";
}

} // namespace
} // namespace vm20
