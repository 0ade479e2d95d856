#include "ui/rfpanelaccessible.h"

#include "ui/panelrowaccessible.h"
#include "ui/resultfieldspanel.h"

namespace vm20 {

namespace {

class TRFRowAccessible : public TPanelRowAccessible
{
public:
    TRFRowAccessible(TNResultFieldsPanel *panel, const TResultFieldRow *row) : TPanelRowAccessible(panel), FRow(row) {}

protected:
    // The panel's rows are asked for each time: a removed row's pointer
    // must not be followed.
    bool Shown() const override
    {
        if (!RFPanel())
            return false;
        for (int i = 0; i < RFPanel()->RowCount(); ++i)
            if (RFPanel()->Row(i) == FRow)
                return true;
        return false;
    }
    QString Sentence() const override { return FRow->Sentence(); }
    QString Missing() const override { return FRow->Missing(); }
    bool Visible() const override { return FRow->Visible(); }
    bool Current() const override { return Shown() && RFPanel()->CurrentRow() == FRow; }
    QRect ViewportRect() const override
    {
        QRect r = FRow->Button()->geometry();
        for (const QWidget *control : Controls())
            r |= control->geometry();
        return r;
    }
    std::vector<QWidget *> Controls() const override
    {
        std::vector<QWidget *> shown;
        for (QWidget *control : {static_cast<QWidget *>(FRow->TextLabel1()), static_cast<QWidget *>(FRow->FieldLabel()),
                                 static_cast<QWidget *>(FRow->MissingLabel()), static_cast<QWidget *>(FRow->TextLabel2()),
                                 static_cast<QWidget *>(FRow->SortLabel())})
            if (control && !control->isHidden())
                shown.push_back(control);
        return shown;
    }

private:
    TNResultFieldsPanel *RFPanel() const { return static_cast<TNResultFieldsPanel *>(Panel()); }

    const TResultFieldRow *FRow;
};

class TRFPanelAccessible : public TPanelAccessible
{
public:
    explicit TRFPanelAccessible(TNResultFieldsPanel *panel) : TPanelAccessible(panel) {}

    int childCount() const override { return Panel()->RowCount(); }
    QAccessibleInterface *child(int index) const override
    {
        if (index < 0 || index >= Panel()->RowCount())
            return nullptr;
        return Row(Panel()->Row(index));
    }
    int indexOfChild(const QAccessibleInterface *child) const override
    {
        for (int i = 0; i < Panel()->RowCount(); ++i)
            if (Row(Panel()->Row(i)) == child)
                return i;
        return -1;
    }

private:
    TNResultFieldsPanel *Panel() const { return static_cast<TNResultFieldsPanel *>(widget()); }
    QAccessibleInterface *Row(const TResultFieldRow *row) const
    {
        return RowInterface(row, [&] { return new TRFRowAccessible(Panel(), row); });
    }
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
    QAccessible::installFactory(Factory);
}

} // namespace vm20
