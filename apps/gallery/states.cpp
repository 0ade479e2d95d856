// The states the gallery shows.
#include "shots.h"

#include "ui/rndbtn.h"

#include <QCoreApplication>
#include <QEnterEvent>
#include <QPainter>

using namespace vm20;

namespace {

std::unique_ptr<QWidget> Host(int width, int height)
{
    auto host = std::make_unique<QWidget>();
    host->resize(width, height);
    host->setAutoFillBackground(true);
    host->setPalette(QPalette(Qt::white));
    host->setMinimumSize(width, height);
    return host;
}

TNRndBtn *Button(QWidget *host, const QString &caption, int x, bool rounded, bool flat)
{
    auto *button = new TNRndBtn(host);
    button->SetCaption(caption);
    button->SetRounded(rounded);
    button->SetFlat(flat);
    button->SetAutoSize(true);
    button->move(x, 8);
    return button;
}

std::unique_ptr<QWidget> Buttons(bool pressed, bool hovered)
{
    auto host = Host(260, 36);
    int x = 8;
    for (bool rounded : {true, false})
        for (bool flat : {false, true}) {
            TNRndBtn *b = Button(host.get(), QStringLiteral("12"), x, rounded, flat);
            b->SetAllowPress(true);
            b->SetPressed(pressed);
            if (hovered) {
                QEnterEvent enter{QPointF(), QPointF(), QPointF()};
                QCoreApplication::sendEvent(b, &enter);
            }
            x += b->width() + 12;
        }
    return host;
}

} // namespace

std::vector<GalleryState> GalleryStates()
{
    return {
        {QStringLiteral("button-idle"), [] { return Buttons(false, false); }},
        {QStringLiteral("button-hovered"), [] { return Buttons(false, true); }},
        {QStringLiteral("button-pressed"), [] { return Buttons(true, false); }},
    };
}

QImage RenderState(QWidget *widget, qreal devicePixelRatio)
{
    widget->ensurePolished();
    QImage image(widget->size() * devicePixelRatio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(devicePixelRatio);
    image.fill(Qt::white);
    widget->render(&image);
    return image;
}
