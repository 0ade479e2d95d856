// Join path search. The chain returned is the one a level-by-level expansion
// over the tables' link lists finds first: among the chains with the fewest
// links, the first in the order of the links taken. Expanding candidate paths
// literally blows up on densely linked models, so the search runs backwards
// from the target, level by level, until a level holds a neighbour of the
// start, then walks forward from the start taking at each table its first
// link to a table one step closer.
#include "model/dbstructure.h"

#include "model/errors.h"
#include "model/joingraph.h"
#include "model/messages.h"

namespace vm20 {

void TJoinGraph::Build(const std::vector<std::unique_ptr<TDSTable>> &tables)
{
    FNodes.clear();
    FIndex.clear();
    for (const auto &table : tables) {
        FIndex.insert(table.get(), int(FNodes.size()));
        FNodes.push_back(table.get());
    }
    // The neighbour through a link is its other end, or Table1 when the table
    // is at neither end, exactly as the expansion step reads it.
    std::vector<std::vector<int>> out;
    for (size_t i = 0; i < FNodes.size(); ++i) {
        std::vector<int> neighbours;
        const TDSTable *table = FNodes[i];
        for (const TDSLink *link : table->Links()) {
            TDSTable *other = link->Table1() == table ? link->Table2() : link->Table1();
            if (!other)
                continue;
            auto it = FIndex.constFind(other);
            if (it == FIndex.constEnd()) {
                it = FIndex.insert(other, int(FNodes.size()));
                FNodes.push_back(other);
            }
            neighbours.push_back(*it);
        }
        out.push_back(std::move(neighbours));
    }
    const size_t n = FNodes.size();
    FOutStart.assign(n + 1, 0);
    FOut.clear();
    std::vector<int> inCount(n, 0);
    for (size_t i = 0; i < n; ++i) {
        FOutStart[i] = int(FOut.size());
        for (int j : out[i]) {
            FOut.push_back(j);
            ++inCount[j];
        }
    }
    FOutStart[n] = int(FOut.size());
    FInStart.assign(n + 1, 0);
    for (size_t i = 0; i < n; ++i)
        FInStart[i + 1] = FInStart[i] + inCount[i];
    FIn.assign(FOut.size(), 0);
    std::vector<int> fill(FInStart.begin(), FInStart.end() - 1);
    for (size_t i = 0; i < n; ++i)
        for (int k = FOutStart[i]; k < FOutStart[i + 1]; ++k)
            FIn[fill[FOut[k]]++] = int(i);
    FStamp.assign(n, 0);
    FMark.assign(n, 0);
    FDist.assign(n, 0);
    FQueue.clear();
    FQueue.reserve(n);
    FEpoch = 0;
    FValid = true;
}

bool TJoinGraph::ShortestChain(int start, int target, std::vector<int> &chain)
{
    chain.clear();
    if (++FEpoch == 0) {   // wrapped: old stamps could read as current
        std::fill(FStamp.begin(), FStamp.end(), 0);
        std::fill(FMark.begin(), FMark.end(), 0);
        FEpoch = 1;
    }
    const auto seen = [&](int node) { return FStamp[node] == FEpoch; };
    const auto visit = [&](int node, int dist) {
        FStamp[node] = FEpoch;
        FDist[node] = dist;
        FQueue.push_back(node);
    };
    // The start's neighbours: once a whole level of the search from the
    // target is known and holds one of them, the start's distance is known
    // and the (large) next level need not be expanded.
    for (int k = FOutStart[start]; k < FOutStart[start + 1]; ++k)
        FMark[FOut[k]] = FEpoch;
    const auto marked = [&](int node) { return FMark[node] == FEpoch; };

    // The start is never a step of its own chain, so it is never visited.
    // When it is also the target the search is for a round trip: a self-link,
    // or else the target is expanded without being visited.
    FQueue.clear();
    int level = 0;
    int startDist = 0;
    if (start != target) {
        visit(target, 0);
    } else if (marked(start)) {
        startDist = 1;
    } else {
        level = 1;
        for (int k = FInStart[target]; k < FInStart[target + 1]; ++k)
            if (FIn[k] != start && !seen(FIn[k]))
                visit(FIn[k], 1);
    }
    // FQueue[head, end) is always one complete level.
    for (size_t head = 0; !startDist; ++level) {
        const size_t end = FQueue.size();
        if (head == end)
            return false;
        for (size_t i = head; i < end && !startDist; ++i)
            if (marked(FQueue[i]))
                startDist = level + 1;
        for (; head < end && !startDist; ++head) {
            const int node = FQueue[head];
            for (int k = FInStart[node]; k < FInStart[node + 1]; ++k)
                if (FIn[k] != start && !seen(FIn[k]))
                    visit(FIn[k], level + 1);
        }
    }

    chain.push_back(start);
    int node = start;
    for (int dist = startDist - 1; dist > 0; --dist) {
        for (int k = FOutStart[node]; k < FOutStart[node + 1]; ++k) {
            const int next = FOut[k];
            if (seen(next) && FDist[next] == dist) {
                node = next;
                break;
            }
        }
        chain.push_back(node);
    }
    chain.push_back(target);
    return true;
}

TDSPath *TNCustomDBStructure::GetPath(const QString &name1, const QString &name2)
{
    TDSTable *start = TableByName(1, name1);
    if (!start)
        throw ENDBStructError(dbseNoTable, SDBSENoTable, {name1});
    TDSTable *target = TableByName(1, name2);
    if (!target)
        throw ENDBStructError(dbseNoTable, SDBSENoTable, {name2});

    if (!FJoinGraph->Valid())
        FJoinGraph->Build(FTables);
    std::vector<int> chain;
    if (!FJoinGraph->ShortestChain(FJoinGraph->IndexOf(start), FJoinGraph->IndexOf(target), chain))
        return nullptr;
    FPath.Clear();
    for (int node : chain)
        FPath.AddTable(FJoinGraph->Node(node));
    return &FPath;
}

bool TNCustomDBStructure::CheckPath(const TDSPath &path, const TDSTable *target,
                                    std::vector<std::unique_ptr<TDSPath>> &nextLevel)
{
    const TDSTable *end = path.EndPoint();
    if (!end)
        return false;
    for (const TDSLink *link : end->Links()) {
        TDSTable *neighbour = link->Table1() == end ? link->Table2() : link->Table1();
        if (neighbour == target) {
            nextLevel.clear();
            return true;
        }
        if (neighbour && !path.Contains(neighbour)) {
            auto longer = std::make_unique<TDSPath>(this);
            longer->Assign(path);
            longer->AddTable(neighbour);
            nextLevel.push_back(std::move(longer));
        }
    }
    return false;
}

} // namespace vm20
