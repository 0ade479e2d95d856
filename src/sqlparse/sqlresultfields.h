#pragma once
// The select list of a parsed statement.
#include <QString>

#include <memory>
#include <vector>

namespace vm20 {

class TSQLResultField
{
public:
    QString Alias() const { return FAlias; }
    void SetAlias(const QString &value) { FAlias = value; }
    // Derived from SQLExpr: a function call keeps its whole text, a dotted
    // name gives the part after the first dot.
    QString Caption() const { return FCaption; }
    void SetCaption(const QString &value) { FCaption = value; }
    QString SQLExpr() const { return FSQLExpr; }
    void SetSQLExpr(const QString &value);
    // 0 not sorted, 1 ascending, 2 descending (the ordinals of TSortingType).
    int Sorting() const { return FSorting; }
    void SetSorting(int value) { FSorting = value; }
    // 1-based place in the ORDER BY list; 0 when not sorted.
    int SortOrder() const { return FSortOrder; }
    void SetSortOrder(int value) { FSortOrder = value; }

private:
    QString FAlias;
    QString FCaption;
    QString FSQLExpr;
    int FSorting = 0;
    int FSortOrder = 0;
};

class TSQLResultFieldList
{
public:
    int Count() const { return int(FItems.size()); }
    TSQLResultField *Items(int index) const;  // EListError outside the list
    TSQLResultField *Add(std::unique_ptr<TSQLResultField> field);
    void Clear() { FItems.clear(); }

    // Set when the statement selects "*": ORDER BY columns are then appended
    // rather than looked up.
    bool JustSorting() const { return FJustSorting; }
    void SetJustSorting(bool value) { FJustSorting = value; }

    // Case-insensitive; -1 when absent.
    int IndexByAlias(const QString &alias) const;
    int IndexByExpr(const QString &expr) const;

private:
    std::vector<std::unique_ptr<TSQLResultField>> FItems;
    bool FJustSorting = false;
};

} // namespace vm20
