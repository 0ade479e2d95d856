#pragma once
// A gallery state: a name and a function that builds the widgets showing it.
#include <QImage>
#include <QPalette>
#include <QPoint>
#include <QString>
#include <QWidget>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

struct GalleryShot
{
    std::unique_ptr<QWidget> widget;
    // Pop-up windows drawn over the widget at the given offset.
    std::vector<std::pair<QWidget *, QPoint>> overlays;
    std::vector<std::shared_ptr<void>> keep;
};

struct GalleryState
{
    QString name;
    std::function<GalleryShot()> build;
    bool live = false; // also shown in the interactive window
};

std::vector<GalleryState> GalleryStates();
std::vector<GalleryState> DesignerStates();
// The condition panel on the sample model.
std::vector<GalleryState> PanelStates();

// A dark palette, as a host on a dark desktop theme would set it, applied to
// the shot's widget and its pop-up windows.
QPalette DarkPalette();
void Darken(GalleryShot &shot);

// Renders the widget and its overlays into one image.
QImage RenderShot(const GalleryShot &shot, qreal devicePixelRatio);
