#pragma once
// Join paths for one build. A build asks for the chain from every used table
// to every table it adds; the model answers each request with a search of
// its own. Here one breadth-first search per start table answers all
// requests from that table, giving the same chains the model gives: the
// fewest links, and among equally short chains the one whose links come
// first in the tables' link lists.
#include <QHash>

#include <vector>

namespace vm20 {

class TDSTable;
class TNCustomDBStructure;

class TJoinPathFinder
{
public:
    explicit TJoinPathFinder(TNCustomDBStructure *model) : FModel(model) {}

    // The chain from `from` to `to` (both ends included); empty when the
    // tables are not connected. Tables are taken by alias, as the model's
    // GetPath takes them, so its errors for unknown aliases are raised.
    std::vector<TDSTable *> Path(TDSTable *from, TDSTable *to);

private:
    struct TSearch
    {
        // The table each reached table was first reached from.
        QHash<const TDSTable *, TDSTable *> Parent;
        // The first neighbour of the start, for a chain back to the start.
        TDSTable *FirstNeighbour = nullptr;
        bool SelfLink = false;
    };

    TDSTable *Resolve(TDSTable *table);
    const TSearch &SearchFrom(TDSTable *start);

    TNCustomDBStructure *FModel;
    QHash<const TDSTable *, TDSTable *> FResolved;
    QHash<const TDSTable *, TSearch> FSearches;
};

} // namespace vm20
