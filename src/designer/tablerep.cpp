#include "designer/tablerep.h"

#include "designer/diagramgeometry.h"
#include "designer/structdesignpanel.h"
#include "model/dbstructure.h"

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>

namespace vm20 {

namespace {
constexpr int ResizeMargin = 5;
constexpr int MinWidth = 60;
}

TTableRep::TTableRep(TNStructDesignPanel *panel, TDSTable *table, QWidget *parent)
    : QWidget(parent)
    , FPanel(panel)
    , FTable(table)
    , FListBox(new TTableRepListBox(this))
    , FMetrics(TTableMetrics::For(font()))
{
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    FListBox->OnPressed = [this] { FPanel->SetActiveTable(this); };
    FListBox->OnScroll = [this] { RecalcLinkPositions(); };
    setToolTip(table->TableName());
}

QString TTableRep::Title() const
{
    return FTable->DisplayName().isEmpty() ? FTable->TableName() : FTable->DisplayName();
}

void TTableRep::SetActive(bool value)
{
    if (FActive == value)
        return;
    FActive = value;
    update();
}

int TTableRep::GetFieldYPosition(const QString &fieldName) const
{
    const int index = FListBox->IndexOf(fieldName);
    const QRect item = index >= 0 ? FListBox->ItemRect(index).translated(pos() + FListBox->pos())
                                  : QRect();
    return FieldYPosition(index, FListBox->TopIndex(), item, geometry());
}

void TTableRep::GetXPosRelativeTo(const TTableRep *other, int &x, int &direction) const
{
    const TNodePoint node = LinkEndX(geometry(), other->geometry());
    x = node.X;
    direction = node.Direction;
}

void TTableRep::RecalcLinkPositions()
{
    FPanel->RecalcLinkPositionsOf(this);
}

void TTableRep::FillFieldsList()
{
    QStringList names;
    const TNCustomDBStructure *model = FTable->DBStruct();
    if (model) {
        for (int i = 0; i < model->GetFieldCount(); ++i) {
            const TDSField *field = model->GetField(i);
            if (field->FieldKind() == nfkData && field->Table() == FTable)
                names << field->FieldName();
        }
    }
    // Join columns are rarely fields of their own; listing them too lets
    // every link line end on the column it joins.
    auto addColumns = [&names](const QStringList &entries) {
        for (const QString &entry : entries) {
            if (entry.startsWith(QLatin1String("val:"), Qt::CaseInsensitive))
                continue;
            const QString name = entry.startsWith(QLatin1String("fld:"), Qt::CaseInsensitive)
                                     ? entry.mid(4)
                                     : entry;
            if (!name.isEmpty() && !names.contains(name, Qt::CaseInsensitive))
                names << name;
        }
    };
    for (const TDSLink *link : FTable->Links()) {
        if (link->Table1() == FTable)
            addColumns(link->Fields1());
        if (link->Table2() == FTable)
            addColumns(link->Fields2());
    }
    FListBox->SetItems(names);
}

void TTableRep::Draw(QPainter *painter) const
{
    DrawTableFrame(painter, geometry(), Title(), FActive, FMetrics, palette());
    DrawFieldRows(painter, FMetrics.ListRect(geometry()), FListBox->Items(),
                  FListBox->TopIndex(), -1, FMetrics, palette());
}

bool TTableRep::InTitle(QPoint pos) const
{
    return pos.y() < FMetrics.Border + FMetrics.TitleHeight;
}

TTableRep::TDragKind TTableRep::DragKindAt(QPoint pos) const
{
    if (pos.x() >= width() - ResizeMargin || pos.y() >= height() - ResizeMargin)
        return dkResize;
    return InTitle(pos) ? dkMove : dkNone;
}

void TTableRep::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    // Laying out the title is the dear part; skip it when only the frame
    // below is repainted (a link line passing under the window).
    const bool titleDirty = event->rect().top() < FMetrics.Border + FMetrics.TitleHeight;
    DrawTableFrame(&painter, rect(), titleDirty ? Title() : QString(), FActive, FMetrics, palette());
}

void TTableRep::mousePressEvent(QMouseEvent *event)
{
    FPanel->SetActiveTable(this);
    if (event->button() != Qt::LeftButton)
        return;
    FDrag = DragKindAt(event->position().toPoint());
    FDragStart = mapToParent(event->position().toPoint());
    FStartGeometry = geometry();
    raise();
}

void TTableRep::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint local = event->position().toPoint();
    if (FDrag == dkNone) {
        setCursor(DragKindAt(local) == dkResize ? Qt::SizeFDiagCursor : Qt::ArrowCursor);
        FPanel->TableHovered(this);
        return;
    }
    const QPoint delta = mapToParent(local) - FDragStart;
    if (FDrag == dkMove) {
        move(std::max(0, FStartGeometry.left() + delta.x()),
             std::max(0, FStartGeometry.top() + delta.y()));
    } else {
        const int minHeight = 2 * FMetrics.Border + FMetrics.TitleHeight + FMetrics.RowHeight;
        resize(std::max(MinWidth, FStartGeometry.width() + delta.x()),
               std::max(minHeight, FStartGeometry.height() + delta.y()));
    }
}

void TTableRep::mouseReleaseEvent(QMouseEvent *)
{
    FDrag = dkNone;
}

void TTableRep::contextMenuEvent(QContextMenuEvent *event)
{
    FPanel->ShowTableMenu(this, event->globalPos());
}

void TTableRep::moveEvent(QMoveEvent *)
{
    FPanel->TableRepGeometryChanged(this);
}

void TTableRep::LayoutList()
{
    FListBox->setGeometry(FMetrics.ListRect(rect()));
}

void TTableRep::resizeEvent(QResizeEvent *)
{
    LayoutList();
    FPanel->TableRepGeometryChanged(this);
}

void TTableRepList::TLaterDelete::operator()(TTableRep *rep) const
{
    rep->hide();
    rep->deleteLater();
}

void TTableRepList::Delete(int index)
{
    FItems.erase(FItems.begin() + index);
}

void TTableRepList::Clear()
{
    FItems.clear();
}

int TTableRepList::IndexByDSTable(const TDSTable *table) const
{
    for (int i = 0; i < Count(); ++i)
        if (FItems[size_t(i)]->Table() == table)
            return i;
    return -1;
}

TTableRep *TTableRepList::FindByTable(const TDSTable *table) const
{
    const int index = IndexByDSTable(table);
    return index >= 0 ? FItems[size_t(index)].get() : nullptr;
}

TTableRep *TTableRepList::IsOverSomeTable(int x, int y) const
{
    // The window raised last is drawn on top; children are stacked in the
    // parent's order, so ask the parent.
    for (const auto &rep : FItems) {
        if (!rep->geometry().contains(x, y))
            continue;
        QWidget *top = rep->parentWidget() ? rep->parentWidget()->childAt(x, y) : rep.get();
        while (top && top->parentWidget() != rep->parentWidget())
            top = top->parentWidget();
        if (auto *shown = dynamic_cast<TTableRep *>(top))
            return shown;
        return rep.get();
    }
    return nullptr;
}

} // namespace vm20
