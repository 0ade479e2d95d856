#pragma once
// A link of the model as drawn on the diagram: the end points on each of
// its two tables, kept in step with the tables' places and scrolling.
#include "designer/linknode.h"

#include <QColor>
#include <QPoint>
#include <QRect>
#include <QRegion>
#include <QStringList>

#include <memory>
#include <vector>

class QPainter;

namespace vm20 {

class TDSLink;
class TNStructDesignPanel;
class TTableRep;

class TLinkRep
{
public:
    // `link` is none for the link being added.
    TLinkRep(TNStructDesignPanel *panel, TDSLink *link, TTableRep *table1, TTableRep *table2);

    TDSLink *Link() const { return FLink; }
    TTableRep *TableRep1() const { return FTableRep1; }
    TTableRep *TableRep2() const { return FTableRep2; }
    void SetTableRep1(TTableRep *rep) { FTableRep1 = rep; }
    const TLinkNodes &Nodes1() const { return FNodes1; }
    const TLinkNodes &Nodes2() const { return FNodes2; }
    TLinkNodes &Nodes1() { return FNodes1; }
    TLinkNodes &Nodes2() { return FNodes2; }
    bool Active() const { return FActive; }
    void SetActive(bool value);

    void RecalcPositions();
    void CalcPosForTable(const QStringList &entries, TLinkNodes &nodes, const TTableRep *rep,
                         const TTableRep *other) const;
    // Draws the segments that reach into `dirty` (all of them when it is
    // empty); the painter's clip keeps the rest out anyway.
    void Paint(QPainter *painter, const QColor &color, const QRegion &dirty = QRegion()) const;
    bool IsOver(int x, int y) const;
    // The pending link's second end follows the mouse (design-area point).
    void MoveNode2ToMouseCursor(QPoint pos);
    // After the nodes changed: the link's extent follows them and both the
    // old and the new line are repainted.
    void NodesChanged();
    // Everything the link paints, with room for the pen.
    QRect BoundingRect() const { return FBounds; }
    // What the link covers, as small rectangles along its segments: a long
    // diagonal line does not make everything under it repaint.
    QRegion Region() const { return FRegion; }
    const std::vector<QPoint> &Route() const { return FRoute; }

private:
    QRegion CalcRegion() const;

    TNStructDesignPanel *FPanel;
    TDSLink *FLink;
    TTableRep *FTableRep1;
    TTableRep *FTableRep2;
    TLinkNodes FNodes1;
    TLinkNodes FNodes2;
    bool FActive = false;
    std::vector<QPoint> FRoute;   // empty for the straight connecting line
    QRect FBounds;
    QRegion FRegion;
};

class TLinkRepList
{
public:
    int Count() const { return int(FItems.size()); }
    TLinkRep *Items(int index) const { return FItems[size_t(index)].get(); }
    void Add(std::unique_ptr<TLinkRep> rep) { FItems.push_back(std::move(rep)); }
    void Delete(int index) { FItems.erase(FItems.begin() + index); }
    void Clear() { FItems.clear(); }
    int IndexByDSLink(const TDSLink *link) const;
    // The last drawn (topmost) link under a design-area point, or none.
    TLinkRep *IsOverSomeLink(int x, int y) const;
    auto begin() const { return FItems.begin(); }
    auto end() const { return FItems.end(); }

private:
    std::vector<std::unique_ptr<TLinkRep>> FItems;
};

} // namespace vm20
