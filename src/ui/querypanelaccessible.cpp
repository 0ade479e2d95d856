#include "ui/querypanelaccessible.h"

#include "ui/dropdownlabel.h"
#include "ui/querypanel.h"
#include "ui/rndbtn.h"

#include <QAccessibleWidget>
#include <QCheckBox>
#include <QPointer>

namespace vm20 {

namespace {

// One row: no widget of its own, so it lives in the accessibility cache,
// keyed by the panel and the row.
class TRowAccessible : public QAccessibleInterface
{
public:
    TRowAccessible(TNQueryPanel *panel, const TFilterRow *row) : FPanel(panel), FRow(row) {}

    bool isValid() const override { return View() != nullptr; }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return FPanel ? FPanel->window()->windowHandle() : nullptr; }
    QAccessibleInterface *parent() const override { return QAccessible::queryAccessibleInterface(FPanel.data()); }
    QAccessibleInterface *childAt(int x, int y) const override
    {
        for (int i = 0; i < childCount(); ++i)
            if (QAccessibleInterface *c = child(i); c && c->rect().contains(x, y))
                return c;
        return nullptr;
    }
    int childCount() const override { return int(Controls().size()); }
    QAccessibleInterface *child(int index) const override
    {
        const std::vector<QWidget *> controls = Controls();
        return index >= 0 && index < int(controls.size())
                   ? QAccessible::queryAccessibleInterface(controls[std::size_t(index)])
                   : nullptr;
    }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        const std::vector<QWidget *> controls = Controls();
        for (std::size_t i = 0; i < controls.size(); ++i)
            if (child && child->object() == controls[i])
                return int(i);
        return -1;
    }
    QString text(QAccessible::Text t) const override
    {
        const TQueryRowView *view = View();
        if (!view)
            return {};
        if (t == QAccessible::Name)
            return view->Sentence();
        if (t == QAccessible::Description && !view->Missing().isEmpty())
            return QStringLiteral("Not in the model: %1").arg(view->Missing());
        return {};
    }
    void setText(QAccessible::Text, const QString &) override {}
    QRect rect() const override
    {
        const TQueryRowView *view = View();
        if (!view)
            return {};
        const QRect r = view->GetRowRect();
        return QRect(FPanel->viewport()->mapToGlobal(r.topLeft()), r.size());
    }
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    QAccessible::State state() const override
    {
        QAccessible::State s;
        const TQueryRowView *view = View();
        s.invisible = !view || !view->Visible();
        s.offscreen = view && !view->InView();
        s.disabled = !FRow || (view && !FRow->IsEffectivelyEnabled());
        s.selectable = true;
        s.selected = FPanel && FPanel->CurrentRow() == FRow;
        s.focusable = true;
        s.focused = s.selected && FPanel->hasFocus();
        return s;
    }

private:
    const TQueryRowView *View() const { return FPanel ? FPanel->RowView(FRow) : nullptr; }
    // The row's button (its menu), check box and labels, as drawn. A row
    // scrolled out of view still reads whole.
    std::vector<QWidget *> Controls() const
    {
        std::vector<QWidget *> shown;
        const TQueryRowView *view = View();
        if (!view || !view->Visible())
            return shown;
        const TQPAppearance &look = FPanel->Appearance();
        if (!FRow->Parent() || !look.Has(TQPAppearance::aoHideRowButtons))
            shown.push_back(view->Button());
        if (view->CheckBox() && look.Has(TQPAppearance::aoShowCheckBoxes))
            shown.push_back(view->CheckBox());
        for (TDropDownLabel *label : view->Controls())
            shown.push_back(label);
        return shown;
    }

    QPointer<TNQueryPanel> FPanel;
    const TFilterRow *FRow;
};

class TQueryPanelAccessible : public QAccessibleWidget
{
public:
    explicit TQueryPanelAccessible(TNQueryPanel *panel) : QAccessibleWidget(panel, QAccessible::List) {}

    // The rows, then the add-row label when it shows.
    int childCount() const override { return int(Panel()->DisplayRows().size()) + (AddRow() ? 1 : 0); }
    QAccessibleInterface *child(int index) const override
    {
        const std::vector<TFilterRow *> rows = Panel()->DisplayRows();
        if (index == int(rows.size()) && AddRow())
            return QAccessible::queryAccessibleInterface(AddRow());
        if (index < 0 || index >= int(rows.size()))
            return nullptr;
        return RowInterface(rows[std::size_t(index)]);
    }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        const std::vector<TFilterRow *> rows = Panel()->DisplayRows();
        if (child && AddRow() && child->object() == AddRow())
            return int(rows.size());
        for (std::size_t i = 0; i < rows.size(); ++i)
            if (RowInterface(rows[i]) == child)
                return int(i);
        return -1;
    }

    QAccessibleInterface *RowInterface(const TFilterRow *row) const
    {
        auto found = FIds.find(row);
        if (found != FIds.end())
            if (QAccessibleInterface *known = QAccessible::accessibleInterface(found->second); known && known->isValid())
                return known;
        auto *made = new TRowAccessible(Panel(), row);
        FIds[row] = QAccessible::registerAccessibleInterface(made);
        return made;
    }

private:
    TNQueryPanel *Panel() const { return static_cast<TNQueryPanel *>(widget()); }
    TDropDownLabel *AddRow() const
    {
        TDropDownLabel *label = Panel()->AddRowLabel();
        return label && label->isVisibleTo(Panel()) ? label : nullptr;
    }

    mutable std::unordered_map<const TFilterRow *, QAccessible::Id> FIds;
};

QAccessibleInterface *Factory(const QString &className, QObject *object)
{
    if (object && className == QLatin1String("vm20::TNQueryPanel"))
        return new TQueryPanelAccessible(static_cast<TNQueryPanel *>(object));
    return nullptr;
}

} // namespace

QAccessibleInterface *QueryRowAccessible(TNQueryPanel *panel, const TFilterRow *row)
{
    auto *face = dynamic_cast<TQueryPanelAccessible *>(QAccessible::queryAccessibleInterface(panel));
    if (!face || !row)
        return nullptr;
    return face->RowInterface(row);
}

void InstallQueryPanelAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(Factory);
        return true;
    }();
    (void)installed;
}

} // namespace vm20
