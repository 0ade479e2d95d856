#include "nestedpanel.h"

#include "ui/dropdownedit.h"
#include "ui/dropdownlist.h"
#include "ui/dropdownpopup.h"
#include "ui/rndbtn.h"
#include "uitest.h"

#include "query/shopmodel.h"

#include <QAction>
#include <QCheckBox>
#include <QLineEdit>
#include <QMenu>
#include <QTimer>

namespace vm20 {
namespace {

// The tree as text: "c" a condition, "x" a predefined one, "[...]" a
// bracket, "-" before a disabled row; rows joined by ",".
QString Shape(const TFilterRow *row)
{
    QString text = row->Enabled() ? QString() : QStringLiteral("-");
    if (!row->IsBracket())
        return text + (row->RowType() == frtCustomCondition ? QLatin1Char('x') : QLatin1Char('c'));
    QStringList inner;
    for (const auto &child : static_cast<const TFilterBracket *>(row)->Rows())
        inner << Shape(child.get());
    return text + QLatin1Char('[') + inner.join(QLatin1Char(',')) + QLatin1Char(']');
}

class QueryPanelMenusTest : public NestedPanelTest
{
protected:
    void SetUp() override
    {
        NestedPanelTest::SetUp();
        TQPAppearance &look = panel->Appearance();
        look.SetOptions(look.Options() - TQPAppearance::TQPAppearanceOptions{TQPAppearance::aoFieldsMenuOnAdd});
        panel->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(panel.get()));
        query()->OnChange = [this](TNQuery *) { ++changes; };
        panel->MenuHook = [this](QMenu *menu, QPoint) {
            shown = menu;
            visibleTags.clear();
            for (QAction *action : menu->actions())
                if (action->isVisible())
                    visibleTags << action->data().toInt();
            if (duringMenu)
                duringMenu();
            return answer;
        };
    }

    TNQuery *query() const { return panel->Query(); }

    void ClickButton(const TFilterRow *row)
    {
        QTest::mouseClick(panel->RowView(row)->Button(), Qt::LeftButton);
    }

    // The saved text loads back to the same tree.
    void ExpectConsistent()
    {
        QStringList text;
        query()->SaveToStrings(text);
        const QString before = Shape(query()->Filter());
        TNQuery copy;
        copy.SetDBStruct(query()->DBStruct());
        copy.LoadFromStrings(text);
        EXPECT_EQ(Shape(copy.Filter()), before);
    }

    int changes = 0;
    int answer = 0;
    QMenu *shown = nullptr;
    QList<int> visibleTags;
    std::function<void()> duringMenu;
};

TEST_F(QueryPanelMenusTest, MenusCarryTheirTagsAndCaptionsFromTheTitles)
{
    EXPECT_EQ(panel->RowPopup()->actions()[0]->text(), QStringLiteral("Add new &condition (after current)"));
    EXPECT_EQ(panel->RowPopup()->actions()[3]->text(), QStringLiteral("Add new &condition (inside current)"));
    ASSERT_EQ(panel->MainPopup()->actions().size(), 3);
    QMenu *custom = panel->MainPopup()->actions()[2]->menu();
    ASSERT_NE(custom, nullptr);
    ASSERT_EQ(custom->actions().size(), 2) << "the model's predefined conditions";
    EXPECT_EQ(custom->actions()[1]->text(), QStringLiteral("VIP customers only"));

    query()->SetTitle(QStringLiteral("ttlAfterCurrent"), QStringLiteral("below"));
    EXPECT_EQ(panel->RowPopup()->actions()[0]->text(), QStringLiteral("Add new &condition (below)"));
    shop.model->AddCondition(QStringLiteral("Recent"), QStringLiteral("o.OrderDate > CURRENT_DATE - 30"));
    EXPECT_EQ(custom->actions().size(), 3) << "a model change refills the sub-menus";
}

TEST_F(QueryPanelMenusTest, RowMenuOffersInsideEntriesOnlyOnANestedBracket)
{
    BuildNested();
    struct Row { int line; TFilterRow *row; bool inside; const char *why; };
    const Row rows[] = {
        {__LINE__, first, false, "a condition has no inside"},
        {__LINE__, outer, true, "a nested bracket has"},
        {__LINE__, deep, false, "a condition inside a bracket still has none"},
    };
    for (const Row &r : rows) {
        SCOPED_TRACE(::testing::Message() << "line " << r.line << ": " << r.why);
        shown = nullptr;
        ClickButton(r.row);
        ASSERT_EQ(shown, panel->RowPopup());
        EXPECT_EQ(visibleTags.contains(3), r.inside);
        EXPECT_EQ(visibleTags.contains(4), r.inside);
        EXPECT_EQ(visibleTags.contains(32), r.inside);
        EXPECT_EQ(panel->CurrentRow(), r.row);
    }
    ClickButton(query()->Filter());
    EXPECT_EQ(shown, panel->MainPopup()) << "the root button opens the main menu";
    EXPECT_EQ(changes, 0) << "no entry chosen, nothing changed";
    answer = 3;
    ClickButton(first);
    EXPECT_EQ(Shape(query()->Filter()), QStringLiteral("[c,[c,[c]]]")) << "a hidden entry cannot be chosen";
    answer = 1;
    ClickButton(first);
    EXPECT_EQ(panel->CurrentRow(), query()->Filter()->GetRow(1)) << "the new row becomes current";
    EXPECT_EQ(changes, 1);
}

TEST_F(QueryPanelMenusTest, WithoutAHookTheMenuShowsBelowTheButton)
{
    panel->MenuHook = nullptr;
    const TNRndBtn *button = panel->RowView(query()->Filter())->Button();
    QPoint at;
    QTimer::singleShot(0, panel.get(), [&] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        ASSERT_EQ(menu, panel->MainPopup());
        at = menu->pos();
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    ClickButton(query()->Filter());
    EXPECT_EQ(at, button->mapToGlobal(QPoint(0, button->height())));
    EXPECT_EQ(Shape(query()->Filter()), QStringLiteral("[c]"));
    EXPECT_EQ(changes, 1);
}

TEST_F(QueryPanelMenusTest, EachMenuEntryChangesTheTreeAsItSays)
{
    struct Row { int line; QString current; int tag; QString shape; int events; const char *why; };
    const Row rows[] = {
        {__LINE__, "", 11, "[c,[c,[c]],c]", 1, "root: appended to the root"},
        {__LINE__, "", 12, "[c,[c,[c]],[c]]", 1, "root: a bracket with its first condition"},
        {__LINE__, "1.", 1, "[c,c,[c,[c]]]", 1, "right after a condition"},
        {__LINE__, "2.", 1, "[c,[c,[c]],c]", 1, "after a bracket and its whole sub-tree"},
        {__LINE__, "2.1.", 2, "[c,[c,[c],[c]]]", 1, "a bracket after a condition, in its bracket"},
        {__LINE__, "2.", 3, "[c,[c,[c],c]]", 1, "inside the current bracket, at its end"},
        {__LINE__, "2.2.", 4, "[c,[c,[c,[c]]]]", 1, "a bracket inside the current bracket"},
        {__LINE__, "2.2.1.", 20, "[c,[c,[]]]", 1, "delete a condition"},
        {__LINE__, "2.", 20, "[c]", 1, "delete a bracket with its rows"},
        {__LINE__, "", 20, "[c,[c,[c]]]", 0, "the root is never deleted"},
        {__LINE__, "2.2.", 21, "[c,[c,-[c]]]", 1, "disable a row"},
        {__LINE__, "", 21, "[c,[c,[c]]]", 0, "the root is not disabled from its menu"},
        {__LINE__, "1.", shop::MakeShopModel().vipOnly->ID() + TNQueryPanel::CustomCondTag, "[c,x,[c,[c]]]", 1,
         "a predefined condition after the current row"},
        {__LINE__, "1.", 99, "[c,[c,[c]]]", 0, "an unknown tag does nothing"},
    };
    for (const Row &r : rows) {
        SCOPED_TRACE(::testing::Message() << "line " << r.line << ": " << r.why);
        query()->ClearAll();
        BuildNested();
        changes = 0;
        panel->SetCurrentRow(r.current.isEmpty() ? query()->Filter() : query()->Filter()->RowByID(r.current));
        panel->MenuItemClick(r.tag);
        EXPECT_EQ(Shape(query()->Filter()), r.shape);
        EXPECT_EQ(changes, r.events);
        ExpectConsistent();
    }
}

TEST_F(QueryPanelMenusTest, AddRowLabelAddsOnLeftAndOffersTheMainMenuOnRight)
{
    BuildNested();
    panel->SetCurrentRow(deep);
    QTest::mousePress(panel->AddRowLabel(), Qt::LeftButton);
    EXPECT_EQ(Shape(query()->Filter()), QStringLiteral("[c,[c,[c,c]]]")) << "into the current row's bracket";
    EXPECT_EQ(changes, 1);
    QTest::mousePress(panel->AddRowLabel(), Qt::RightButton);
    EXPECT_EQ(shown, panel->MainPopup());
    EXPECT_EQ(changes, 1);

    // A new condition opens its field list at once with aoFieldsMenuOnAdd.
    TQPAppearance &look = panel->Appearance();
    look.SetOptions(look.Options() + TQPAppearance::TQPAppearanceOptions{TQPAppearance::aoFieldsMenuOnAdd} -
                    TQPAppearance::TQPAppearanceOptions{TQPAppearance::aoPopupField});
    QTest::mousePress(panel->AddRowLabel(), Qt::LeftButton);
    QCoreApplication::processEvents();
    TDropDownLabel *field = panel->RowView(panel->CurrentRow())->Slot(rsFirstLabel);
    EXPECT_TRUE(field->Dropped());
    field->DropUp(false);
}

TEST_F(QueryPanelMenusTest, LabelsWriteBackIntoTheQueryOnceEach)
{
    first = query()->AddCondition(query()->Filter(), nullptr);
    TQueryRowView *view = panel->RowView(first);
    // What a user's pick does: the list fills as it drops, an item is set,
    // the label drops up accepting.
    const auto pick = [this](TFilterRow *row, int slot, const QString &value) {
        auto *list = static_cast<TDropDownList *>(panel->RowView(row)->Slot(slot));
        list->BeforeDropDown(list);
        EXPECT_EQ(panel->CurrentRow(), row);
        EXPECT_FALSE(panel->ShowFrame()) << "no frame while a label is dropped";
        list->SetItemIndex(int(list->Values().indexOf(value)));
        list->DropUp(true);
        EXPECT_TRUE(panel->ShowFrame());
    };
    ASSERT_NE(view, nullptr);
    pick(first, rsFirstLabel, QString::number(shop.custCity->ID()));
    EXPECT_EQ(first->Field(), shop.custCity);
    EXPECT_EQ(changes, 1);
    pick(first, rsSecondLabel, QStringLiteral("NotEqual"));
    EXPECT_EQ(first->Operator()->Name(), QStringLiteral("NotEqual"));
    EXPECT_EQ(changes, 2);
    pick(first, rsSecondLabel, QStringLiteral("NotEqual"));
    EXPECT_EQ(changes, 2) << "the same pick changes nothing";

    auto *value = static_cast<TDropDownEdit *>(panel->RowView(first)->Slot(rsFirstValue));
    value->DropDown();
    static_cast<QLineEdit *>(value->EditControl())->setText(QStringLiteral("Oslo"));
    // A press on the surface closes the editor, keeping the text.
    QTest::mouseClick(panel->viewport(), Qt::LeftButton, {}, QPoint(490, 380));
    EXPECT_EQ(first->GetValue(1), QStringLiteral("Oslo"));
    EXPECT_EQ(changes, 3);

    pick(query()->Filter(), rsSecondLabel, QStringLiteral("all"));
    EXPECT_EQ(query()->Filter()->LinkType(), fltAll);
    EXPECT_EQ(changes, 4);
    query()->BuildQuery();
    EXPECT_TRUE(query()->GetSQL().join(QLatin1Char(' ')).contains(QStringLiteral("c.City <> 'Oslo'")))
        << query()->GetSQL().join(QLatin1Char(' ')).toStdString();
}

TEST_F(QueryPanelMenusTest, ValueMenuMarksParametersAndDoubleClickReachesTheHost)
{
    first = query()->AddCondition(query()->Filter(), shop.custName);
    const auto value = [this] { return panel->RowView(first)->Slot(rsFirstValue); };
    answer = 2;
    QTest::mousePress(value(), Qt::RightButton);
    EXPECT_EQ(shown, panel->ValuePopup());
    EXPECT_TRUE(first->GetValueIsParam(1));
    EXPECT_EQ(changes, 1);
    answer = 0;
    QTest::mousePress(value(), Qt::RightButton);
    EXPECT_TRUE(panel->ValuePopup()->actions()[1]->isChecked()) << "the menu shows what the value is";

    int index = 0;
    panel->OnValueDblClick = [&](TFilterCond *, int valueIndex, QString &text) {
        index = valueIndex;
        text = QStringLiteral("Bergen");
    };
    auto *edit = static_cast<TDropDownEdit *>(value());
    edit->DropDown();
    QTest::mouseDClick(edit->EditControl(), Qt::LeftButton);
    edit->CloseEdit(true);
    EXPECT_EQ(index, 1);
    EXPECT_EQ(first->GetValue(1), QStringLiteral("Bergen"));
    EXPECT_FALSE(first->GetValueIsParam(1)) << "a typed value is a constant";
    EXPECT_EQ(changes, 2);

    TQPAppearance &look = panel->Appearance();
    look.SetOptions(look.Options() - TQPAppearance::TQPAppearanceOptions{TQPAppearance::aoAllowParams});
    shown = nullptr;
    QTest::mousePress(value(), Qt::RightButton);
    EXPECT_EQ(shown, nullptr) << "no value menu without aoAllowParams";
}

TEST_F(QueryPanelMenusTest, LogicalOperatorKeepsTheBracketsNegation)
{
    panel->Appearance().SetLogOpStyle(losBeforeCond);
    first = query()->AddCondition(query()->Filter(), shop.custName);
    TSimpleCond *second = query()->AddCondition(query()->Filter(), shop.custCity);
    query()->Filter()->SetLinkType(fltNone);
    auto *logOp = panel->RowView(second)->LogOpLabel();
    logOp->SetItemIndex(0);
    logOp->DropUp(true);
    EXPECT_EQ(query()->Filter()->LinkType(), fltNotAll) << "or -> and stays negated";
    EXPECT_EQ(changes, 1);
}

TEST_F(QueryPanelMenusTest, ReadOnlyPanelChangesNothing)
{
    BuildNested();
    panel->SetReadOnly(true);
    EXPECT_FALSE(panel->AddRowLabel()->isVisibleTo(panel->viewport()));
    answer = 1;
    ClickButton(first);
    EXPECT_EQ(shown, panel->RowPopup()) << "the menu shows, for reading";
    for (QAction *action : panel->RowPopup()->actions())
        EXPECT_FALSE(action->isEnabled() && !action->isSeparator()) << action->text().toStdString();
    panel->MenuItemClick(20);
    panel->ProcessAddRowClick(nullptr);
    auto *field = static_cast<TDropDownList *>(panel->RowView(first)->Slot(rsFirstLabel));
    field->BeforeDropDown(field);
    field->SetItemIndex(int(field->Values().indexOf(QString::number(shop.custCity->ID()))));
    field->DropUp(true);
    EXPECT_EQ(first->Field(), shop.custName);
    EXPECT_EQ(panel->RowView(first)->Slot(rsFirstLabel)->Caption(), QStringLiteral("Customer name"))
        << "the label shows the query again";
    panel->RowView(first)->CheckBox()->click();
    EXPECT_TRUE(first->Enabled());
    EXPECT_EQ(Shape(query()->Filter()), QStringLiteral("[c,[c,[c]]]"));
    EXPECT_EQ(changes, 0);
}

TEST_F(QueryPanelMenusTest, BadInputLeavesTheQueryConsistent)
{
    BuildNested();
    // A host that reloads the query from its change handler while a label
    // drops up: the label outlives its handler.
    QStringList saved;
    query()->SaveToStrings(saved);
    const QString savedShape = Shape(query()->Filter());
    query()->OnChange = [&](TNQuery *q) {
        ++changes;
        q->LoadFromStrings(saved);
    };
    changes = 0;
    auto *city = static_cast<TDropDownList *>(panel->RowView(first)->Slot(rsFirstLabel));
    city->BeforeDropDown(city);
    city->SetItemIndex(int(city->Values().indexOf(QString::number(shop.custCity->ID()))));
    city->DropUp(true);
    QCoreApplication::processEvents();
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(Shape(query()->Filter()), savedShape);
    query()->OnChange = [this](TNQuery *) { ++changes; };
    changes = 0;
    first = static_cast<TSimpleCond *>(query()->Filter()->GetRow(0));

    // A label dropped while its row is deleted in code.
    auto *field = static_cast<TDropDownList *>(panel->RowView(first)->Slot(rsFirstLabel));
    field->BeforeDropDown(field);
    query()->DeleteRow(first);
    field->SetItemIndex(int(field->Values().indexOf(QString::number(shop.custCity->ID()))));
    field->DropUp(true);
    QCoreApplication::processEvents();
    EXPECT_EQ(changes, 0);
    ExpectConsistent();
}

} // namespace
} // namespace vm20
