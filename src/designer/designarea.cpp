#include "designer/designarea.h"

#include "designer/structdesignpanel.h"

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QLayout>
#include <QScrollBar>

#include <algorithm>

namespace vm20 {

namespace {

class TDesignCanvas : public QWidget
{
public:
    TDesignCanvas(TNStructDesignPanel *panel, QWidget *parent)
        : QWidget(parent)
        , FPanel(panel)
    {
        setMouseTracking(true);
        setAutoFillBackground(true);
        setBackgroundRole(QPalette::Base);
        // What is drawn depends on the tables' places, not on the canvas's
        // size: a table dragged past the edge grows the canvas on every
        // move, and only the new strip needs painting.
        setAttribute(Qt::WA_StaticContents);
    }

protected:
    void paintEvent(QPaintEvent *event) override
    {
        QPainter painter(this);
        FPanel->DrawLinks(&painter, event->region(), palette().color(backgroundRole()));
    }
    void mousePressEvent(QMouseEvent *event) override
    {
        FPanel->AreaMousePress(event->position().toPoint(), event->button());
    }
    void mouseMoveEvent(QMouseEvent *event) override
    {
        FPanel->AreaMouseMove(event->position().toPoint());
    }
    void contextMenuEvent(QContextMenuEvent *event) override
    {
        FPanel->ShowAreaMenu(event->pos(), event->globalPos());
    }

private:
    TNStructDesignPanel *FPanel;
};

constexpr int CanvasMargin = 40;

} // namespace

TNDesignArea::TNDesignArea(TNStructDesignPanel *panel)
    : QScrollArea(panel)
    , FPanel(panel)
    , FCanvas(new TDesignCanvas(panel, nullptr))
{
    setFrameShape(QFrame::NoFrame);
    setWidget(FCanvas);
    setWidgetResizable(false);
    FCanvas->resize(viewport()->size());
}

int TNDesignArea::ClientWidth() const
{
    // A panel not shown yet has not laid out its children: the area will
    // fill the panel's width.
    if (!isVisible() && parentWidget())
        return parentWidget()->width();
    return viewport()->width();
}

void TNDesignArea::FitCanvas(const QRect &content)
{
    FContent = content;
    const QSize wanted(std::max(viewport()->width(), content.right() + 1 + CanvasMargin),
                       std::max(viewport()->height(), content.bottom() + 1 + CanvasMargin));
    if (wanted != FCanvas->size())
        FCanvas->resize(wanted);
}

void TNDesignArea::resizeEvent(QResizeEvent *event)
{
    QScrollArea::resizeEvent(event);
    FitCanvas(FContent);
}

} // namespace vm20
