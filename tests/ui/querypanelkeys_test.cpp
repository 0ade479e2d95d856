#include "querypanelfixture.h"

#include "ui/dropdownlabel.h"
#include "ui/dropdownpopup.h"
#include "ui/rndbtn.h"

#include <QAccessible>
#include <QMenu>
#include <QScrollBar>
#include <QTimer>

namespace vm20 {
namespace {

// Which of the row's labels is current: "first", "second", "value1",
// "value2", "middle" (slots) or "logop".
QString ControlName(const TQueryRowView *view)
{
    const TDropDownLabel *control = view->CurrentControl();
    if (!control)
        return QStringLiteral("none");
    if (control == view->LogOpLabel())
        return QStringLiteral("logop");
    const char *const names[] = {"first", "second", "value1", "value2", "middle"};
    for (int slot = 0; slot < RowSlotCount; ++slot)
        if (view->Slot(slot) == control)
            return QString::fromLatin1(names[slot]);
    return QStringLiteral("?");
}

class QueryPanelKeys : public QueryPanelFixture
{
protected:
    TFilterRow *ByName(const QString &name) const
    {
        for (int i = 0; i < q->GetRowCount(); ++i)
            if (Name(q->GetRowByNum(i)) == name)
                return q->GetRowByNum(i);
        return nullptr;
    }

    // From the tree BuildTree makes, keys pressed on one row: the tree, the
    // current row and the change events they leave.
    struct EditRow { int line; QString start; Keys keys; QString shape; QString current; int changes; const char *why; };
    template <std::size_t N>
    void Run(const EditRow (&rows)[N])
    {
        for (const EditRow &r : rows) {
            SCOPED_TRACE(::testing::Message() << "line " << r.line << ": " << r.why);
            BuildTree();
            panel->SetCurrentRow(ByName(r.start));
            Press(r.keys);
            EXPECT_EQ(Shape(q->Filter()), r.shape);
            EXPECT_EQ(Name(panel->CurrentRow()), r.current);
            EXPECT_EQ(changes, r.changes);
            TFilterRow *row = panel->CurrentRow();
            if (row && row->Parent()) {
                EXPECT_EQ(panel->RowView(row)->Button()->Caption(), row->RowID().chopped(1))
                    << "the row shows its new number";
            }
        }
    }
};

TEST_F(QueryPanelKeys, ArrowsWalkRowsAndTheirDropDownLabels)
{
    struct Step { int line; Qt::Key key; QString row; QString control; const char *why; };
    const Step steps[] = {
        {__LINE__, Qt::Key_Right, "City", "second", "field to operator"},
        {__LINE__, Qt::Key_Right, "City", "value1", ""},
        {__LINE__, Qt::Key_Right, "City", "logop", "the logical operator comes last after the condition"},
        {__LINE__, Qt::Key_Right, "City", "logop", "the last control stays"},
        {__LINE__, Qt::Key_Down, "[Discount Weight]", "second", "a bracket starts at its link type"},
        {__LINE__, Qt::Key_Right, "[Discount Weight]", "logop", "the bracket's text is skipped"},
        {__LINE__, Qt::Key_Left, "[Discount Weight]", "second", "and skipped back"},
        {__LINE__, Qt::Key_Down, "Discount", "first", "into the bracket"},
        {__LINE__, Qt::Key_Up, "[Discount Weight]", "second", ""},
        {__LINE__, Qt::Key_Up, "City", "first", "a row entered again starts at its first control"},
        {__LINE__, Qt::Key_Up, "root", "second", ""},
        {__LINE__, Qt::Key_Up, "root", "second", "nothing above the root"},
        {__LINE__, Qt::Key_Left, "root", "second", "the root's texts are no stops"},
    };
    BuildTree();
    panel->SetCurrentRow(city);
    for (const Step &s : steps) {
        SCOPED_TRACE(::testing::Message() << "line " << s.line << ": " << s.why);
        QTest::keyClick(panel, s.key);
        EXPECT_EQ(Name(panel->CurrentRow()), s.row);
        EXPECT_EQ(ControlName(panel->RowView(panel->CurrentRow())), s.control);
    }
    panel->SetCurrentRow(code);
    panel->SetShowFrame(false);
    Press({{Qt::Key_Down, Plain}});
    EXPECT_EQ(panel->CurrentRow(), code) << "the last row stays current";
    EXPECT_TRUE(panel->ShowFrame()) << "moving by key shows the focus frame again";
    EXPECT_EQ(changes, 0);

    panel->Appearance().SetOptions(panel->Appearance().Options() + TQPAppearance::TQPAppearanceOptions{TQPAppearance::aoHideRootRow});
    panel->SetCurrentRow(city);
    Press({{Qt::Key_Up, Plain}});
    EXPECT_EQ(panel->CurrentRow(), city) << "a hidden root is never reached";
    EXPECT_EQ(panel->GetRowByNum(0), city);

    panel->clearFocus();
    panel->SetCurrentRow(nullptr);
    panel->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(panel->CurrentRow(), city) << "tabbing in starts at the first row shown";

    panel->setLayoutDirection(Qt::RightToLeft);
    panel->SetCurrentRow(city);
    Press({{Qt::Key_Left, Plain}});
    EXPECT_EQ(ControlName(panel->RowView(city)), QStringLiteral("second")) << "right to left, Left reads on";
}

TEST_F(QueryPanelKeys, TheCurrentRowIsScrolledIntoViewAndArrowsScrollWithoutTheKeyboardOption)
{
    for (int i = 0; i < 40; ++i)
        q->AddCondition(q->Filter(), shop.custCity);
    panel->SetCurrentRowNum(0);
    Press({{Qt::Key_Insert, Plain}});
    ASSERT_EQ(panel->CurrentRow(), q->Filter()->GetLastRow());
    const QRect port = panel->viewport()->rect();
    EXPECT_TRUE(port.contains(panel->RowView(panel->CurrentRow())->CurrentControl()->geometry()));
    Press({{Qt::Key_Up, Ctrl}});
    EXPECT_TRUE(port.contains(panel->RowView(panel->CurrentRow())->CurrentControl()->geometry()))
        << "a moved row is followed";

    panel->SetCurrentRowNum(0);
    EXPECT_TRUE(port.contains(panel->RowView(q->Filter())->CurrentControl()->geometry())) << "and back up";
    panel->verticalScrollBar()->setValue(0);
    TQPAppearance &look = panel->Appearance();
    look.SetOptions(look.Options() - TQPAppearance::TQPAppearanceOptions{TQPAppearance::aoAllowKeyboard});
    TFilterRow *current = panel->CurrentRow();
    Press({{Qt::Key_Down, Plain}, {Qt::Key_Down, Plain}, {Qt::Key_Insert, Plain}});
    EXPECT_EQ(panel->verticalScrollBar()->value(), 2 * panel->verticalScrollBar()->singleStep());
    EXPECT_EQ(panel->CurrentRow(), current);
    EXPECT_EQ(q->Filter()->GetRowCount(), 41);
}

TEST_F(QueryPanelKeys, CtrlArrowsMoveTheCurrentRow)
{
    const EditRow rows[] = {
        {__LINE__, "City", {{Qt::Key_Left, Ctrl}}, "City [Discount Weight] Code", "City", 0, "level 1 cannot outdent"},
        {__LINE__, "Discount", {{Qt::Key_Right, Ctrl}}, "City [[Discount] Weight] Code", "Discount", 1,
         "a bracket's first row is wrapped in a new bracket"},
        {__LINE__, "City", {{Qt::Key_Right, Ctrl}}, "[City] [Discount Weight] Code", "City", 1, "so is the first row of the root"},
        {__LINE__, "Code", {{Qt::Key_Right, Ctrl}}, "City [Discount Weight Code]", "Code", 1,
         "a row after a bracket joins it at the end"},
        {__LINE__, "Weight", {{Qt::Key_Left, Ctrl}}, "City [Discount] Weight Code", "Weight", 1,
         "outdent lands right after the bracket"},
        {__LINE__, "Discount", {{Qt::Key_Left, Ctrl}, {Qt::Key_Up, Plain}, {Qt::Key_Left, Ctrl}},
         "City Weight Discount Code", "Weight", 2, "the bracket left empty goes"},
        {__LINE__, "City", {{Qt::Key_Up, Ctrl}}, "City [Discount Weight] Code", "City", 0, "the first row cannot go up"},
        {__LINE__, "Code", {{Qt::Key_Up, Ctrl}}, "City Code [Discount Weight]", "Code", 1, "swaps with a whole bracket"},
        {__LINE__, "City", {{Qt::Key_Down, Ctrl}}, "[Discount Weight] City Code", "City", 1, ""},
        {__LINE__, "Code", {{Qt::Key_Down, Ctrl}}, "City [Discount Weight] Code", "Code", 0, "the last row cannot go down"},
        {__LINE__, "root", {{Qt::Key_Right, Ctrl}, {Qt::Key_Down, Ctrl}}, "City [Discount Weight] Code", "root", 0,
         "the root never moves"},
        {__LINE__, "Code", {{Qt::Key_Up, Qt::AltModifier}, {Qt::Key_Up, Qt::ShiftModifier}, {Qt::Key_Left, Ctrl | Qt::ShiftModifier}},
         "City [Discount Weight] Code", "Code", 0, "other modifiers do nothing"},
    };
    Run(rows);
}

TEST_F(QueryPanelKeys, InsertAndCtrlDeleteEditTheTreeAroundTheCurrentRow)
{
    const EditRow rows[] = {
        {__LINE__, "root", {{Qt::Key_Delete, Ctrl}}, "City [Discount Weight] Code", "root", 0, "the root stays"},
        {__LINE__, "City", {{Qt::Key_Delete, Plain}, {Qt::Key_Delete, Qt::ShiftModifier}, {Qt::Key_Delete, Ctrl | Qt::AltModifier}},
         "City [Discount Weight] Code", "City", 0, "Delete needs Ctrl alone"},
        {__LINE__, "City", {{Qt::Key_Delete, Ctrl}}, "[Discount Weight] Code", "[Discount Weight]", 1, "the next row follows"},
        {__LINE__, "Weight", {{Qt::Key_Delete, Ctrl}}, "City [Discount] Code", "Code", 1, "next in display order"},
        {__LINE__, "Code", {{Qt::Key_Delete, Ctrl}}, "City [Discount Weight]", "Weight", 1, "the last row: the one before"},
        {__LINE__, "[Discount Weight]", {{Qt::Key_Delete, Ctrl}}, "City Code", "Code", 1, "past the bracket's rows"},
        {__LINE__, "City", {{Qt::Key_Insert, Plain}}, "City ? [Discount Weight] Code", "?", 1, "right after the condition"},
        {__LINE__, "[Discount Weight]", {{Qt::Key_Insert, Ctrl}}, "City [Discount Weight ?] Code", "?", 1,
         "into the current bracket, after its rows"},
        {__LINE__, "root", {{Qt::Key_Insert, Qt::ShiftModifier}}, "City [Discount Weight] Code ?", "?", 1, ""},
    };
    Run(rows);
}

TEST_F(QueryPanelKeys, AltInsertOpensTheMenuOfTheCurrentRowAtItsFirstLabel)
{
    BuildTree();
    QMenu *shown = nullptr;
    QPoint at;
    panel->MenuHook = [&](QMenu *menu, QPoint pos) {
        shown = menu;
        at = pos;
        return 1;  // add a condition after the current row
    };
    panel->SetCurrentRow(weight);
    Press({{Qt::Key_Insert, Qt::AltModifier}});
    EXPECT_EQ(shown, panel->RowPopup());
    const TDropDownLabel *field = panel->RowView(weight)->Slot(rsFirstLabel);
    EXPECT_EQ(at, field->mapToGlobal(QPoint(0, field->height()))) << "below the first label";
    EXPECT_EQ(Shape(q->Filter()), QStringLiteral("City [Discount Weight ?] Code"));
    EXPECT_EQ(changes, 1);
    panel->SetCurrentRow(q->Filter());
    Press({{Qt::Key_Insert, Qt::AltModifier}});
    EXPECT_EQ(shown, panel->MainPopup()) << "the root has the main menu";
}

TEST_F(QueryPanelKeys, DeletingTheLastRowReenablesTheRoot)
{
    city = q->AddCondition(q->Filter(), shop.custCity);
    q->Filter()->SetEnabled(false);
    panel->SetCurrentRow(city);
    Press({{Qt::Key_Delete, Ctrl}});
    EXPECT_TRUE(q->Filter()->Enabled());
    EXPECT_EQ(panel->CurrentRow(), nullptr);
    EXPECT_TRUE(panel->RowView(q->Filter())->Slot(rsSecondLabel)->isEnabled()) << "the root row shows enabled";
    Press({{Qt::Key_Down, Plain}});
    EXPECT_EQ(panel->CurrentRow(), nullptr) << "arrows need a current row";
    Press({{Qt::Key_Insert, Plain}});
    EXPECT_EQ(Shape(q->Filter()), QStringLiteral("?"));
    EXPECT_EQ(panel->CurrentRow(), q->Filter()->GetRow(0));
}

TEST_F(QueryPanelKeys, ReadOnlyPanelsMoveTheFocusAndChangeNothing)
{
    BuildTree();
    panel->SetReadOnly(true);
    panel->SetCurrentRow(city);
    Press({{Qt::Key_Down, Plain}, {Qt::Key_Down, Plain}, {Qt::Key_Up, Ctrl}, {Qt::Key_Left, Ctrl}, {Qt::Key_Right, Ctrl},
           {Qt::Key_Insert, Plain}, {Qt::Key_Delete, Ctrl}, {Qt::Key_V, Ctrl}, {Qt::Key_Z, Ctrl}, {Qt::Key_Y, Ctrl}});
    EXPECT_EQ(panel->CurrentRow(), discount);
    EXPECT_EQ(Shape(q->Filter()), QStringLiteral("City [Discount Weight] Code"));
    EXPECT_EQ(changes, 0);
    EXPECT_FALSE(panel->MoveCurRowUp());
    // Enter still opens the field's menu, to read it.
    auto *field = static_cast<TDropDownPopup *>(panel->RowView(discount)->CurrentControl());
    bool opened = false;
    QTimer::singleShot(0, field, [field, &opened] {
        opened = field->Menu() && field->Menu()->TopView();
        if (opened)
            QTest::keyClick(field->Menu()->TopView(), Qt::Key_Escape);
    });
    EXPECT_TRUE(panel->KeyDown(Qt::Key_Return, Plain));
    EXPECT_TRUE(opened);
    EXPECT_EQ(changes, 0);
}

// Screen readers follow the focused item: the current row while the panel
// has the focus.
TEST_F(QueryPanelKeys, AssistiveToolsSeeTheCurrentRowFocused)
{
    BuildTree();
    panel->setFocus();
    panel->SetCurrentRow(city);
    Press({{Qt::Key_Down, Plain}});
    QAccessibleInterface *face = QAccessible::queryAccessibleInterface(panel);
    ASSERT_NE(face, nullptr);
    QAccessibleInterface *cityItem = face->child(1);
    QAccessibleInterface *bracketItem = face->child(2);
    ASSERT_TRUE(cityItem && bracketItem);
    EXPECT_TRUE(bracketItem->state().focused);
    EXPECT_EQ(bracketItem->text(QAccessible::Name), panel->RowView(bracket)->Sentence());
    EXPECT_FALSE(cityItem->state().focused);
    EXPECT_TRUE(panel->hasFocus()) << "the panel keeps the keyboard";
    panel->clearFocus();
    EXPECT_FALSE(bracketItem->state().focused);
    EXPECT_TRUE(bracketItem->state().selected);
}

} // namespace
} // namespace vm20
