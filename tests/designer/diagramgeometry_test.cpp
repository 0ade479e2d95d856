#include "designer/diagramgeometry.h"

#include <gtest/gtest.h>

#include <QString>
#include <QStringList>

namespace vm20 {
namespace {

QString Describe(const std::vector<QLine> &lines)
{
    QStringList parts;
    for (const QLine &l : lines)
        parts << QStringLiteral("(%1,%2)-(%3,%4)").arg(l.x1()).arg(l.y1()).arg(l.x2()).arg(l.y2());
    return parts.join(u' ');
}

TEST(DiagramGeometry, LinkEndsLeaveTowardTheOtherTable)
{
    struct Row { int line; QRect table, other; int x, dir; const char *why; };
    const Row rows[] = {
        {__LINE__, {10, 10, 100, 80}, {200, 10, 100, 80}, 111, 1, "other to the right: right edge + 1"},
        {__LINE__, {200, 10, 100, 80}, {10, 10, 100, 80}, 199, -1, "other to the left: left edge - 1"},
        {__LINE__, {10, 10, 100, 80}, {110, 10, 100, 80}, 9, -1, "touching is not right of it"},
        {__LINE__, {10, 10, 100, 80}, {111, 10, 100, 80}, 111, 1, "one pixel apart is"},
        {__LINE__, {10, 10, 100, 80}, {50, 200, 100, 80}, 9, -1, "overlapping columns leave left"},
    };
    for (const Row &r : rows) {
        const TNodePoint n = LinkEndX(r.table, r.other);
        EXPECT_EQ(n.X, r.x) << r.line << ": " << r.why;
        EXPECT_EQ(n.Direction, r.dir) << r.line << ": " << r.why;
    }
}

TEST(DiagramGeometry, FieldYFollowsTheListScrolling)
{
    const QRect table(0, 100, 120, 90);   // bottom end 190
    struct Row { int line; int index, top; QRect item; int y; const char *why; };
    const Row rows[] = {
        {__LINE__, 2, 0, {2, 150, 100, 15}, 157, "visible row: middle, rounded toward zero"},
        {__LINE__, 2, 2, {2, 120, 100, 16}, 128, "the top visible row is visible"},
        {__LINE__, 9, 0, {2, 176, 100, 15}, 185, "row ending past the window: bottom - 5"},
        {__LINE__, 9, 0, {2, 175, 100, 15}, 182, "row ending on the window's bottom is visible"},
        {__LINE__, 1, 3, {2, 90, 100, 15}, 110, "scrolled out above: top + 10"},
        {__LINE__, -1, 0, {}, 110, "a field the table lacks goes to the title"},
    };
    for (const Row &r : rows)
        EXPECT_EQ(FieldYPosition(r.index, r.top, r.item, table), r.y) << r.line << ": " << r.why;
}

TEST(DiagramGeometry, LinkIsDrawnWithStubsCombsAndOneConnectingLine)
{
    const TNodePoint a{111, 40, 1}, b{111, 60, 1};
    const TNodePoint c{199, 30, -1}, d{199, 70, -1};
    struct Row { int line; std::vector<TNodePoint> s1, s2; const char *expected; const char *why; };
    const Row rows[] = {
        {__LINE__, {a}, {c}, "(111,40)-(119,40) (119,40)-(191,30) (191,30)-(199,30)",
         "8-pixel stubs on both sides of one diagonal"},
        {__LINE__, {a, b}, {c, d},
         "(111,40)-(119,40) (111,60)-(119,60) (119,60)-(119,40) (119,40)-(191,30) "
         "(191,30)-(199,30) (199,70)-(191,70) (191,70)-(191,30)",
         "second pair joined by combs, one diagonal"},
        {__LINE__, {}, {c}, "", "nothing without side-1 nodes"},
        {__LINE__, {a}, {}, "(111,40)-(119,40)", "pending link: only side 1"},
    };
    for (const Row &r : rows)
        EXPECT_EQ(Describe(LinkSegments(r.s1, r.s2)), QString::fromLatin1(r.expected))
            << r.line << ": " << r.why;
}

TEST(DiagramGeometry, HitTestCoversOnlyTheConnectingSegments)
{
    // Junctions (8,0) and (108,50): the diagonal y = (x - 8) / 2.
    const std::vector<TNodePoint> s1{{0, 0, 1}, {0, 100, 1}};
    const std::vector<TNodePoint> s2{{116, 50, -1}, {116, 100, -1}};
    struct Row { int line; QPoint p; bool hit; const char *why; };
    const Row rows[] = {
        {__LINE__, {58, 25}, true, "on the diagonal"},
        {__LINE__, {58, 28}, true, "3 pixels off hits"},
        {__LINE__, {58, 29}, false, "4 pixels off does not"},
        {__LINE__, {58, 22}, true, "3 pixels off on the other side"},
        {__LINE__, {4, 0}, false, "the stub never hits"},
        {__LINE__, {110, 52}, false, "outside the rectangle of the junctions"},
        {__LINE__, {60, 100}, true, "the second pair's line (horizontal) is tested too"},
        {__LINE__, {60, 101}, false, "a horizontal segment spans no height"},
    };
    for (const Row &r : rows)
        EXPECT_EQ(LinkHitTest(s1, s2, r.p), r.hit) << r.line << ": " << r.why;
}

TEST(DiagramGeometry, ArrangeTablesFlowsAndNeverResetsTheTallest)
{
    struct Row { int line; std::vector<QSize> sizes; int width; std::vector<QPoint> expected; const char *why; };
    const Row rows[] = {
        {__LINE__, {{100, 100}, {100, 50}, {100, 80}}, 300, {{12, 10}, {152, 10}, {12, 130}},
         "third table on a second line at 10 + 100 + 20"},
        {__LINE__, {{100, 50}, {100, 100}, {100, 30}, {100, 30}, {100, 30}}, 300,
         {{12, 10}, {152, 10}, {12, 130}, {152, 130}, {12, 250}},
         "the third line is spaced by the tallest so far, not of line two"},
        {__LINE__, {{500, 40}, {500, 40}}, 100, {{12, 10}, {12, 70}},
         "a table wider than the client still starts its own line only from the second"},
        {__LINE__, {}, 300, {}, "nothing to arrange"},
    };
    for (const Row &r : rows)
        EXPECT_EQ(ArrangeTables(r.sizes, r.width), r.expected) << r.line << ": " << r.why;
}

TEST(DiagramGeometry, NewTableGoesRightOfOrBelowTheOthers)
{
    const std::vector<QRect> tables{{12, 10, 100, 100}, {152, 30, 100, 50}};
    struct Row { int line; std::vector<QRect> tables; int width; QPoint expected; const char *why; };
    const Row rows[] = {
        {__LINE__, tables, 1000, {252 + 100 + 40, 30}, "one table width beyond the gap, at the largest top"},
        {__LINE__, tables, 391, {12, 130}, "too narrow: below the lowest bottom"},
        {__LINE__, tables, 392, {392, 30}, "exactly fitting stays right"},
        {__LINE__, {}, 1000, {12, 10}, "an empty diagram starts at the margins"},
    };
    for (const Row &r : rows)
        EXPECT_EQ(ArrangeNewTableRep(r.tables, {100, 60}, r.width), r.expected)
            << r.line << ": " << r.why;
}

TEST(DiagramGeometry, RoutesGoAroundTablesOnlyWhenNeeded)
{
    const QRect blocker(100, 0, 100, 100);
    struct Row { int line; QPoint from, to; std::vector<QRect> obstacles; size_t points; const char *why; };
    const Row rows[] = {
        {__LINE__, {0, 50}, {300, 50}, {}, 2, "nothing in the way: straight"},
        {__LINE__, {0, 150}, {300, 150}, {blocker}, 2, "line passes below the table"},
        {__LINE__, {0, 50}, {300, 60}, {blocker}, 4, "a detour of three segments"},
    };
    for (const Row &r : rows) {
        const std::vector<QPoint> path = RouteAroundTables(r.from, r.to, r.obstacles);
        ASSERT_EQ(path.size(), r.points) << r.line << ": " << r.why;
        EXPECT_EQ(path.front(), r.from) << r.line;
        EXPECT_EQ(path.back(), r.to) << r.line;
        for (size_t i = 1; i < path.size(); ++i)
            for (const QRect &o : r.obstacles)
                EXPECT_FALSE(SegmentCrossesRect(path[i - 1], path[i], o)) << r.line << ": " << r.why;
    }
}

TEST(DiagramGeometry, RoutedLinksHitAlongEveryPiece)
{
    const std::vector<QPoint> route{{0, 50}, {90, 50}, {90, 200}, {300, 200}};
    EXPECT_TRUE(PolylineHitTest(route, {40, 53}));
    EXPECT_FALSE(PolylineHitTest(route, {40, 54}));
    EXPECT_TRUE(PolylineHitTest(route, {93, 120}));
    EXPECT_FALSE(PolylineHitTest(route, {200, 150}));
}

} // namespace
} // namespace vm20
