#include "ui/accessibility.h"

#include "ui/dropdowncustomedit.h"
#include "ui/dropdownlist.h"
#include "ui/rndbtn.h"

#include "support/exception.h"

#include <QAccessibleWidget>

namespace vm20 {
namespace {

class TRndBtnAccessible : public QAccessibleWidget
{
public:
    explicit TRndBtnAccessible(TNRndBtn *button)
        : QAccessibleWidget(button, QAccessible::Button)
    {
    }

    QString text(QAccessible::Text t) const override
    {
        // A button without a caption reads by the name its owner gave it.
        if (t == QAccessible::Name && !Button()->Caption().isEmpty())
            return Button()->Caption();
        return QAccessibleWidget::text(t);
    }

    QAccessible::State state() const override
    {
        QAccessible::State s = QAccessibleWidget::state();
        s.checkable = Button()->AllowPress();
        s.checked = Button()->Pressed();
        return s;
    }

    QStringList actionNames() const override { return {pressAction()}; }

    void doAction(const QString &name) override
    {
        if (name == pressAction())
            Button()->Click();
    }

private:
    TNRndBtn *Button() const { return static_cast<TNRndBtn *>(widget()); }
};

// A label reads as what it drops: a list as a combo box, a text box as
// editable text, a label with a custom drop-down as a link.
QAccessible::Role LabelRole(const TDropDownLabel *label)
{
    if (qobject_cast<const TDropDownList *>(label))
        return QAccessible::ComboBox;
    if (qobject_cast<const TDropDownCustomEdit *>(label))
        return QAccessible::EditableText;
    return QAccessible::Link;
}

class TLabelAccessible : public QAccessibleWidget
{
public:
    explicit TLabelAccessible(TDropDownLabel *label)
        : QAccessibleWidget(label, LabelRole(label))
    {
    }

    QString text(QAccessible::Text t) const override
    {
        if (t == QAccessible::Name)
            return Label()->Caption();
        if (t == QAccessible::Value)
            return Label()->Value();
        return QAccessibleWidget::text(t);
    }

    QAccessible::State state() const override
    {
        QAccessible::State s = QAccessibleWidget::state();
        s.focused = Label()->Focused();
        s.expandable = true;
        s.expanded = Label()->Dropped();
        s.readOnly = Label()->Fixed();
        return s;
    }

    QStringList actionNames() const override
    {
        if (Label()->Fixed())
            return {};
        return {pressAction(), showMenuAction()};
    }

    void doAction(const QString &name) override
    {
        if ((name != pressAction() && name != showMenuAction()) || Label()->Dropped())
            return;
        // Automation gets no error dialog either: a failing drop-down leaves
        // the label idle.
        try {
            Label()->DropDown();
        } catch (const Exception &) {
        }
    }

private:
    TDropDownLabel *Label() const { return static_cast<TDropDownLabel *>(widget()); }
};

QAccessibleInterface *Factory(const QString &className, QObject *object)
{
    if (!object || !object->isWidgetType())
        return nullptr;
    if (className == QLatin1String("vm20::TNRndBtn"))
        return new TRndBtnAccessible(static_cast<TNRndBtn *>(object));
    if (className == QLatin1String("vm20::TDropDownLabel"))
        return new TLabelAccessible(static_cast<TDropDownLabel *>(object));
    return nullptr;
}

} // namespace

void InstallAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(Factory);
        return true;
    }();
    (void)installed;
}

} // namespace vm20
