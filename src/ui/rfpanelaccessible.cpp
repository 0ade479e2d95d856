#include "ui/rfpanelaccessible.h"

#include "ui/resultfieldspanel.h"

#include <QAccessibleWidget>
#include <QPointer>

#include <unordered_map>
#include <vector>

namespace vm20 {

namespace {

// One row: no widget of its own, so it lives in the accessibility cache,
// keyed by the panel and the row.
class TRFRowAccessible : public QAccessibleInterface
{
public:
    TRFRowAccessible(TNResultFieldsPanel *panel, const TResultFieldRow *row) : FPanel(panel), FRow(row) {}

    bool isValid() const override { return Row() != nullptr; }
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
        const TResultFieldRow *row = Row();
        if (!row)
            return {};
        if (t == QAccessible::Name)
            return row->Sentence();
        if (t == QAccessible::Description && !row->Missing().isEmpty())
            return QStringLiteral("Not in the model: %1").arg(row->Missing());
        return {};
    }
    void setText(QAccessible::Text, const QString &) override {}
    QRect rect() const override
    {
        QRect r;
        for (const QWidget *control : Controls())
            r |= control->geometry();
        if (const TResultFieldRow *row = Row())
            r |= row->Button()->geometry();
        return r.isNull() ? r : QRect(FPanel->viewport()->mapToGlobal(r.topLeft()), r.size());
    }
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    QAccessible::State state() const override
    {
        QAccessible::State s;
        const TResultFieldRow *row = Row();
        s.invisible = !row || !row->Visible();
        s.selectable = true;
        s.selected = row && FPanel->CurrentRow() == row;
        return s;
    }

private:
    // The row while the panel still shows it.
    const TResultFieldRow *Row() const
    {
        if (!FPanel)
            return nullptr;
        for (int i = 0; i < FPanel->RowCount(); ++i)
            if (FPanel->Row(i) == FRow)
                return FRow;
        return nullptr;
    }
    std::vector<QWidget *> Controls() const
    {
        std::vector<QWidget *> shown;
        if (const TResultFieldRow *row = Row())
            for (QWidget *control : {static_cast<QWidget *>(row->TextLabel1()), static_cast<QWidget *>(row->FieldLabel()),
                                     static_cast<QWidget *>(row->MissingLabel()),
                                     static_cast<QWidget *>(row->TextLabel2()), static_cast<QWidget *>(row->SortLabel())})
                if (control && !control->isHidden())
                    shown.push_back(control);
        return shown;
    }

    QPointer<TNResultFieldsPanel> FPanel;
    const TResultFieldRow *FRow;
};

class TRFPanelAccessible : public QAccessibleWidget
{
public:
    explicit TRFPanelAccessible(TNResultFieldsPanel *panel) : QAccessibleWidget(panel, QAccessible::List) {}

    int childCount() const override { return Panel()->RowCount(); }
    QAccessibleInterface *child(int index) const override
    {
        if (index < 0 || index >= Panel()->RowCount())
            return nullptr;
        return RowInterface(Panel()->Row(index));
    }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        for (int i = 0; i < Panel()->RowCount(); ++i)
            if (RowInterface(Panel()->Row(i)) == child)
                return i;
        return -1;
    }

private:
    TNResultFieldsPanel *Panel() const { return static_cast<TNResultFieldsPanel *>(widget()); }
    QAccessibleInterface *RowInterface(const TResultFieldRow *row) const
    {
        auto found = FIds.find(row);
        if (found != FIds.end())
            if (QAccessibleInterface *known = QAccessible::accessibleInterface(found->second); known && known->isValid())
                return known;
        auto *made = new TRFRowAccessible(Panel(), row);
        FIds[row] = QAccessible::registerAccessibleInterface(made);
        return made;
    }

    mutable std::unordered_map<const TResultFieldRow *, QAccessible::Id> FIds;
};

QAccessibleInterface *Factory(const QString &className, QObject *object)
{
    if (object && className == QLatin1String("vm20::TNResultFieldsPanel"))
        return new TRFPanelAccessible(static_cast<TNResultFieldsPanel *>(object));
    return nullptr;
}

} // namespace

void InstallRFPanelAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(Factory);
        return true;
    }();
    (void)installed;
}

} // namespace vm20
