#pragma once
// Join paths for one build. A build asks for the chain from every used table
// to every table it adds; the model answers each request with a search of
// its own. Here one breadth-first search per start table answers all
// requests from that table, giving the same chains the model gives: the
// fewest links, and among equally short chains the one whose links come
// first in the tables' link lists.
#include <QHash>
#include <QSet>

#include <memory>
#include <vector>

namespace vm20 {

class TDSTable;
class TNCustomDBStructure;

class TJoinPathFinder
{
public:
    explicit TJoinPathFinder(TNCustomDBStructure *model) : FModel(model) {}

    // The search's handle of a table. Tables are taken by alias, as the
    // model's GetPath takes them, so its errors for unknown aliases are raised.
    int IndexOf(TDSTable *table);
    // The number of tables on the chain between two handles (both ends
    // included), 0 when they are not connected.
    int Length(int from, int to);
    // Whether a table of that chain is in `tables`, walking back from `to`.
    bool Touches(int from, int to, const QSet<const TDSTable *> &tables);
    // The chain itself; empty when there is none.
    std::vector<TDSTable *> Path(int from, int to);
    std::vector<TDSTable *> Path(TDSTable *from, TDSTable *to) { return Path(IndexOf(from), IndexOf(to)); }

private:
    struct TSearch
    {
        std::vector<int> Parent;   // -1: not reached (or the start)
        std::vector<int> Depth;    // -1: not reached
        int FirstNeighbour = -1;   // for a chain back to the start
        bool SelfLink = false;
    };

    int NodeOf(TDSTable *table);
    const TSearch &SearchFrom(int start);

    TNCustomDBStructure *FModel;
    std::vector<TDSTable *> FNodes;
    QHash<const TDSTable *, int> FNodeIndex;   // table -> node
    QHash<const TDSTable *, int> FResolved;    // table -> node of the table its alias names
    std::vector<std::unique_ptr<TSearch>> FSearches;   // by start node
};

} // namespace vm20
