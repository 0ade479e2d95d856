#include "uitest.h"

#include "ui/ddlabelerror.h"
#include "ui/dropdownchecklistbox.h"
#include "ui/dropdownlistbox.h"
#include "ui/nchecklistbox.h"

#include <QListWidget>

namespace vm20 {
namespace {

using DropDownList = HostTest;

// Values a, b, c shown as A, B, C.
template <typename Label>
Label *Abc(Label *label)
{
    label->AddItems(QString(), {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")},
                    {QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")});
    return label;
}

TEST_F(DropDownList, CaptionIsAlwaysTheDisplayTextOfTheCurrentValue)
{
    auto *label = Abc(Place<TDropDownListBox>(10, 10));
    label->SetValue(QStringLiteral("b"));
    EXPECT_EQ(label->Caption(), QStringLiteral("B"));
    EXPECT_EQ(label->ItemIndex(), 1);
    label->SetValue(QStringLiteral("zz"));
    EXPECT_EQ(label->Caption(), QStringLiteral("B")) << "a value not in the list leaves the caption";
    EXPECT_EQ(label->ItemIndex(), -1);
    label->SetItemIndex(2);
    EXPECT_EQ(label->Value(), QStringLiteral("c"));
    label->SetValue(QString());
    EXPECT_EQ(label->Caption(), QStringLiteral("_____"));
}

TEST_F(DropDownList, ItemIndexOutOfBoundsRaisesAndTheLabelStaysUsable)
{
    auto *label = Abc(Place<TDropDownListBox>(10, 10));
    label->SetItemIndex(0);
    for (int bad : {3, 4, -2}) {
        SCOPED_TRACE(bad);
        EXPECT_THROW(label->SetItemIndex(bad), EDDLabelError);
        EXPECT_EQ(label->ItemIndex(), 0);
        EXPECT_EQ(label->Caption(), QStringLiteral("A"));
    }
    label->SetItemIndex(1);
    EXPECT_EQ(label->Value(), QStringLiteral("b"));
}

TEST_F(DropDownList, EnterPicksTheRowUnderTheCursorThroughTheSortedList)
{
    auto *label = Place<TDropDownListBox>(10, 10);
    label->AddItems(QString(), {QStringLiteral("z"), QStringLiteral("y")}, {QStringLiteral("Zulu"), QStringLiteral("Yankee")});
    label->SetSortList(true);
    label->DropDown();
    QListWidget *list = label->ListBox();
    ASSERT_TRUE(label->EditMode());
    EXPECT_EQ(list->item(0)->text(), QStringLiteral("Yankee"));
    list->setCurrentRow(0);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_FALSE(label->Dropped());
    EXPECT_EQ(label->Value(), QStringLiteral("y")) << "sorting does not break the row to item mapping";
}

TEST_F(DropDownList, ListLosingFocusHidesItButTheLabelStaysDropped)
{
    auto *label = Abc(Place<TDropDownListBox>(10, 10));
    auto *other = Place<QWidget>(10, 200);
    other->setFocusPolicy(Qt::StrongFocus);
    label->SetValue(QStringLiteral("a"));
    label->DropDown();
    other->setFocus(Qt::MouseFocusReason);
    EXPECT_FALSE(label->EditMode());
    EXPECT_TRUE(label->Dropped());
    EXPECT_EQ(label->Value(), QStringLiteral("a"));
}

TEST_F(DropDownList, UseFormHostsTheListInAWindowOfItsOwn)
{
    auto *label = Abc(Place<TDropDownListBox>(10, 10));
    label->SetUseForm(true);
    label->DropDown();
    QWidget *form = label->Desktop();
    ASSERT_NE(form, host.get());
    EXPECT_TRUE(form->isWindow());
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(form->geometry().top(), host->mapToGlobal(QPoint(0, 10)).y() + label->fontMetrics().height() + 2);
    QTest::keyClick(label->ListBox(), Qt::Key_Escape);
    EXPECT_FALSE(form->isVisible());
    EXPECT_FALSE(label->Dropped());
}

TEST_F(DropDownList, ItemsAndValuesOfUnequalLengthRefuseToDrop)
{
    auto *label = Place<TDropDownListBox>(10, 10);
    label->SetItems({QStringLiteral("A"), QStringLiteral("B")});
    label->SetValues({QStringLiteral("a")});
    EXPECT_THROW(label->DropDown(), EDDLabelError);
    EXPECT_FALSE(label->Dropped());
    label->SetValues({QStringLiteral("a"), QStringLiteral("b")});
    label->DropDown();
    EXPECT_TRUE(label->EditMode());
}

using DropDownCheckListBox = HostTest;

TEST_F(DropDownCheckListBox, ValueChecksRowsAndCaptionShowsTheirTexts)
{
    auto *label = Abc(Place<TDropDownCheckListBox>(10, 10));
    label->SetValue(QStringLiteral("b,c,zz"));
    EXPECT_EQ(label->Caption(), QStringLiteral("B,C")) << "a value not in the list is dropped from the caption";
    label->DropDown();
    TNCheckListBox *list = label->CheckListBox();
    EXPECT_EQ((std::vector<bool>{list->Checked(0), list->Checked(1), list->Checked(2)}),
              (std::vector<bool>{false, true, true}));
}

TEST_F(DropDownCheckListBox, SpaceTogglesTheWholeSelectionAndEnterAccepts)
{
    auto *label = Abc(Place<TDropDownCheckListBox>(10, 10));
    label->SetValue(QStringLiteral("b"));
    label->DropDown();
    TNCheckListBox *list = label->CheckListBox();
    list->setCurrentRow(0);
    QTest::keyClick(list, Qt::Key_Down, Qt::ShiftModifier);
    ASSERT_EQ(list->selectedItems().size(), 2);
    QTest::keyClick(list, Qt::Key_Space);
    EXPECT_EQ((std::vector<bool>{list->Checked(0), list->Checked(1), list->Checked(2)}),
              (std::vector<bool>{true, false, false}));
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(label->Value(), QStringLiteral("a"));
    EXPECT_EQ(label->Caption(), QStringLiteral("A"));
}

TEST_F(DropDownCheckListBox, LeavingTheListAccepts)
{
    auto *label = Abc(Place<TDropDownCheckListBox>(10, 10));
    auto *other = Place<QWidget>(10, 200);
    other->setFocusPolicy(Qt::StrongFocus);
    label->DropDown();
    label->CheckListBox()->SetChecked(2, true);
    other->setFocus(Qt::MouseFocusReason);
    EXPECT_FALSE(label->Dropped());
    EXPECT_EQ(label->Value(), QStringLiteral("c"));
}

} // namespace
} // namespace vm20
