#pragma once
// The list of a table window's fields. It is painted by hand (a diagram of
// a few hundred tables must open quickly) and reports what the diagram
// needs to keep link lines on their fields: scrolling, and while a link is
// being drawn, clicks on fields, mouse moves and the mouse leaving it.
#include "designer/tablepainter.h"

#include <QStaticText>
#include <QStringList>
#include <QWidget>

#include <vector>

#include <functional>

class QScrollBar;

namespace vm20 {

class TTableRepListBox : public QWidget
{
public:
    explicit TTableRepListBox(QWidget *parent = nullptr);

    const QStringList &Items() const { return FItems; }
    void SetItems(const QStringList &items);
    int ItemIndex() const { return FItemIndex; }
    void SetItemIndex(int index);
    int TopIndex() const { return FTopIndex; }
    void SetTopIndex(int index);
    int Count() const { return int(FItems.size()); }
    // Case-insensitive; -1 when absent.
    int IndexOf(const QString &name) const;
    // The row's rectangle in this widget's coordinates (rows above the top
    // one lie above 0).
    QRect ItemRect(int index) const;
    int ItemAt(QPoint pos) const;
    int VisibleRows() const;
    const TTableMetrics &Metrics() const { return FMetrics; }

    // A click on a field (its index); the host decides what it means.
    std::function<void(int)> OnSelect;
    std::function<void(QPoint)> OnMouseMove;
    std::function<void()> OnExit;
    // Called whenever the top visible row changes.
    std::function<void()> OnScroll;
    // Any press inside the list, so that its table becomes the active one.
    std::function<void()> OnPressed;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void UpdateScrollBar();
    int MaxTopIndex() const;

    QStringList FItems;
    int FItemIndex = -1;
    int FTopIndex = 0;
    TTableMetrics FMetrics;
    QScrollBar *FScrollBar = nullptr;   // made when the rows first overflow
    // Laid-out row texts for the current text width: dragging a table
    // repaints many lists, and shaping text is the dearest part of it.
    std::vector<QStaticText> FRowTexts;
    int FRowTextWidth = -1;
};

} // namespace vm20
