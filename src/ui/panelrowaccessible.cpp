#include "ui/panelrowaccessible.h"

namespace vm20 {

QWindow *TPanelRowAccessible::window() const
{
    return FPanel ? FPanel->window()->windowHandle() : nullptr;
}

QAccessibleInterface *TPanelRowAccessible::parent() const
{
    return QAccessible::queryAccessibleInterface(FPanel.data());
}

QAccessibleInterface *TPanelRowAccessible::childAt(int x, int y) const
{
    for (int i = 0; i < childCount(); ++i)
        if (QAccessibleInterface *c = child(i); c && c->rect().contains(x, y))
            return c;
    return nullptr;
}

int TPanelRowAccessible::childCount() const
{
    return Shown() ? int(Controls().size()) : 0;
}

QAccessibleInterface *TPanelRowAccessible::child(int index) const
{
    const std::vector<QWidget *> controls = Shown() ? Controls() : std::vector<QWidget *>();
    return index >= 0 && index < int(controls.size()) ? QAccessible::queryAccessibleInterface(controls[std::size_t(index)])
                                                      : nullptr;
}

int TPanelRowAccessible::indexOfChild(const QAccessibleInterface *child) const
{
    const std::vector<QWidget *> controls = Shown() ? Controls() : std::vector<QWidget *>();
    for (std::size_t i = 0; i < controls.size(); ++i)
        if (child && child->object() == controls[i])
            return int(i);
    return -1;
}

QString TPanelRowAccessible::text(QAccessible::Text t) const
{
    if (!Shown())
        return {};
    if (t == QAccessible::Name)
        return Sentence();
    if (t == QAccessible::Description)
        if (const QString missing = Missing(); !missing.isEmpty())
            return QStringLiteral("Not in the model: %1").arg(missing);
    return {};
}

QRect TPanelRowAccessible::rect() const
{
    const QRect r = Shown() ? ViewportRect() : QRect();
    return r.isNull() ? r : QRect(FPanel->viewport()->mapToGlobal(r.topLeft()), r.size());
}

QAccessible::State TPanelRowAccessible::state() const
{
    QAccessible::State s;
    s.invisible = !Shown() || !Visible();
    s.selectable = true;
    s.selected = Current();
    return s;
}

QAccessibleInterface *TPanelAccessible::RowInterface(const void *key,
                                                     const std::function<QAccessibleInterface *()> &make) const
{
    auto found = FIds.find(key);
    if (found != FIds.end())
        if (QAccessibleInterface *known = QAccessible::accessibleInterface(found->second); known && known->isValid())
            return known;
    QAccessibleInterface *made = make();
    FIds[key] = QAccessible::registerAccessibleInterface(made);
    return made;
}

} // namespace vm20
