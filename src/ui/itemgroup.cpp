#include "ui/itemgroup.h"

namespace vm20 {

TItemGroup *TItemGroupList::AddGroup(const QString &GroupName, int FirstItem)
{
    FGroups.push_back(std::make_unique<TItemGroup>(GroupName));
    FGroups.back()->Items.push_back(FirstItem);
    return FGroups.back().get();
}

TItemGroup *TItemGroupList::FindByName(const QString &GroupName) const
{
    for (const auto &group : FGroups)
        if (group->GroupName().compare(GroupName, Qt::CaseInsensitive) == 0)
            return group.get();
    return nullptr;
}

} // namespace vm20
