#pragma once
// Per-table filter texts: the condition tree turned into one filter
// expression per model table instead of one statement.
#include <QString>

#include <memory>
#include <vector>

namespace vm20 {

class TDSTable;

class TNTableFilter
{
public:
    explicit TNTableFilter(TDSTable *table) : FTable(table) {}

    // None for the conditions that touch no table.
    TDSTable *Table() const { return FTable; }
    const QString &Filter() const { return FFilter; }
    void SetFilter(const QString &value) { FFilter = value; }

private:
    TDSTable *FTable;
    QString FFilter;
};

class TNTableFilterList
{
public:
    int Count() const { return int(FItems.size()); }
    TNTableFilter *Items(int index) const;   // EListError outside the list
    TNTableFilter *Add(TDSTable *table);
    void Clear() { FItems.clear(); }
    TNTableFilter *FindByTable(const TDSTable *table) const;
    // Drops the filters of `table` (of every table for none).
    void RemoveTable(const TDSTable *table);
    // By the table's name, without regard to case.
    TNTableFilter *FindByTableName(const QString &name) const;

private:
    std::vector<std::unique_ptr<TNTableFilter>> FItems;
};

} // namespace vm20
