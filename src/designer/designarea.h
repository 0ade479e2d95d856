#pragma once
// The scrolling surface of the diagram: its canvas holds the table windows
// and paints the link lines under them. Canvas coordinates are the design
// area's coordinates (scrolling moves the canvas, not the tables on it).
#include <QScrollArea>

namespace vm20 {

class TNStructDesignPanel;

class TNDesignArea : public QScrollArea
{
public:
    explicit TNDesignArea(TNStructDesignPanel *panel);

    QWidget *Canvas() const { return FCanvas; }
    // Grows the canvas to hold `content` plus a margin, never smaller than
    // the visible area.
    void FitCanvas(const QRect &content);
    int ClientWidth() const;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    TNStructDesignPanel *FPanel;
    QWidget *FCanvas;
    QRect FContent;
};

} // namespace vm20
