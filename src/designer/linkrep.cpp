#include "designer/linkrep.h"

#include "designer/structdesignpanel.h"
#include "designer/tablerep.h"
#include "model/dslink.h"

#include <QPainter>

#include <algorithm>
#include <cstdlib>

namespace vm20 {

TLinkRep::TLinkRep(TNStructDesignPanel *panel, TDSLink *link, TTableRep *table1,
                   TTableRep *table2)
    : FPanel(panel)
    , FLink(link)
    , FTableRep1(table1)
    , FTableRep2(table2)
{
}

void TLinkRep::SetActive(bool value)
{
    if (FActive == value)
        return;
    FActive = value;
    FPanel->InvalidateLinks(Region());
}

QRegion TLinkRep::CalcRegion() const
{
    constexpr int piece = 48;
    std::vector<QRect> rects;
    for (const QLine &l : LinkSegments(FNodes1.Points(), FNodes2.Points(), FRoute)) {
        const int length = std::max(std::abs(l.dx()), std::abs(l.dy()));
        const int pieces = std::max(1, length / piece);
        QPoint from = l.p1();
        for (int i = 1; i <= pieces; ++i) {
            const QPoint to = l.p1() + QPoint(l.dx() * i / pieces, l.dy() * i / pieces);
            rects.push_back(QRect(from, to).normalized().adjusted(-3, -3, 3, 3));
            from = to;
        }
    }
    QRegion region;
    for (const QRect &r : rects)
        region += r;
    return region;
}

void TLinkRep::RecalcPositions()
{
    const std::vector<TNodePoint> oldNodes1 = FNodes1.Points();
    const std::vector<TNodePoint> oldNodes2 = FNodes2.Points();
    const std::vector<QPoint> oldRoute = FRoute;
    FNodes1.Clear();
    FNodes2.Clear();
    FRoute.clear();
    if (FLink && FTableRep1 && FTableRep2) {
        CalcPosForTable(FLink->Fields1(), FNodes1, FTableRep1, FTableRep2);
        CalcPosForTable(FLink->Fields2(), FNodes2, FTableRep2, FTableRep1);
        if (FPanel->LinkRouting() == lrAroundTables && FNodes1.Count() && FNodes2.Count())
            FRoute = RouteAroundTables(LinkJunction(*FNodes1.GetLinkNode(0)),
                                       LinkJunction(*FNodes2.GetLinkNode(0)),
                                       FPanel->TableRects());
    }
    // Links of tables that did not move keep their lines: nothing to repaint.
    if (FNodes1.Points() == oldNodes1 && FNodes2.Points() == oldNodes2 && FRoute == oldRoute)
        return;
    NodesChanged();
}

void TLinkRep::CalcPosForTable(const QStringList &entries, TLinkNodes &nodes,
                               const TTableRep *rep, const TTableRep *other) const
{
    for (const QString &entry : entries) {
        if (entry.startsWith(QLatin1String("val:"), Qt::CaseInsensitive))
            continue;
        QString name = entry;
        if (name.startsWith(QLatin1String("fld:"), Qt::CaseInsensitive))
            name = name.mid(4);
        const int index = nodes.IndexByFieldName(name);
        TLinkNode *node = index >= 0 ? nodes.GetLinkNode(index) : nodes.Add(name);
        rep->GetXPosRelativeTo(other, node->X, node->Direction);
        node->Y = rep->GetFieldYPosition(name);
    }
}

void TLinkRep::Paint(QPainter *painter, const QColor &color, const QRegion &dirty) const
{
    if (FNodes1.Count() == 0)
        return;
    std::vector<QLine> lines = LinkSegments(FNodes1.Points(), FNodes2.Points(), FRoute);
    if (!dirty.isEmpty()) {
        // Rasterising a long line only to have the clip drop it costs more
        // than this test.
        std::erase_if(lines, [&dirty](const QLine &l) {
            return !dirty.intersects(QRect(l.p1(), l.p2()).normalized().adjusted(-2, -2, 2, 2));
        });
        if (lines.empty())
            return;
    }
    painter->save();
    painter->setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter->setPen(QPen(color, FActive ? 2 : 1, Qt::SolidLine));
    painter->drawLines(lines.data(), int(lines.size()));
    painter->restore();
}

bool TLinkRep::IsOver(int x, int y) const
{
    if (!FRoute.empty())
        return PolylineHitTest(FRoute, {x, y});
    return LinkHitTest(FNodes1.Points(), FNodes2.Points(), {x, y});
}

void TLinkRep::MoveNode2ToMouseCursor(QPoint pos)
{
    FNodes2.Clear();
    if (FNodes1.Count()) {
        TLinkNode *node = FNodes2.Add(QString());
        const QPoint j1 = LinkJunction(*FNodes1.GetLinkNode(0));
        node->X = pos.x();
        node->Y = pos.y();
        // The stub at the cursor points back towards the first table, so the
        // line ends exactly under the mouse.
        node->Direction = pos.x() >= j1.x() ? -1 : 1;
    }
    NodesChanged();
}

void TLinkRep::NodesChanged()
{
    QRect bounds;
    for (const QLine &l : LinkSegments(FNodes1.Points(), FNodes2.Points(), FRoute))
        bounds = bounds.united(QRect(l.p1(), l.p2()).normalized());
    FBounds = bounds.isNull() ? QRect() : bounds.adjusted(-3, -3, 3, 3);
    const QRegion old = FRegion;
    FRegion = CalcRegion();
    FPanel->InvalidateLinks(old + FRegion);
}

int TLinkRepList::IndexByDSLink(const TDSLink *link) const
{
    for (int i = 0; i < Count(); ++i)
        if (FItems[size_t(i)]->Link() == link)
            return i;
    return -1;
}

TLinkRep *TLinkRepList::IsOverSomeLink(int x, int y) const
{
    for (int i = Count() - 1; i >= 0; --i)
        if (FItems[size_t(i)]->IsOver(x, y))
            return FItems[size_t(i)].get();
    return nullptr;
}

} // namespace vm20
