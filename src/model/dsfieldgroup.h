#pragma once
// Field groups: named lists of fields for menus. A group refers to its
// members; the model owns the fields and the groups.
#include "model/dsfield.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace vm20 {

class TDSFieldGroup : public TDSFieldList
{
public:
    explicit TDSFieldGroup(TNCustomDBStructure *dbStruct = nullptr, const QString &name = QString());
    // Members stay alive and lose their group.
    ~TDSFieldGroup() override;

    const QString &GroupName() const { return FGroupName; }
    void SetGroupName(const QString &value) { FGroupName = value; }
    // The first member offered as a result column, or none.
    TDSField *GetFirstResultField() const;
    // Empties the group; members lose their group.
    void ClearMembers();

private:
    QString FGroupName;
};

class TDSFieldGroupList
{
public:
    explicit TDSFieldGroupList(TNCustomDBStructure *dbStruct = nullptr) : FDbStruct(dbStruct) {}

    int Count() const { return int(FItems.size()); }
    TDSFieldGroup *Items(int index) const;   // EListError outside the list
    // A new group named `name` appended to the list; `field`, when given,
    // moves into it.
    TDSFieldGroup *AddGroup(const QString &name, TDSField *field = nullptr);
    void Delete(int index);
    void Clear() { FItems.clear(); }
    int IndexOf(const TDSFieldGroup *group) const;
    TDSFieldGroup *FindByName(const QString &name) const;
    // The first group holding `field` and the field's index in it; none and -1.
    TDSFieldGroup *FindByField(const TDSField *field, int &index) const;
    void GetGroupNames(QStringList &names) const;

private:
    TNCustomDBStructure *FDbStruct;
    std::vector<std::unique_ptr<TDSFieldGroup>> FItems;
};

} // namespace vm20
