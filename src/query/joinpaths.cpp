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

int TJoinPathFinder::NodeOf(TDSTable *table)
{
    const auto it = FNodeIndex.constFind(table);
    if (it != FNodeIndex.constEnd())
        return *it;
    const int node = int(FNodes.size());
    FNodes.push_back(table);
    FNodeIndex.insert(table, node);
    return node;
}

int TJoinPathFinder::IndexOf(TDSTable *table)
{
    if (!FModel || !table)
        return -1;
    const auto it = FResolved.constFind(table);
    if (it != FResolved.constEnd())
        return *it;
    TDSTable *resolved = FModel->TableByName(1, table->TableAlias());
    if (!resolved) {
        // Let the model report the unknown alias in its own words.
        FModel->GetPath(table->TableAlias(), table->TableAlias());
        resolved = table;
    }
    const int node = NodeOf(resolved);
    FResolved.insert(table, node);
    return node;
}

const TJoinPathFinder::TSearch &TJoinPathFinder::SearchFrom(int start)
{
    if (start < int(FSearches.size()) && FSearches[std::size_t(start)])
        return *FSearches[std::size_t(start)];
    auto search = std::make_unique<TSearch>();
    const TDSTable *startTable = FNodes[std::size_t(start)];
    for (const TDSLink *link : startTable->Links()) {
        TDSTable *next = Neighbour(link, startTable);
        if (next == startTable)
            search->SelfLink = true;
        else if (next && search->FirstNeighbour < 0)
            search->FirstNeighbour = NodeOf(next);
    }
    // Breadth first, tables in queue order and links in list order: the first
    // time a table is reached is along the earliest of its shortest chains.
    const auto reach = [&search](int node, int parent, int depth) {
        if (node >= int(search->Depth.size())) {
            search->Depth.resize(std::size_t(node) + 1, -1);
            search->Parent.resize(std::size_t(node) + 1, -1);
        }
        search->Depth[std::size_t(node)] = depth;
        search->Parent[std::size_t(node)] = parent;
    };
    search->Depth.assign(FNodes.size(), -1);
    search->Parent.assign(FNodes.size(), -1);
    reach(start, -1, 0);
    std::vector<int> queue{start};
    for (std::size_t head = 0; head < queue.size(); ++head) {
        const int node = queue[head];
        const TDSTable *table = FNodes[std::size_t(node)];
        const int depth = search->Depth[std::size_t(node)];
        for (const TDSLink *link : table->Links()) {
            TDSTable *next = Neighbour(link, table);
            if (!next)
                continue;
            const int nextNode = NodeOf(next);
            if (nextNode < int(search->Depth.size()) && search->Depth[std::size_t(nextNode)] >= 0)
                continue;
            reach(nextNode, node, depth + 1);
            queue.push_back(nextNode);
        }
    }
    if (start >= int(FSearches.size()))
        FSearches.resize(std::size_t(start) + 1);
    FSearches[std::size_t(start)] = std::move(search);
    return *FSearches[std::size_t(start)];
}

int TJoinPathFinder::Length(int start, int target)
{
    if (start < 0 || target < 0)
        return 0;
    const TSearch &search = SearchFrom(start);
    if (start == target)
        return search.SelfLink ? 2 : search.FirstNeighbour >= 0 ? 3 : 0;
    if (target >= int(search.Depth.size()) || search.Depth[std::size_t(target)] < 0)
        return 0;
    return search.Depth[std::size_t(target)] + 1;
}

bool TJoinPathFinder::Touches(int start, int target, const QSet<const TDSTable *> &tables)
{
    if (Length(start, target) == 0)
        return false;
    const TSearch &search = SearchFrom(start);
    if (start == target)
        return tables.contains(FNodes[std::size_t(start)])
               || (!search.SelfLink && tables.contains(FNodes[std::size_t(search.FirstNeighbour)]));
    for (int node = target; node >= 0; node = search.Parent[std::size_t(node)])
        if (tables.contains(FNodes[std::size_t(node)]))
            return true;
    return false;
}

std::vector<TDSTable *> TJoinPathFinder::Path(int start, int target)
{
    if (Length(start, target) == 0)
        return {};
    const TSearch &search = SearchFrom(start);
    TDSTable *startTable = FNodes[std::size_t(start)];
    if (start == target) {
        // A round trip: over a link to itself, else out and back again.
        if (search.SelfLink)
            return {startTable, startTable};
        return {startTable, FNodes[std::size_t(search.FirstNeighbour)], startTable};
    }
    std::vector<TDSTable *> chain;
    for (int node = target; node >= 0; node = search.Parent[std::size_t(node)])
        chain.push_back(FNodes[std::size_t(node)]);
    std::reverse(chain.begin(), chain.end());
    return chain;
}

} // namespace vm20
