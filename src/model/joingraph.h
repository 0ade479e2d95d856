#pragma once
// The model's tables and links as flat adjacency arrays for the join path
// search. Rebuilt lazily after any change to tables or links; per-search
// state is stamped with an epoch so nothing is cleared between calls.
#include <QHash>

#include <cstdint>
#include <memory>
#include <vector>

namespace vm20 {

class TDSTable;

class TJoinGraph
{
public:
    void Invalidate() { FValid = false; }
    bool Valid() const { return FValid; }
    void Build(const std::vector<std::unique_ptr<TDSTable>> &tables);

    int IndexOf(const TDSTable *table) const { return FIndex.value(table, -1); }
    TDSTable *Node(int index) const { return FNodes[index]; }

    // The chain of node indexes from start to target; false when there is none.
    bool ShortestChain(int start, int target, std::vector<int> &chain);

private:
    bool FValid = false;
    // The model's tables first, then tables outside the model that links reach.
    std::vector<TDSTable *> FNodes;
    QHash<const TDSTable *, int> FIndex;
    // Neighbours in each table's link order (one entry per link), and the
    // reverse: the tables whose links lead to each table.
    std::vector<int> FOutStart;
    std::vector<int> FOut;
    std::vector<int> FInStart;
    std::vector<int> FIn;
    std::vector<std::uint32_t> FStamp;   // visited in the current search
    std::vector<std::uint32_t> FMark;    // a neighbour of the current start
    std::vector<int> FDist;
    std::vector<int> FQueue;
    std::uint32_t FEpoch = 0;
};

} // namespace vm20
