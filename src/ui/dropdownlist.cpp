#include "ui/dropdownlist.h"

#include "ui/ddlabelerror.h"

namespace vm20 {

TDropDownList::TDropDownList(QWidget *parent)
    : TDropDownLabel(parent)
{
}

void TDropDownList::SetItems(const QStringList &value)
{
    FItems = value;
    FGroups.Clear();
}

void TDropDownList::SetValues(const QStringList &value)
{
    FValues = value;
    FGroups.Clear();
}

void TDropDownList::SetItemIndex(int value)
{
    if (FItemIndex == value)
        return;
    // An index equal to the count is let through to the look-up below, which
    // refuses it as well: no index may address a missing item.
    if (value < -1 || value >= FItems.size() || value >= FValues.size())
        throw EDDLabelError(QStringLiteral("Index out of bounds"));
    FItemIndex = value;
    if (value == -1) {
        SetValue(QString());
        return;
    }
    SetCaption(FItems[value]);
    SetValue(FValues[value]);
}

void TDropDownList::AddItem(const QString &GroupName, const QString &ValueName, const QString &ItemName)
{
    const int index = int(FItems.size());
    FItems.append(ItemName);
    FValues.append(ValueName);
    if (TItemGroup *group = FGroups.FindByName(GroupName))
        group->Items.push_back(index);
    else
        FGroups.AddGroup(GroupName, index);
}

void TDropDownList::AddItems(const QString &GroupName, const QStringList &AValues, const QStringList &AItems)
{
    if (AValues.size() < AItems.size())
        throw EDDLabelError(QStringLiteral("Fewer values (%1) than items (%2)").arg(AValues.size()).arg(AItems.size()));
    for (qsizetype i = 0; i < AItems.size(); ++i)
        AddItem(GroupName, AValues[i], AItems[i]);
}

void TDropDownList::ClearAll()
{
    SetItemIndex(-1);
    FGroups.Clear();
    FItems.clear();
    FValues.clear();
}

void TDropDownList::ValueChanged()
{
    if (Value().isEmpty()) {
        FItemIndex = -1;
        SetCaption(QString());
        return;
    }
    if (FItemIndex >= 0 && FItemIndex < FValues.size() && FValues[FItemIndex] == Value())
        return;
    const int found = int(FValues.indexOf(Value()));
    FItemIndex = found >= FItems.size() ? -1 : found;
    if (FItemIndex >= 0)
        SetCaption(FItems[FItemIndex]);
}

void TDropDownList::CheckLists() const
{
    if (FItems.size() != FValues.size())
        throw EDDLabelError(QStringLiteral("The list has %1 items but %2 values").arg(FItems.size()).arg(FValues.size()));
}

void TDropDownList::EnsureDefaultGroup()
{
    CheckLists();
    if (FValues.isEmpty() || FGroups.Count() > 0)
        return;
    TItemGroup *group = FGroups.AddGroup(QString(), 0);
    for (int i = 1; i < FValues.size(); ++i)
        group->Items.push_back(i);
}

void TDropDownList::ShowControl()
{
    EnsureDefaultGroup();
}

} // namespace vm20
