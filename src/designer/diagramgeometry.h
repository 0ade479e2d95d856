#pragma once
// The diagram's geometry as plain functions of numbers: where a link leaves
// and enters its tables, the segments it is drawn with, whether a point hits
// it, and where tables go when they are arranged. The widgets only feed them
// their rectangles, so every rule can be checked without a window.
#include <QLine>
#include <QPoint>
#include <QRect>
#include <QSize>

#include <vector>

namespace vm20 {

// One end of a link line in design-area pixels; Direction is +1 when the
// line leaves the table to the right and -1 when it leaves to the left.
struct TNodePoint
{
    int X = 0;
    int Y = 0;
    int Direction = 1;
    bool operator==(const TNodePoint &) const = default;
};

// Length of the horizontal stub between a table edge and the line's junction.
inline constexpr int LinkStubLength = 8;
// A point closer than this to a link's connecting segment hits it.
inline constexpr int LinkHitDistance = 4;

// The x and direction of the end on `table` of a link towards `other`: the
// right edge + 1 when `other` starts right of this table, else the left
// edge - 1. Rectangles are in design-area coordinates.
TNodePoint LinkEndX(const QRect &table, const QRect &other);

// The y of a field's end point. `index` is the field's row in its list box
// (-1 when absent), `topIndex` the first visible row, `itemRect` the row's
// rectangle in design-area coordinates and `table` the table window's.
// A visible row gives its middle; a row scrolled out below gives the
// table's bottom - 5; a row above the visible ones (or a missing one) the
// table's top + 10.
int FieldYPosition(int index, int topIndex, const QRect &itemRect, const QRect &table);

// The junction of a node: the point one stub length outside its table.
QPoint LinkJunction(const TNodePoint &node);

// The segments a link is drawn with: stubs from each side's first node to
// its junction, combs joining the further nodes of a side to that
// junction, and the connecting line between the two junctions. Empty when
// side 1 has no nodes; without side-2 nodes only side 1's stubs are drawn.
// `route` replaces the straight connecting line when it has two or more
// points (it must run from junction 1 to junction 2).
std::vector<QLine> LinkSegments(const std::vector<TNodePoint> &side1,
                                const std::vector<TNodePoint> &side2,
                                const std::vector<QPoint> &route = {});

// Whether (x, y) lies on one of the connecting segments between the i-th
// junctions of both sides (stubs and combs never hit).
bool LinkHitTest(const std::vector<TNodePoint> &side1, const std::vector<TNodePoint> &side2,
                 QPoint p);
// The same for a drawn polyline (the routed form of a link).
bool PolylineHitTest(const std::vector<QPoint> &route, QPoint p);

struct TArrangeSpacing
{
    int LeftMargin = 12;
    int TopMargin = 10;
    int HorzGap = 40;
    int VertGap = 20;
};

// Flow layout in list order. A new line starts when a table (not the first)
// would reach past the client width; lines are spaced by the tallest table
// placed so far, which is never reset at a new line.
std::vector<QPoint> ArrangeTables(const std::vector<QSize> &sizes, int clientWidth,
                                  const TArrangeSpacing &spacing = {});

// Where a table added to an arranged diagram goes: right of everything, one
// table width beyond the gap, at the top of the lowest-starting table; or
// below everything at the left margin when that does not fit.
QPoint ArrangeNewTableRep(const std::vector<QRect> &tables, QSize size, int clientWidth,
                          const TArrangeSpacing &spacing = {});

// A path from junction `from` to junction `to` that crosses none of the
// `obstacles` where the straight line would: the straight line itself when
// it is clear, else the first clear orthogonal detour found (three or five
// segments), else the straight line.
std::vector<QPoint> RouteAroundTables(QPoint from, QPoint to, const std::vector<QRect> &obstacles);

// Whether the segment from a to b passes through the inside of `rect`.
bool SegmentCrossesRect(QPoint a, QPoint b, const QRect &rect);

} // namespace vm20
