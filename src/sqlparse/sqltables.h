#pragma once
// The tables of a parsed statement's FROM clause, joined tables included.
#include <QString>

#include <memory>
#include <vector>

namespace vm20 {

class TSQLTable
{
public:
    QString AliasName() const { return FAliasName; }
    void SetAliasName(const QString &value) { FAliasName = value; }
    QString TableName() const { return FTableName; }
    // A table without an alias goes by its name, until an alias is given.
    void SetTableName(const QString &value)
    {
        FTableName = value;
        if (FAliasName.isEmpty())
            FAliasName = value;
    }

private:
    QString FAliasName;
    QString FTableName;
};

class TSQLTableList
{
public:
    int Count() const { return int(FItems.size()); }
    TSQLTable *Items(int index) const;  // EListError outside the list
    TSQLTable *Add(std::unique_ptr<TSQLTable> table);
    void Clear() { FItems.clear(); }

private:
    std::vector<std::unique_ptr<TSQLTable>> FItems;
};

} // namespace vm20
