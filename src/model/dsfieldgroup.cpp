#include "model/dsfieldgroup.h"

#include "support/exception.h"
#include "support/nstrings.h"

namespace vm20 {

TDSFieldGroup::TDSFieldGroup(TNCustomDBStructure *dbStruct, const QString &name)
    : TDSFieldList(dbStruct)
    , FGroupName(name)
{
}

TDSFieldGroup::~TDSFieldGroup()
{
    ClearMembers();
}

TDSField *TDSFieldGroup::GetFirstResultField() const
{
    for (TDSField *field : FItems)
        if (field->UseInResult())
            return field;
    return nullptr;
}

void TDSFieldGroup::ClearMembers()
{
    for (TDSField *field : FItems)
        if (field->FGroup == this)
            field->FGroup = nullptr;
    FItems.clear();
}

TDSFieldGroup *TDSFieldGroupList::Items(int index) const
{
    if (index < 0 || index >= Count())
        throw EListError::IndexOutOfBounds(index);
    return FItems[index].get();
}

TDSFieldGroup *TDSFieldGroupList::AddGroup(const QString &name, TDSField *field)
{
    FItems.push_back(std::make_unique<TDSFieldGroup>(FDbStruct, name));
    TDSFieldGroup *group = FItems.back().get();
    if (field)
        field->SetGroup(group);
    return group;
}

void TDSFieldGroupList::Delete(int index)
{
    if (index < 0 || index >= Count())
        throw EListError::IndexOutOfBounds(index);
    FItems.erase(FItems.begin() + index);
}

int TDSFieldGroupList::IndexOf(const TDSFieldGroup *group) const
{
    for (int i = 0; i < Count(); ++i)
        if (FItems[i].get() == group)
            return i;
    return -1;
}

TDSFieldGroup *TDSFieldGroupList::FindByName(const QString &name) const
{
    for (const auto &group : FItems)
        if (SameText(group->GroupName(), name))
            return group.get();
    return nullptr;
}

TDSFieldGroup *TDSFieldGroupList::FindByField(const TDSField *field, int &index) const
{
    for (const auto &group : FItems) {
        index = group->IndexOf(field);
        if (index >= 0)
            return group.get();
    }
    index = -1;
    return nullptr;
}

void TDSFieldGroupList::GetGroupNames(QStringList &names) const
{
    names.clear();
    for (const auto &group : FItems)
        names.append(group->GroupName());
}

} // namespace vm20
