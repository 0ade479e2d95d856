#pragma once
// Base of the labels that pick one of a list of items: display texts,
// their values, and named groups of them.
#include "ui/dropdownlabel.h"
#include "ui/itemgroup.h"

#include <QStringList>

namespace vm20 {

class TDropDownList : public TDropDownLabel
{
    Q_OBJECT
    Q_PROPERTY(bool SortList READ SortList WRITE SetSortList)
    Q_PROPERTY(QStringList Items READ Items WRITE SetItems)
    Q_PROPERTY(QStringList Values READ Values WRITE SetValues)
    Q_PROPERTY(int ItemIndex READ ItemIndex WRITE SetItemIndex)

public:
    explicit TDropDownList(QWidget *parent = nullptr);

    bool SortList() const { return FSortList; }
    void SetSortList(bool value) { FSortList = value; }
    const QStringList &Items() const { return FItems; }
    const QStringList &Values() const { return FValues; }
    // Whole lists: both must end up the same length before the list drops
    // down; groups are rebuilt from scratch then.
    void SetItems(const QStringList &value);
    void SetValues(const QStringList &value);
    const TItemGroupList &Groups() const { return FGroups; }

    // -1 for none; beyond the item count raises EDDLabelError.
    int ItemIndex() const { return FItemIndex; }
    void SetItemIndex(int value);

    void AddItem(const QString &GroupName, const QString &ValueName, const QString &ItemName);
    // Raises EDDLabelError when AValues has fewer entries than AItems.
    void AddItems(const QString &GroupName, const QStringList &AValues, const QStringList &AItems);
    // Items, values and groups go; the caption stays as it was.
    void ClearAll();

protected:
    void ValueChanged() override;
    void ShowControl() override;
    // Makes one nameless group of all items when none was named.
    void EnsureDefaultGroup();
    // Raises EDDLabelError when Items and Values differ in length.
    void CheckLists() const;

    QStringList FItems;
    QStringList FValues;
    TItemGroupList FGroups;

private:
    int FItemIndex = -1;
    bool FSortList = false;
};

} // namespace vm20
