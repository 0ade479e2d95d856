#include "designer/tablereplistbox.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QFontMetrics>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>

namespace vm20 {

TTableRepListBox::TTableRepListBox(QWidget *parent)
    : QWidget(parent)
    , FMetrics(TTableMetrics::For(font()))
{
    setMouseTracking(true);
    setFocusPolicy(Qt::ClickFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void TTableRepListBox::SetItems(const QStringList &items)
{
    FItems = items;
    FRowTexts.clear();
    FItemIndex = -1;
    FTopIndex = std::clamp(FTopIndex, 0, MaxTopIndex());
    UpdateScrollBar();
    update();
}

void TTableRepListBox::SetItemIndex(int index)
{
    if (index < -1 || index >= Count())
        index = -1;
    if (index == FItemIndex)
        return;
    FItemIndex = index;
    update();
}

void TTableRepListBox::SetTopIndex(int index)
{
    index = std::clamp(index, 0, MaxTopIndex());
    if (index == FTopIndex)
        return;
    FTopIndex = index;
    if (FScrollBar)
        FScrollBar->setValue(index);
    update();
    if (OnScroll)
        OnScroll();
}

int TTableRepListBox::IndexOf(const QString &name) const
{
    for (int i = 0; i < Count(); ++i)
        if (FItems[i].compare(name, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

QRect TTableRepListBox::ItemRect(int index) const
{
    return {0, (index - FTopIndex) * FMetrics.RowHeight, width(), FMetrics.RowHeight};
}

int TTableRepListBox::ItemAt(QPoint pos) const
{
    if (pos.y() < 0 || pos.x() < 0 || pos.x() >= width())
        return -1;
    const int index = FTopIndex + pos.y() / FMetrics.RowHeight;
    return index < Count() ? index : -1;
}

int TTableRepListBox::VisibleRows() const
{
    return std::max(1, height() / std::max(1, FMetrics.RowHeight));
}

int TTableRepListBox::MaxTopIndex() const
{
    return std::max(0, Count() - VisibleRows());
}

void TTableRepListBox::UpdateScrollBar()
{
    const bool needed = Count() > VisibleRows();
    if (needed && !FScrollBar) {
        FScrollBar = new QScrollBar(Qt::Vertical, this);
        connect(FScrollBar, &QScrollBar::valueChanged, this, [this](int v) { SetTopIndex(v); });
    }
    if (!FScrollBar)
        return;
    FScrollBar->setVisible(needed);
    FScrollBar->setRange(0, MaxTopIndex());
    FScrollBar->setPageStep(VisibleRows());
    FScrollBar->setValue(FTopIndex);
    const int w = FScrollBar->sizeHint().width();
    FScrollBar->setGeometry(width() - w, 0, w, height());
}

void TTableRepListBox::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    const QPalette pal = palette();
    painter.fillRect(event->rect(), pal.color(QPalette::Base));
    QRect list = rect();
    if (FScrollBar && FScrollBar->isVisible())
        list.setRight(FScrollBar->x() - 1);
    const int textWidth = list.width() - 2 * FMetrics.TextPadding;
    if (textWidth != FRowTextWidth || FRowTexts.size() != size_t(FItems.size())) {
        FRowTexts.assign(size_t(FItems.size()), QStaticText());
        FRowTextWidth = textWidth;
    }
    const QFontMetrics fm = fontMetrics();
    const int textTop = (FMetrics.RowHeight - fm.height()) / 2;
    for (int i = FTopIndex; i < Count(); ++i) {
        const QRect row = ItemRect(i);
        if (row.top() > list.bottom())
            break;
        if (!row.intersects(event->rect()))
            continue;
        QStaticText &text = FRowTexts[size_t(i)];
        if (text.text().isEmpty() && !FItems[i].isEmpty()) {
            text.setTextFormat(Qt::PlainText);
            text.setText(fm.elidedText(FItems[i], Qt::ElideRight, std::max(0, textWidth)));
            text.prepare(QTransform(), font());
        }
        if (i == FItemIndex) {
            painter.fillRect(row.intersected(list), pal.color(QPalette::Highlight));
            painter.setPen(pal.color(QPalette::HighlightedText));
        } else {
            painter.setPen(pal.color(QPalette::Text));
        }
        painter.drawStaticText(list.left() + FMetrics.TextPadding, row.top() + textTop, text);
    }
}

void TTableRepListBox::mousePressEvent(QMouseEvent *event)
{
    if (OnPressed)
        OnPressed();
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    const int index = ItemAt(event->position().toPoint());
    SetItemIndex(index);
    if (index >= 0 && OnSelect)
        OnSelect(index);
}

void TTableRepListBox::mouseMoveEvent(QMouseEvent *event)
{
    if (OnMouseMove)
        OnMouseMove(event->position().toPoint());
    event->ignore();
}

void TTableRepListBox::leaveEvent(QEvent *)
{
    if (OnExit)
        OnExit();
}

void TTableRepListBox::wheelEvent(QWheelEvent *event)
{
    const int steps = event->angleDelta().y() / 40;
    if (steps == 0 || MaxTopIndex() == 0) {
        event->ignore();
        return;
    }
    SetTopIndex(FTopIndex - steps);
}

void TTableRepListBox::resizeEvent(QResizeEvent *)
{
    const int top = FTopIndex;
    FTopIndex = std::clamp(FTopIndex, 0, MaxTopIndex());
    UpdateScrollBar();
    if (top != FTopIndex && OnScroll)
        OnScroll();
}

void TTableRepListBox::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::FontChange) {
        FMetrics = TTableMetrics::For(font());
        FRowTexts.clear();
        UpdateScrollBar();
    }
    QWidget::changeEvent(event);
}

} // namespace vm20
