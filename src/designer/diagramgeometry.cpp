#include "designer/diagramgeometry.h"

#include <algorithm>
#include <cstdlib>

namespace vm20 {

namespace {

// A QRect's right and bottom are inclusive; these are one past them.
int RightEnd(const QRect &r) { return r.left() + r.width(); }
int BottomEnd(const QRect &r) { return r.top() + r.height(); }

void AddComb(std::vector<QLine> &lines, const TNodePoint &node, QPoint junction)
{
    const QPoint corner(junction.x(), node.Y);
    lines.emplace_back(QPoint(node.X, node.Y), corner);
    lines.emplace_back(corner, junction);
}

bool SegmentHit(QPoint p1, QPoint p2, QPoint p)
{
    const int x = p.x();
    const int y = p.y();
    if (x < std::min(p1.x(), p2.x()) || x > std::max(p1.x(), p2.x()) ||
        y < std::min(p1.y(), p2.y()) || y > std::max(p1.y(), p2.y()))
        return false;
    if (p1.x() != p2.x()) {
        const int lineY = p1.y() + (x - p1.x()) * (p2.y() - p1.y()) / (p2.x() - p1.x());
        if (std::abs(y - lineY) < LinkHitDistance)
            return true;
    }
    if (p1.y() != p2.y()) {
        const int lineX = p1.x() + (y - p1.y()) * (p2.x() - p1.x()) / (p2.y() - p1.y());
        if (std::abs(x - lineX) < LinkHitDistance)
            return true;
    }
    return false;
}

bool PathClear(const std::vector<QPoint> &path, const std::vector<QRect> &obstacles)
{
    for (size_t i = 1; i < path.size(); ++i)
        for (const QRect &r : obstacles)
            if (SegmentCrossesRect(path[i - 1], path[i], r))
                return false;
    return true;
}

// Candidate channel coordinates beside the obstacles, nearest to `middle` first.
std::vector<int> Channels(const std::vector<QRect> &obstacles, int middle, bool vertical)
{
    constexpr int clearance = 10;
    std::vector<int> result{middle};
    // A channel on the area's very edge would read as its border.
    auto add = [&result](int c) {
        if (c >= clearance / 2)
            result.push_back(c);
    };
    for (const QRect &r : obstacles) {
        if (vertical) {
            add(r.left() - clearance);
            add(RightEnd(r) + clearance);
        } else {
            add(r.top() - clearance);
            add(BottomEnd(r) + clearance);
        }
    }
    std::stable_sort(result.begin(), result.end(), [middle](int a, int b) {
        return std::abs(a - middle) < std::abs(b - middle);
    });
    return result;
}

} // namespace

TNodePoint LinkEndX(const QRect &table, const QRect &other)
{
    TNodePoint node;
    if (other.left() > RightEnd(table)) {
        node.X = RightEnd(table) + 1;
        node.Direction = 1;
    } else {
        node.X = table.left() - 1;
        node.Direction = -1;
    }
    return node;
}

int FieldYPosition(int index, int topIndex, const QRect &itemRect, const QRect &table)
{
    if (index < 0 || index < topIndex)
        return table.top() + 10;
    if (BottomEnd(itemRect) <= BottomEnd(table))
        return (itemRect.top() + BottomEnd(itemRect)) / 2;
    return BottomEnd(table) - 5;
}

QPoint LinkJunction(const TNodePoint &node)
{
    return {node.X + LinkStubLength * node.Direction, node.Y};
}

std::vector<QLine> LinkSegments(const std::vector<TNodePoint> &side1,
                                const std::vector<TNodePoint> &side2,
                                const std::vector<QPoint> &route)
{
    std::vector<QLine> lines;
    if (side1.empty())
        return lines;
    const QPoint j1 = LinkJunction(side1.front());
    lines.emplace_back(QPoint(side1.front().X, side1.front().Y), j1);
    for (size_t k = 1; k < side1.size(); ++k)
        AddComb(lines, side1[k], j1);
    if (side2.empty())
        return lines;
    const QPoint j2 = LinkJunction(side2.front());
    if (route.size() >= 2) {
        for (size_t i = 1; i < route.size(); ++i)
            lines.emplace_back(route[i - 1], route[i]);
    } else {
        lines.emplace_back(j1, j2);
    }
    lines.emplace_back(j2, QPoint(side2.front().X, side2.front().Y));
    for (size_t k = 1; k < side2.size(); ++k)
        AddComb(lines, side2[k], j2);
    return lines;
}

bool LinkHitTest(const std::vector<TNodePoint> &side1, const std::vector<TNodePoint> &side2,
                 QPoint p)
{
    const size_t pairs = std::min(side1.size(), side2.size());
    for (size_t i = 0; i < pairs; ++i)
        if (SegmentHit(LinkJunction(side1[i]), LinkJunction(side2[i]), p))
            return true;
    return false;
}

bool PolylineHitTest(const std::vector<QPoint> &route, QPoint p)
{
    for (size_t i = 1; i < route.size(); ++i) {
        const QPoint a = route[i - 1];
        const QPoint b = route[i];
        // Axis-parallel pieces of a route get the same tolerance across them
        // that a diagonal gets along its steeper axis.
        if (a.y() == b.y() || a.x() == b.x()) {
            const QRect band = QRect(a, b).normalized().adjusted(
                -(LinkHitDistance - 1), -(LinkHitDistance - 1), LinkHitDistance - 1,
                LinkHitDistance - 1);
            if (band.contains(p))
                return true;
        } else if (SegmentHit(a, b, p)) {
            return true;
        }
    }
    return false;
}

std::vector<QPoint> ArrangeTables(const std::vector<QSize> &sizes, int clientWidth,
                                  const TArrangeSpacing &spacing)
{
    std::vector<QPoint> result;
    result.reserve(sizes.size());
    int x = spacing.LeftMargin;
    int y = spacing.TopMargin;
    int tallest = 0;
    for (size_t k = 0; k < sizes.size(); ++k) {
        const QSize size = sizes[k];
        if (k >= 1 && x + size.width() + spacing.HorzGap > clientWidth) {
            x = spacing.LeftMargin;
            y += tallest + spacing.VertGap;
        }
        result.emplace_back(x, y);
        tallest = std::max(tallest, size.height());
        x += size.width() + spacing.HorzGap;
    }
    return result;
}

QPoint ArrangeNewTableRep(const std::vector<QRect> &tables, QSize size, int clientWidth,
                          const TArrangeSpacing &spacing)
{
    if (tables.empty())
        return {spacing.LeftMargin, spacing.TopMargin};
    int right = 0;
    int top = 0;
    int bottom = 0;
    for (const QRect &r : tables) {
        right = std::max(right, RightEnd(r));
        top = std::max(top, r.top());
        bottom = std::max(bottom, BottomEnd(r));
    }
    if (clientWidth >= right + size.width() + spacing.HorzGap)
        return {right + size.width() + spacing.HorzGap, top};
    return {spacing.LeftMargin, bottom + spacing.VertGap};
}

bool SegmentCrossesRect(QPoint a, QPoint b, const QRect &rect)
{
    // Liang-Barsky clipping against the rectangle's inside; touching an edge
    // is not crossing.
    const double x0 = rect.left() + 0.5;
    const double x1 = RightEnd(rect) - 1.5;
    const double y0 = rect.top() + 0.5;
    const double y1 = BottomEnd(rect) - 1.5;
    if (x1 < x0 || y1 < y0)
        return false;
    const double dx = b.x() - a.x();
    const double dy = b.y() - a.y();
    double t0 = 0;
    double t1 = 1;
    const double p[4] = {-dx, dx, -dy, dy};
    const double q[4] = {a.x() - x0, x1 - a.x(), a.y() - y0, y1 - a.y()};
    for (int i = 0; i < 4; ++i) {
        if (p[i] == 0) {
            if (q[i] < 0)
                return false;
            continue;
        }
        const double t = q[i] / p[i];
        if (p[i] < 0)
            t0 = std::max(t0, t);
        else
            t1 = std::min(t1, t);
        if (t0 > t1)
            return false;
    }
    return true;
}

std::vector<QPoint> RouteAroundTables(QPoint from, QPoint to, const std::vector<QRect> &obstacles)
{
    std::vector<QPoint> straight{from, to};
    // Only tables near the line can be in the way of a detour worth taking.
    const QRect area = QRect(from, to).normalized().adjusted(-200, -200, 200, 200);
    std::vector<QRect> near;
    for (const QRect &r : obstacles)
        if (r.intersects(area))
            near.push_back(r);
    if (PathClear(straight, near))
        return straight;
    for (int x : Channels(near, (from.x() + to.x()) / 2, true)) {
        std::vector<QPoint> path{from, {x, from.y()}, {x, to.y()}, to};
        if (PathClear(path, near))
            return path;
    }
    for (int y : Channels(near, (from.y() + to.y()) / 2, false)) {
        std::vector<QPoint> path{from, {from.x(), y}, {to.x(), y}, to};
        if (PathClear(path, near))
            return path;
    }
    return straight;
}

} // namespace vm20
