// The condition panel under input that arrives at a bad moment: with a
// label open, while inactive, on a row on its way out, from a host's change
// handler, with the model emptied under a menu. Whatever happens, nothing
// crashes, the host hears once of each change, and the saved query reads
// back as the same tree.
#include "querypanelfixture.h"

#include "ui/dropdownedit.h"
#include "ui/rndbtn.h"

#include <QAccessible>
#include <QImage>
#include <QMenu>
#include <QPainter>
#include <QPointer>
#include <QUndoStack>

#include <functional>

namespace vm20 {
namespace {

class QueryPanelRobust : public QueryPanelFixture
{
protected:
    void SetUp() override
    {
        QueryPanelFixture::SetUp();
        BuildTree();
    }

    QStringList Text() const
    {
        QStringList lines;
        q->SaveToStrings(lines);
        return lines;
    }

    // The saved text loads back to the same tree, and the panel shows it.
    void ExpectConsistent() const
    {
        TNQuery copy;
        copy.SetDBStruct(q->DBStruct());
        copy.LoadFromStrings(Text());
        EXPECT_EQ(Shape(copy.Filter()), Shape(q->Filter()));
        EXPECT_EQ(copy.GetRowCount(), q->GetRowCount());
        if (panel->Active()) {
            EXPECT_EQ(panel->RowViewCount(), q->GetRowCount()) << "one view per row";
        }
    }
};

TEST_F(QueryPanelRobust, AnOpenEditorKeepsWhatWasTypedWhateverIsClickedOrPressedMeanwhile)
{
    struct Row { int line; std::function<void()> act; QString shape; QString value; int changes; const char *why; };
    const Row rows[] = {
        {__LINE__, [this] { answer = 20; QTest::mouseClick(panel->RowView(code)->Button(), Qt::LeftButton); },
         "City [Discount Weight]", "Rome", 2, "another row deleted through its menu"},
        {__LINE__, [this] { QTest::mouseClick(panel->AddRowLabel(), Qt::LeftButton); },
         "City [Discount Weight] Code ?", "Rome", 2, "a row added by the add-row label"},
        {__LINE__, [this] { answer = 11; QTest::mouseClick(panel->RowView(q->Filter())->Button(), Qt::LeftButton); },
         "City [Discount Weight] Code ?", "Rome", 2, "a row added through the main menu"},
        {__LINE__, [this] { Key(Qt::Key_Delete, Ctrl); Key(Qt::Key_Down); Key(Qt::Key_Insert); },
         "City [Discount Weight] Code", "Rome", 1, "the panel's keys go to the editor"},
        {__LINE__, [this] { Key(Qt::Key_Z, Ctrl); }, "City [Discount Weight] Code", "", 0,
         "undo inside the editor takes back the typing, not a step"},
        {__LINE__, [this] { QTest::mouseClick(panel->viewport(), Qt::LeftButton, Plain, QPoint(390, 290)); },
         "City [Discount Weight] Code", "Rome", 1, "a press on the surface accepts the text"},
        {__LINE__, [this] { q->DeleteRow(bracket); }, "City Code", "Rome", 1, "another row deleted in code"},
    };
    for (const Row &r : rows) {
        SCOPED_TRACE(::testing::Message() << "line " << r.line << ": " << r.why);
        BuildTree();
        QPointer<TDropDownLabel> value = panel->RowView(city)->Slot(rsFirstValue);
        auto *edit = qobject_cast<TDropDownEdit *>(value.data());
        ASSERT_NE(edit, nullptr);
        edit->DropDown();
        ASSERT_TRUE(edit->EditMode());
        QTest::keyClicks(edit->EditControl(), QStringLiteral("Rome"));
        r.act();
        if (value && value->EditMode())
            value->CloseEdit(true);
        QCoreApplication::processEvents();
        EXPECT_EQ(Shape(q->Filter()), r.shape);
        EXPECT_EQ(city->GetValue(1), r.value);
        EXPECT_EQ(changes, r.changes);
        ExpectConsistent();
    }
}

TEST_F(QueryPanelRobust, AnInactivePanelTakesNoClickOrKey)
{
    panel->SetCurrentRow(city);
    QPointer<TDropDownLabel> addRow = panel->AddRowLabel();
    panel->Deactivate();
    answer = 11;
    bool menuShown = false;
    duringMenu = [&menuShown] { menuShown = true; };
    const std::pair<int, std::function<void()>> acts[] = {
        {__LINE__, [this] { panel->MainButtonClick(); }},
        {__LINE__, [this] { panel->RowButtonClick(city); }},
        {__LINE__, [this] { panel->AddRowLabelMouseDown(Qt::LeftButton); }},
        {__LINE__, [this] { panel->AddRowLabelMouseDown(Qt::RightButton); }},
        {__LINE__, [this] { panel->ValueMenuItemClick(2); }},
        {__LINE__, [this] { EXPECT_FALSE(panel->MoveCurRowDown()); }},
        {__LINE__, [this] { Key(Qt::Key_Insert); Key(Qt::Key_Delete, Ctrl); Key(Qt::Key_Up, Ctrl); Key(Qt::Key_Z, Ctrl); }},
        {__LINE__, [this] { QTest::mouseClick(panel->viewport(), Qt::LeftButton); }},
        {__LINE__, [&] { if (addRow) QTest::mouseClick(addRow, Qt::LeftButton); }},
    };
    const QStringList before = Text();
    for (const auto &[line, act] : acts) {
        SCOPED_TRACE(::testing::Message() << "line " << line);
        act();
        EXPECT_TRUE(Text() == before) << Shape(q->Filter()).toStdString();
        EXPECT_EQ(changes, 0);
        EXPECT_FALSE(menuShown);
    }
    panel->Activate();
    panel->SetCurrentRow(city);
    Key(Qt::Key_Down, Ctrl);
    EXPECT_EQ(Shape(q->Filter()), QStringLiteral("[Discount Weight] City Code")) << "active again, keys work";
    EXPECT_EQ(changes, 1);
}

TEST_F(QueryPanelRobust, RowsOnTheirWayOutTakeNoInputAndTheCurrentRowMovesOn)
{
    // A click that reaches a button of a row deleted in code before its
    // widgets are gone.
    QPointer<TNRndBtn> button = panel->RowView(code)->Button();
    bool menuShown = false;
    duringMenu = [&menuShown] { menuShown = true; };
    answer = 20;
    q->DeleteRow(code);
    if (button)
        button->Click();
    EXPECT_FALSE(menuShown);
    EXPECT_EQ(changes, 0);
    duringMenu = nullptr;

    // The current row goes with its bracket: the next row takes over.
    BuildTree();
    panel->SetCurrentRow(weight);
    q->DeleteRow(bracket);
    EXPECT_EQ(panel->CurrentRow(), code);
    Key(Qt::Key_Up, Ctrl);
    EXPECT_EQ(Shape(q->Filter()), QStringLiteral("Code City"));
    EXPECT_EQ(changes, 1);
    ExpectConsistent();
}

// A host's change handler that changes the query again: one event for the
// user's action, and one undo takes back both.
TEST_F(QueryPanelRobust, AHostHandlerThatChangesTheQueryMakesNoSecondEventAndUndoesWithTheAction)
{
    struct Act { int line; std::function<void()> run; const char *why; };
    const Act acts[] = {
        {__LINE__, [this] { Key(Qt::Key_Insert); }, "Insert"},
        {__LINE__, [this] { Key(Qt::Key_Down, Ctrl); }, "a row moved down"},
        {__LINE__, [this] { Key(Qt::Key_Right, Ctrl); }, "a row indented"},
        {__LINE__, [this] { Key(Qt::Key_Delete, Ctrl); }, "a row deleted"},
        {__LINE__, [this] { QTest::mouseClick(panel->AddRowLabel(), Qt::LeftButton); }, "the add-row label"},
        {__LINE__, [this] { answer = 21; QTest::mouseClick(panel->RowView(city)->Button(), Qt::LeftButton); },
         "a row disabled through its menu"},
        {__LINE__, [this] { Key(Qt::Key_C, Ctrl); Key(Qt::Key_V, Ctrl); }, "a row copied and pasted"},
    };
    struct Handler { int line; std::function<void(TNQuery &)> run; bool undone; const char *why; };
    const QStringList *saved = nullptr;
    const Handler handlers[] = {
        {__LINE__, [this](TNQuery &query) { query.AddCondition(query.Filter(), shop.custVip); }, true, "adds a row"},
        {__LINE__, [this](TNQuery &query) { if (panel->CurrentRow() && panel->CurrentRow()->Parent()) query.DeleteRow(panel->CurrentRow()); },
         true, "deletes the current row"},
        {__LINE__, [](TNQuery &query) { query.ClearAll(); }, false,
         "clears the query: a query replaced in code starts the history over"},
        {__LINE__, [&saved](TNQuery &query) { query.LoadFromStrings(*saved); }, true, "loads the query as it was"},
        {__LINE__, [this](TNQuery &) { panel->MenuItemClick(11); }, true, "works the panel's menu"},
    };
    for (const Act &act : acts)
        for (const Handler &handler : handlers) {
            SCOPED_TRACE(::testing::Message() << "line " << act.line << " (" << act.why << "), handler line "
                                              << handler.line << " (" << handler.why << ")");
            BuildTree();
            QCoreApplication::processEvents();
            panel->SetCurrentRow(city);
            const QStringList before = Text();
            saved = &before;
            q->OnChange = [&](TNQuery *query) {
                ++changes;
                handler.run(*query);
            };
            act.run();
            q->OnChange = [this](TNQuery *) { ++changes; };
            EXPECT_EQ(changes, 1);
            ExpectConsistent();
            const QStringList after = Text();
            Key(Qt::Key_Z, Ctrl);
            EXPECT_TRUE(Text() == (handler.undone ? before : after))
                << "one undo takes back the action and what the handler did: " << Shape(q->Filter()).toStdString();
            ExpectConsistent();
        }
}

// The model loses everything while a menu shows: the entry chosen does
// what it still can, and the host hears of it once if it changed the query.
TEST_F(QueryPanelRobust, AModelClearedUnderAnOpenMenuLeavesAConsistentQuery)
{
    panel->Appearance().SetOptions(panel->Appearance().Options() + TQPAppearance::TQPAppearanceOptions{TQPAppearance::aoAllowParams});
    enum Opener { RootButton, CityButton, BracketButton, CityValue };
    struct Row { int line; Opener opener; int tag; const char *why; };
    const Row rows[] = {
        {__LINE__, RootButton, 11, "main menu: add a condition"},
        {__LINE__, RootButton, 12, "main menu: add a bracket"},
        {__LINE__, RootButton, -1, "main menu: a predefined condition now gone"},
        {__LINE__, CityButton, 1, "row menu: add after"},
        {__LINE__, CityButton, 20, "row menu: delete"},
        {__LINE__, CityButton, 21, "row menu: disable"},
        {__LINE__, CityButton, -1, "row menu: a predefined condition now gone"},
        {__LINE__, BracketButton, 3, "row menu: add inside"},
        {__LINE__, BracketButton, 4, "row menu: add a bracket inside"},
        {__LINE__, CityValue, 2, "value menu: make the value a parameter"},
    };
    for (const Row &r : rows) {
        SCOPED_TRACE(::testing::Message() << "line " << r.line << ": " << r.why);
        shop = shop::MakeShopModel();
        panel->SetDBStruct(shop.model.get());
        ASSERT_TRUE(panel->Active());
        BuildTree();
        answer = r.tag < 0 ? TNQueryPanel::CustomCondTag + shop.vipOnly->ID() : r.tag;
        QStringList cleared;
        duringMenu = [&] {
            shop.model->ClearStructure();
            cleared = Text();
        };
        switch (r.opener) {
        case RootButton:
            QTest::mouseClick(panel->RowView(q->Filter())->Button(), Qt::LeftButton);
            break;
        case CityButton:
            QTest::mouseClick(panel->RowView(city)->Button(), Qt::LeftButton);
            break;
        case BracketButton:
            QTest::mouseClick(panel->RowView(bracket)->Button(), Qt::LeftButton);
            break;
        case CityValue:
            QTest::mouseClick(panel->RowView(city)->Slot(rsFirstValue), Qt::RightButton);
            break;
        }
        duringMenu = nullptr;
        QCoreApplication::processEvents();
        ASSERT_FALSE(cleared.isEmpty()) << "the menu showed";
        EXPECT_EQ(changes, Text() != cleared ? 1 : 0) << "one event exactly when the entry changed the query";
        ExpectConsistent();
    }
}

// After a move the highlight stands at the row's new place only.
TEST_F(QueryPanelRobust, AMovedRowLeavesNoHighlightBehind)
{
    const QColor active(255, 255, 0);
    panel->Appearance().SetActiveRowColor(active);
    struct Row { int line; Qt::Key key; const char *why; };
    const Row rows[] = {
        {__LINE__, Qt::Key_Down, "down past a bracket"},
        {__LINE__, Qt::Key_Right, "into a new bracket"},
        {__LINE__, Qt::Key_Up, "up from the bottom"},
        {__LINE__, Qt::Key_Left, "out of a bracket"},
    };
    for (const Row &r : rows) {
        SCOPED_TRACE(::testing::Message() << "line " << r.line << ": " << r.why);
        BuildTree();
        TFilterRow *row = r.key == Qt::Key_Up ? static_cast<TFilterRow *>(code)
                          : r.key == Qt::Key_Left ? static_cast<TFilterRow *>(discount)
                                                  : static_cast<TFilterRow *>(city);
        panel->SetCurrentRow(row);
        const QRect before = panel->RowView(row)->GetRowRect();
        Key(r.key, Ctrl);
        ASSERT_EQ(changes, 1);
        ASSERT_EQ(panel->CurrentRow(), row);
        QImage image(panel->viewport()->size(), QImage::Format_ARGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        panel->draw(&painter, image.rect());
        painter.end();
        const QRect after = panel->RowView(row)->GetRowRect();
        ASSERT_NE(before.top(), after.top());
        EXPECT_EQ(image.pixelColor(after.right() - 1, after.center().y()), active);
        EXPECT_NE(image.pixelColor(before.right() - 1, before.center().y()), active) << "the old place";
    }
}

TEST_F(QueryPanelRobust, UndoTakesBackATypedValueInOneStepAndAMoveWithItsCurrentRow)
{
    auto *edit = qobject_cast<TDropDownEdit *>(panel->RowView(city)->Slot(rsFirstValue));
    ASSERT_NE(edit, nullptr);
    edit->DropDown();
    QTest::keyClicks(edit->EditControl(), QStringLiteral("Rome"));
    Key(Qt::Key_Return);
    ASSERT_EQ(city->GetValue(1), QStringLiteral("Rome"));
    EXPECT_EQ(panel->UndoStack()->count(), 1) << "four keys typed, one step";

    panel->setFocus();
    panel->SetCurrentRow(city);
    Key(Qt::Key_Down, Ctrl);
    ASSERT_EQ(Shape(q->Filter()), QStringLiteral("[Discount Weight] City Code"));
    panel->SetCurrentRow(q->Filter()->GetRow(0));
    Key(Qt::Key_Z, Ctrl);
    EXPECT_EQ(Shape(q->Filter()), QStringLiteral("City [Discount Weight] Code"));
    const auto *current = dynamic_cast<const TSimpleCond *>(panel->CurrentRow());
    ASSERT_NE(current, nullptr);
    EXPECT_EQ(current->Field(), shop.custCity) << "the moved row is current again";
    Key(Qt::Key_Z, Ctrl);
    EXPECT_EQ(static_cast<TFilterCond *>(q->Filter()->GetRow(0))->GetValue(1), QString());
    EXPECT_EQ(changes, 4) << "two actions, two undos";
}

// Assistive tools reach the add-row label after the rows, and read menu
// entries and the root's button by name.
TEST_F(QueryPanelRobust, AssistiveToolsReachTheAddRowLabelAndReadMenusAndTheRootButton)
{
    QAccessibleInterface *face = QAccessible::queryAccessibleInterface(panel);
    ASSERT_NE(face, nullptr);
    const int rows = int(panel->DisplayRows().size());
    ASSERT_EQ(face->childCount(), rows + 1);
    QAccessibleInterface *add = face->child(rows);
    ASSERT_NE(add, nullptr);
    EXPECT_EQ(add->object(), panel->AddRowLabel());
    EXPECT_EQ(add->text(QAccessible::Name), panel->AddRowLabel()->Caption());
    EXPECT_EQ(face->indexOfChild(add), rows);

    QAccessibleInterface *root = face->child(0)->child(0);
    ASSERT_NE(root, nullptr);
    EXPECT_FALSE(root->text(QAccessible::Name).isEmpty()) << "the root's button has no number to read";

    for (QMenu *menu : {panel->MainPopup(), panel->RowPopup()})
        for (QAction *action : menu->actions()) {
            if (action->isSeparator())
                continue;
            QAccessibleInterface *item = QAccessible::queryAccessibleInterface(menu)->child(int(menu->actions().indexOf(action)));
            ASSERT_NE(item, nullptr);
            EXPECT_FALSE(item->text(QAccessible::Name).contains(QLatin1Char('&'))) << action->text().toStdString();
            EXPECT_FALSE(item->text(QAccessible::Name).isEmpty());
        }
}

} // namespace
} // namespace vm20
