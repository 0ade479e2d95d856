#pragma once
// A chain of linked tables from a start table to an end table, as the join
// path search returns it.
#include <vector>

namespace vm20 {

class TDSTable;
class TNCustomDBStructure;

class TDSPath
{
public:
    explicit TDSPath(TNCustomDBStructure *dbStruct = nullptr) : FDBStruct(dbStruct) {}

    TNCustomDBStructure *DBStruct() const { return FDBStruct; }
    int TableCount() const { return int(FTables.size()); }
    TDSTable *GetTable(int index) const;   // EListError outside the chain
    const std::vector<TDSTable *> &Tables() const { return FTables; }
    TDSTable *StartPoint() const { return FTables.empty() ? nullptr : FTables.front(); }
    TDSTable *EndPoint() const { return FTables.empty() ? nullptr : FTables.back(); }
    bool Contains(const TDSTable *table) const;

    void AddTable(TDSTable *table) { FTables.push_back(table); }
    void DelTable(int index);
    void Clear() { FTables.clear(); }
    // The same tables in the same order as `source`.
    void Assign(const TDSPath &source) { FTables = source.FTables; }

private:
    std::vector<TDSTable *> FTables;
    TNCustomDBStructure *FDBStruct;
};

} // namespace vm20
