#include "ui/menuview.h"

#include "ui/npopupmenu.h"
#include "ui/systemmetrics.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QStyle>
#include <QStyleOption>

namespace vm20 {
namespace {

constexpr int FrameWidth = 1;
constexpr int TextGap = 6;   // between the icon column, the text and the edges
constexpr int ArrowWidth = 12;
constexpr int BarGap = 5;    // room for the bar between two columns

} // namespace

TMenuView::TMenuView(TNPopupMenu *menu, TNMenuItem *level, TMenuView *parentView)
    : QWidget(nullptr, Qt::Popup | Qt::FramelessWindowHint)
    , FMenu(menu)
    , FLevel(level)
    , FParentView(parentView)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setFont(TNSystemMetrics::Instance().MenuFont());
    setLayoutDirection(menu->BiDiMode());
    setAccessibleName(level->Caption);
    Layout();
}

TMenuView::~TMenuView()
{
    if (FSub)
        delete FSub.data();
}

TNMenuItem *TMenuView::CurrentItem() const
{
    return FCurrent >= 0 ? FLevel->Items(FCurrent) : nullptr;
}

void TMenuView::Layout()
{
    const QFontMetrics metrics(font());
    FItemHeight = TNSystemMetrics::Instance().MenuItemHeight();
    FIconSize = std::min(16, FItemHeight - 2);
    const int separatorHeight = std::max(FItemHeight / 2, 5);
    const int count = FLevel->Count();
    FCells.assign(std::size_t(count), Cell());

    // Columns in reading order: widths first, then x positions.
    std::vector<int> widths;
    std::vector<bool> barBefore;
    int y = FrameWidth;
    int height = 0;
    for (int i = 0; i < count; ++i) {
        const TNMenuItem *item = FLevel->Items(i);
        if (i == 0 || item->Break != mbNone) {
            widths.push_back(0);
            barBefore.push_back(i > 0 && item->Break == mbBarBreak);
            y = FrameWidth;
        }
        const int h = item->IsSeparator() ? separatorHeight : FItemHeight;
        const int w = item->IsSeparator() ? 0
                                          : TextGap + FIconSize + TextGap + metrics.horizontalAdvance(item->Caption)
                                                + TextGap + (item->Count() ? ArrowWidth : 0);
        widths.back() = std::max(widths.back(), w);
        FCells[std::size_t(i)].rect = QRect(0, y, 0, h);
        FCells[std::size_t(i)].column = int(widths.size()) - 1;
        y += h;
        height = std::max(height, y);
    }
    FColumns = int(widths.size());
    std::vector<int> lefts;
    int x = FrameWidth;
    FBarBefore.clear();
    for (int c = 0; c < FColumns; ++c) {
        if (c > 0) {
            if (barBefore[std::size_t(c)])
                FBarBefore.push_back(x + BarGap / 2);
            x += BarGap;
        }
        lefts.push_back(x);
        x += widths[std::size_t(c)];
    }
    const int totalWidth = std::max(x + FrameWidth, 40);
    const bool rtl = layoutDirection() == Qt::RightToLeft;
    for (Cell &cell : FCells) {
        const int left = lefts[std::size_t(cell.column)];
        const int w = widths[std::size_t(cell.column)];
        cell.rect.setLeft(rtl ? totalWidth - left - w : left);
        cell.rect.setWidth(w);
    }
    if (rtl)
        for (int &bar : FBarBefore)
            bar = totalWidth - bar;
    resize(totalWidth, std::max(height + FrameWidth, FItemHeight + 2 * FrameWidth));
}

void TMenuView::PopupAt(const QPoint &point, bool rightToLeft)
{
    QPoint at = rightToLeft ? point - QPoint(width(), 0) : point;
    if (const QScreen *screen = QGuiApplication::screenAt(point) ? QGuiApplication::screenAt(point)
                                                                  : QGuiApplication::primaryScreen()) {
        // Stay on the screen where there is room; a menu wider or taller than
        // the screen keeps its start visible.
        const QRect area = screen->availableGeometry();
        if (at.x() + width() > area.right() + 1)
            at.setX(area.right() + 1 - width());
        if (at.y() + height() > area.bottom() + 1)
            at.setY(area.bottom() + 1 - height());
        at.setX(std::max(at.x(), area.left()));
        at.setY(std::max(at.y(), area.top()));
    }
    move(at);
    show();
    activateWindow();
    setFocus(Qt::PopupFocusReason);
}

void TMenuView::CloseTree()
{
    CloseSub();
    close();
}

void TMenuView::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    const QPalette pal = palette();
    painter.fillRect(rect(), pal.color(QPalette::Base));
    painter.setPen(pal.color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    for (int bar : FBarBefore)
        painter.drawLine(bar, FrameWidth + 2, bar, height() - FrameWidth - 3);

    const bool rtl = layoutDirection() == Qt::RightToLeft;
    const QRect dirty = event->rect();
    for (int i = 0; i < FLevel->Count(); ++i) {
        const QRect r = FCells[std::size_t(i)].rect;
        if (!r.intersects(dirty))
            continue;
        const TNMenuItem *item = FLevel->Items(i);
        if (item->IsSeparator()) {
            painter.setPen(pal.color(QPalette::Mid));
            const int mid = r.center().y();
            painter.drawLine(r.left() + TextGap, mid, r.right() - TextGap, mid);
            continue;
        }
        const bool current = i == FCurrent;
        if (current)
            painter.fillRect(r, pal.color(QPalette::Highlight));
        const QRect icon(rtl ? r.right() - TextGap - FIconSize + 1 : r.left() + TextGap,
                         r.top() + (r.height() - FIconSize) / 2, FIconSize, FIconSize);
        const QIcon image = ImageAt(FMenu->Images(), item->ImageIndex);
        if (!image.isNull())
            image.paint(&painter, icon);
        QRect text = r.adjusted(TextGap + FIconSize + TextGap, 0, -TextGap - (item->Count() ? ArrowWidth : 0), 0);
        if (rtl)
            text = QRect(r.left() + TextGap + (item->Count() ? ArrowWidth : 0), r.top(), text.width(), r.height());
        painter.setPen(pal.color(current ? QPalette::HighlightedText : QPalette::Text));
        painter.drawText(text, Qt::AlignVCenter | (rtl ? Qt::AlignRight : Qt::AlignLeft) | Qt::TextSingleLine,
                         item->Caption);
        if (item->Count()) {
            QStyleOption option;
            option.initFrom(this);
            option.rect = QRect(rtl ? r.left() + 2 : r.right() - ArrowWidth, r.top(), ArrowWidth - 2, r.height());
            if (current) {
                option.palette.setColor(QPalette::ButtonText, pal.color(QPalette::HighlightedText));
                option.palette.setColor(QPalette::WindowText, pal.color(QPalette::HighlightedText));
            }
            style()->drawPrimitive(rtl ? QStyle::PE_IndicatorArrowLeft : QStyle::PE_IndicatorArrowRight, &option,
                                   &painter, this);
        }
    }
}

int TMenuView::ItemAt(const QPoint &pos) const
{
    for (int i = 0; i < int(FCells.size()); ++i)
        if (FCells[std::size_t(i)].rect.contains(pos))
            return i;
    return -1;
}

bool TMenuView::Selectable(int index) const
{
    return index >= 0 && index < FLevel->Count() && !FLevel->Items(index)->IsSeparator();
}

void TMenuView::SetCurrent(int index)
{
    if (FCurrent == index)
        return;
    if (FCurrent >= 0)
        update(FCells[std::size_t(FCurrent)].rect);
    FCurrent = index;
    if (FCurrent >= 0)
        update(FCells[std::size_t(FCurrent)].rect);
}

void TMenuView::Step(int delta)
{
    const int count = FLevel->Count();
    if (count == 0)
        return;
    int i = FCurrent < 0 ? (delta > 0 ? -1 : count) : FCurrent;
    for (int n = 0; n < count; ++n) {
        i = (i + delta + count) % count;
        if (Selectable(i)) {
            SetCurrent(i);
            return;
        }
    }
}

void TMenuView::StepColumn(int delta)
{
    if (FCurrent < 0)
        return Step(1);
    const int column = FCells[std::size_t(FCurrent)].column + delta;
    if (column < 0 || column >= FColumns)
        return;
    // The item of the other column nearest to the current row.
    const int y = FCells[std::size_t(FCurrent)].rect.center().y();
    int best = -1;
    int bestDistance = 0;
    for (int i = 0; i < FLevel->Count(); ++i) {
        if (FCells[std::size_t(i)].column != column || !Selectable(i))
            continue;
        const int distance = std::abs(FCells[std::size_t(i)].rect.center().y() - y);
        if (best < 0 || distance < bestDistance) {
            best = i;
            bestDistance = distance;
        }
    }
    if (best >= 0)
        SetCurrent(best);
}

void TMenuView::Activate(int index)
{
    if (!Selectable(index))
        return;
    TNMenuItem *item = FLevel->Items(index);
    if (item->Count())
        OpenSub(index);
    else
        FMenu->Choose(item);
}

void TMenuView::OpenSub(int index)
{
    TNMenuItem *item = FLevel->Items(index);
    if (FSub && FSub->Level() == item)
        return;
    CloseSub();
    SetCurrent(index);
    const QRect r = FCells[std::size_t(index)].rect;
    const bool rtl = layoutDirection() == Qt::RightToLeft;
    FSub = new TMenuView(FMenu, item, this);
    FSub->PopupAt(mapToGlobal(QPoint(rtl ? r.left() : r.right() + 1, r.top() - FrameWidth)), rtl);
}

void TMenuView::CloseSub()
{
    if (FSub) {
        FSub->CloseTree();
        FSub = nullptr;
    }
}

void TMenuView::Search(const QString &text)
{
    if (!FTypedAge.isValid() || FTypedAge.elapsed() > 1000)
        FTyped.clear();
    FTypedAge.restart();
    FTyped += text;
    const int count = FLevel->Count();
    // Search from the current item for a fresh start, from the one after it
    // when the same letter is typed again.
    const bool repeat = FTyped.size() > 1 && FTyped.count(FTyped[0]) == FTyped.size();
    const QString prefix = repeat ? FTyped.left(1) : FTyped;
    const int start = FCurrent < 0 ? 0 : (FTyped.size() == 1 || repeat ? FCurrent + 1 : FCurrent);
    for (int n = 0; n < count; ++n) {
        const int i = (start + n) % count;
        if (Selectable(i) && FLevel->Items(i)->Caption.startsWith(prefix, Qt::CaseInsensitive)) {
            SetCurrent(i);
            return;
        }
    }
}

void TMenuView::keyPressEvent(QKeyEvent *event)
{
    const bool rtl = layoutDirection() == Qt::RightToLeft;
    switch (event->key()) {
    case Qt::Key_Down: Step(1); break;
    case Qt::Key_Up: Step(-1); break;
    case Qt::Key_Right:
    case Qt::Key_Left: {
        const bool forward = (event->key() == Qt::Key_Right) != rtl;
        const int before = FCurrent;
        StepColumn(forward ? 1 : -1);
        if (FCurrent != before || FCurrent < 0)
            break;
        if (forward && CurrentItem() && CurrentItem()->Count())
            OpenSub(FCurrent);
        else if (!forward && FParentView)
            close();
        break;
    }
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (event->key() == Qt::Key_Space && FTypedAge.isValid() && FTypedAge.elapsed() <= 1000) {
            Search(event->text());
            break;
        }
        Activate(FCurrent);
        break;
    case Qt::Key_Escape: close(); break;
    case Qt::Key_Home: SetCurrent(-1); Step(1); break;
    case Qt::Key_End: SetCurrent(-1); Step(-1); break;
    default:
        if (!event->text().isEmpty() && event->text().at(0).isPrint())
            Search(event->text());
        else
            QWidget::keyPressEvent(event);
    }
}

void TMenuView::mouseMoveEvent(QMouseEvent *event)
{
    const int index = ItemAt(event->position().toPoint());
    if (index < 0 || !Selectable(index))
        return;
    SetCurrent(index);
    if (FLevel->Items(index)->Count())
        OpenSub(index);
    else
        CloseSub();
}

void TMenuView::mouseReleaseEvent(QMouseEvent *event)
{
    const int index = ItemAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && index >= 0)
        Activate(index);
}

void TMenuView::closeEvent(QCloseEvent *event)
{
    CloseSub();
    QWidget::closeEvent(event);
    if (!FParentView)
        FMenu->Close();
    else {
        if (FParentView->FSub == this)
            FParentView->FSub = nullptr;
        FParentView->setFocus(Qt::PopupFocusReason);
    }
}

} // namespace vm20
