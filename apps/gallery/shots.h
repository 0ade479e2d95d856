#pragma once
// A gallery state: a name and a function that builds the widget showing it.
#include <QString>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

struct GalleryState
{
    QString name;
    std::function<std::unique_ptr<QWidget>()> build;
};

std::vector<GalleryState> GalleryStates();

// Renders the widget (and the pop-ups it has open) into one image.
QImage RenderState(QWidget *widget, qreal devicePixelRatio);
