#include "uitest.h"

#include "ui/dropdownchecklistbox.h"
#include "ui/dropdownedit.h"
#include "ui/dropdownpopup.h"
#include "ui/rndbtn.h"

#include <QAccessible>
#include <QAccessibleActionInterface>

namespace vm20 {
namespace {

using Accessibility = HostTest;

TEST_F(Accessibility, LabelsReadTheirCaptionAndARoleForWhatTheyDrop)
{
    struct Row { int line; TDropDownLabel *label; QAccessible::Role role; const char *why; };
    const Row rows[] = {
        {__LINE__, Place<TDropDownEdit>(10, 10), QAccessible::EditableText, "a text box"},
        {__LINE__, Place<TDropDownCheckListBox>(10, 40), QAccessible::ComboBox, "a list"},
        {__LINE__, Place<TDropDownLabel>(10, 70), QAccessible::Link, "a custom drop-down"},
    };
    for (const Row &r : rows) {
        SCOPED_TRACE(testing::Message() << "line " << r.line << ": " << r.why);
        r.label->SetCaption(QStringLiteral("Price & tax"));
        QAccessibleInterface *face = QAccessible::queryAccessibleInterface(r.label);
        ASSERT_NE(face, nullptr);
        EXPECT_EQ(face->role(), r.role);
        EXPECT_EQ(face->text(QAccessible::Name), QStringLiteral("Price & tax"));
    }
}

TEST_F(Accessibility, PressActionDropsTheLabelDownAndPressesTheButton)
{
    auto *label = Place<TDropDownEdit>(10, 10);
    QAccessibleInterface *face = QAccessible::queryAccessibleInterface(label);
    ASSERT_NE(face->actionInterface(), nullptr);
    face->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(label->EditMode());
    EXPECT_TRUE(face->state().expanded);

    auto *button = Place<TNRndBtn>(10, 100);
    button->SetCaption(QStringLiteral("3"));
    button->SetAllowPress(true);
    QAccessibleInterface *buttonFace = QAccessible::queryAccessibleInterface(button);
    EXPECT_EQ(buttonFace->role(), QAccessible::Button);
    EXPECT_EQ(buttonFace->text(QAccessible::Name), QStringLiteral("3"));
    buttonFace->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(button->Pressed());
}

} // namespace
} // namespace vm20
