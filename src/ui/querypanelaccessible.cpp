#include "ui/querypanelaccessible.h"

#include "ui/dropdownlabel.h"
#include "ui/panelrowaccessible.h"
#include "ui/querypanel.h"
#include "ui/rndbtn.h"

#include <QCheckBox>

namespace vm20 {

namespace {

class TRowAccessible : public TPanelRowAccessible
{
public:
    TRowAccessible(TNQueryPanel *panel, const TFilterRow *row) : TPanelRowAccessible(panel), FRow(row) {}

    QAccessible::State state() const override
    {
        QAccessible::State s = TPanelRowAccessible::state();
        const TQueryRowView *view = View();
        s.offscreen = view && !view->InView();
        s.disabled = !FRow || (view && !FRow->IsEffectivelyEnabled());
        s.focusable = true;
        s.focused = s.selected && Panel()->hasFocus();
        return s;
    }

protected:
    bool Shown() const override { return View() != nullptr; }
    QString Sentence() const override { return View()->Sentence(); }
    QString Missing() const override { return View()->Missing(); }
    bool Visible() const override { return View()->Visible(); }
    bool Current() const override { return QueryPanel() && QueryPanel()->CurrentRow() == FRow; }
    QRect ViewportRect() const override { return View()->GetRowRect(); }
    // The row's button (its menu), check box and labels, as drawn. A row
    // scrolled out of view still reads whole.
    std::vector<QWidget *> Controls() const override
    {
        std::vector<QWidget *> shown;
        const TQueryRowView *view = View();
        if (!view->Visible())
            return shown;
        const TQPAppearance &look = QueryPanel()->Appearance();
        if (!FRow->Parent() || !look.Has(TQPAppearance::aoHideRowButtons))
            shown.push_back(view->Button());
        if (view->CheckBox() && look.Has(TQPAppearance::aoShowCheckBoxes))
            shown.push_back(view->CheckBox());
        for (TDropDownLabel *label : view->Controls())
            shown.push_back(label);
        return shown;
    }

private:
    TNQueryPanel *QueryPanel() const { return static_cast<TNQueryPanel *>(Panel()); }
    const TQueryRowView *View() const { return QueryPanel() ? QueryPanel()->RowView(FRow) : nullptr; }

    const TFilterRow *FRow;
};

class TQueryPanelAccessible : public TPanelAccessible
{
public:
    explicit TQueryPanelAccessible(TNQueryPanel *panel) : TPanelAccessible(panel) {}

    // The rows, then the add-row label when it shows.
    int childCount() const override { return int(Panel()->DisplayRows().size()) + (AddRow() ? 1 : 0); }
    QAccessibleInterface *child(int index) const override
    {
        const std::vector<TFilterRow *> rows = Panel()->DisplayRows();
        if (index == int(rows.size()) && AddRow())
            return QAccessible::queryAccessibleInterface(AddRow());
        if (index < 0 || index >= int(rows.size()))
            return nullptr;
        return Row(rows[std::size_t(index)]);
    }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        const std::vector<TFilterRow *> rows = Panel()->DisplayRows();
        if (child && AddRow() && child->object() == AddRow())
            return int(rows.size());
        for (std::size_t i = 0; i < rows.size(); ++i)
            if (Row(rows[i]) == child)
                return int(i);
        return -1;
    }

    QAccessibleInterface *Row(const TFilterRow *row) const
    {
        return RowInterface(row, [&] { return new TRowAccessible(Panel(), row); });
    }

private:
    TNQueryPanel *Panel() const { return static_cast<TNQueryPanel *>(widget()); }
    TDropDownLabel *AddRow() const
    {
        TDropDownLabel *label = Panel()->AddRowLabel();
        return label && label->isVisibleTo(Panel()) ? label : nullptr;
    }
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
    return face->Row(row);
}

void InstallQueryPanelAccessibility()
{
    QAccessible::installFactory(Factory);
}

} // namespace vm20
