#pragma once
// Named groups of a list label's items; a named group becomes a sub-menu.
#include <QString>

#include <memory>
#include <vector>

namespace vm20 {

class TItemGroup
{
public:
    explicit TItemGroup(QString groupName) : FGroupName(std::move(groupName)) {}
    const QString &GroupName() const { return FGroupName; }
    // Indexes into the owning list's items and values.
    std::vector<int> Items;

private:
    QString FGroupName;
};

class TItemGroupList
{
public:
    // A new group holding one index.
    TItemGroup *AddGroup(const QString &GroupName, int FirstItem);
    // The first group of that name, compared without regard to case.
    TItemGroup *FindByName(const QString &GroupName) const;
    void Clear() { FGroups.clear(); }
    int Count() const { return int(FGroups.size()); }
    TItemGroup *Items(int index) const { return FGroups.at(std::size_t(index)).get(); }

private:
    std::vector<std::unique_ptr<TItemGroup>> FGroups;
};

} // namespace vm20
