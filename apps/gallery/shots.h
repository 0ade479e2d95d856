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

namespace vm20 {
class TNDBStructure;
class TNQuery;
}

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
std::vector<GalleryState> InteractiveStates();

// The sample shop model, and the rich query the condition panel pages show:
// brackets of every link type, disabled rows, values of every label kind,
// parameters, a custom condition and a field the model lacks.
std::shared_ptr<vm20::TNDBStructure> SampleModel();
void RichQuery(vm20::TNQuery &q, vm20::TNDBStructure &m);
// The condition panel on the sample model with the result columns under it,
// the SQL it builds under those and the query's text beside them, all kept
// up to date as the query changes. `empty` starts without conditions or
// columns.
GalleryShot InteractivePage(bool empty);

// A dark palette, as a host on a dark desktop theme would set it, applied to
// the shot's widget and its pop-up windows.
QPalette DarkPalette();
void Darken(GalleryShot &shot);
GalleryShot Darkened(GalleryShot shot);

// Renders the widget and its overlays into one image.
QImage RenderShot(const GalleryShot &shot, qreal devicePixelRatio);
