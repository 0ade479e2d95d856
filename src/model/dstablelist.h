#pragma once
// A list of table references (not owned): a field's or a condition's tables.
#include <QString>

#include <vector>

namespace vm20 {

class TDSTable;

class TSimpleDSTableList
{
public:
    int Count() const { return int(FItems.size()); }
    TDSTable *Items(int index) const;   // EListError outside the list
    const std::vector<TDSTable *> &Tables() const { return FItems; }
    void Add(TDSTable *table) { FItems.push_back(table); }
    void Insert(int index, TDSTable *table);
    void Erase(int index);
    void Remove(const TDSTable *table);  // every reference to `table`
    int IndexOf(const TDSTable *table) const;
    bool Contains(const TDSTable *table) const { return IndexOf(table) >= 0; }
    void Clear() { FItems.clear(); }
    // The tables' names joined with ",".
    QString CommaText() const;

private:
    std::vector<TDSTable *> FItems;
};

} // namespace vm20
