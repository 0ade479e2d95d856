#pragma once
// Screen readers and UI automation read a panel as a list of rows. A row has
// no widget of its own, so its item lives in Qt's accessibility cache; each
// panel says only what the row reads, where it is and which controls it holds.

#include <QAbstractScrollArea>
#include <QAccessibleWidget>
#include <QPointer>

#include <functional>
#include <unordered_map>
#include <vector>

namespace vm20 {

// One row of a panel: named by its sentence, its children are its controls.
class TPanelRowAccessible : public QAccessibleInterface
{
public:
    explicit TPanelRowAccessible(QAbstractScrollArea *panel) : FPanel(panel) {}

    bool isValid() const override { return Shown(); }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override;
    QAccessibleInterface *parent() const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    int childCount() const override;
    QAccessibleInterface *child(int index) const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    QString text(QAccessible::Text t) const override;
    void setText(QAccessible::Text, const QString &) override {}
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    QAccessible::State state() const override;

protected:
    // Null once the panel is gone.
    QAbstractScrollArea *Panel() const { return FPanel; }

    // Whether the panel still shows the row; the functions below are asked
    // only while it does, except Current.
    virtual bool Shown() const = 0;
    virtual QString Sentence() const = 0;
    // The model names the row uses and the model lacks, empty when none.
    virtual QString Missing() const = 0;
    // Whether the row is laid out (a row scrolled out of view still is).
    virtual bool Visible() const = 0;
    virtual bool Current() const = 0;
    // The row's box in viewport coordinates, null when it has none.
    virtual QRect ViewportRect() const = 0;
    // The row's controls as drawn, in reading order.
    virtual std::vector<QWidget *> Controls() const = 0;

private:
    QPointer<QAbstractScrollArea> FPanel;
};

// A panel read as a list of rows. Qt owns the row items and may drop them,
// so each is found again by its id and made anew only when it is gone.
class TPanelAccessible : public QAccessibleWidget
{
public:
    explicit TPanelAccessible(QWidget *panel) : QAccessibleWidget(panel, QAccessible::List) {}

protected:
    // The item of the row known by key; make is called when there is none.
    QAccessibleInterface *RowInterface(const void *key, const std::function<QAccessibleInterface *()> &make) const;

private:
    mutable std::unordered_map<const void *, QAccessible::Id> FIds;
};

} // namespace vm20
