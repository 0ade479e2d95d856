#include "query/joinpaths.h"

#include "model/dbstructure.h"

#include <algorithm>

namespace vm20 {

namespace {

// The table a link leads to from `table`, read as the model's search reads it.
TDSTable *Neighbour(const TDSLink *link, const TDSTable *table)
{
    return link->Table1() == table ? link->Table2() : link->Table1();
}

} // namespace

TDSTable *TJoinPathFinder::Resolve(TDSTable *table)
{
    const auto it = FResolved.constFind(table);
    if (it != FResolved.constEnd())
        return *it;
    TDSTable *resolved = FModel->TableByName(1, table->TableAlias());
    if (!resolved) {
        // Let the model report the unknown alias in its own words.
        FModel->GetPath(table->TableAlias(), table->TableAlias());
        resolved = table;
    }
    FResolved.insert(table, resolved);
    return resolved;
}

const TJoinPathFinder::TSearch &TJoinPathFinder::SearchFrom(TDSTable *start)
{
    const auto it = FSearches.constFind(start);
    if (it != FSearches.constEnd())
        return *it;
    TSearch search;
    for (const TDSLink *link : start->Links()) {
        TDSTable *next = Neighbour(link, start);
        if (next == start)
            search.SelfLink = true;
        else if (next && !search.FirstNeighbour)
            search.FirstNeighbour = next;
    }
    // Breadth first, tables in queue order and links in list order: the first
    // time a table is reached is along the earliest of its shortest chains.
    std::vector<TDSTable *> queue{start};
    search.Parent.insert(start, nullptr);
    for (std::size_t head = 0; head < queue.size(); ++head) {
        TDSTable *table = queue[head];
        for (const TDSLink *link : table->Links()) {
            TDSTable *next = Neighbour(link, table);
            if (next && !search.Parent.contains(next)) {
                search.Parent.insert(next, table);
                queue.push_back(next);
            }
        }
    }
    return *FSearches.insert(start, std::move(search));
}

std::vector<TDSTable *> TJoinPathFinder::Path(TDSTable *from, TDSTable *to)
{
    if (!FModel || !from || !to)
        return {};
    TDSTable *start = Resolve(from);
    TDSTable *target = Resolve(to);
    const TSearch &search = SearchFrom(start);
    if (start == target) {
        // A round trip: over a link to itself, else out and back again.
        if (search.SelfLink)
            return {start, start};
        if (search.FirstNeighbour)
            return {start, search.FirstNeighbour, start};
        return {};
    }
    if (!search.Parent.contains(target))
        return {};
    std::vector<TDSTable *> chain;
    for (TDSTable *table = target; table; table = search.Parent.value(table))
        chain.push_back(table);
    std::reverse(chain.begin(), chain.end());
    return chain;
}

} // namespace vm20
