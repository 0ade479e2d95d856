#pragma once
// The names of a query's parameters, without regard to case, and the first
// free name on a base (base, base1, base2, ...), each in constant time for a
// query that gains parameter after parameter.
#include <QHash>
#include <QString>

namespace vm20 {

class TParamNameIndex
{
public:
    void Add(const QString &name);
    void Remove(const QString &name);
    void Clear();
    bool Contains(const QString &name) const { return FCounts.contains(name.toCaseFolded()); }
    // The first of base, base1, base2, ... that no name has (a number has no
    // leading zero or sign).
    QString FirstFree(const QString &base) const;

private:
    QHash<QString, int> FCounts;  // case-folded name: how many parameters have it
    // Case-folded base: a number below which every name on the base is taken,
    // so that the search for a free one starts there and not at the bare base.
    mutable QHash<QString, int> FFreeFrom;
};

} // namespace vm20
