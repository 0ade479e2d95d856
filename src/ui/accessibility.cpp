#include "ui/accessibility.h"

#include "ui/rndbtn.h"

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
        if (t == QAccessible::Name)
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

QAccessibleInterface *Factory(const QString &className, QObject *object)
{
    if (!object || !object->isWidgetType())
        return nullptr;
    if (className == QLatin1String("vm20::TNRndBtn"))
        return new TRndBtnAccessible(static_cast<TNRndBtn *>(object));
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
