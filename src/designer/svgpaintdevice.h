#pragma once
// A paint device that records what is painted on it as an SVG document:
// lines, rectangles, polygons, paths and text become SVG elements, so a
// diagram painted with QPainter can be saved as a scalable drawing without
// a further Qt module. Clipping and images are not recorded.
#include <QByteArray>
#include <QPaintDevice>
#include <QSize>

#include <memory>

namespace vm20 {

class TSvgPaintEngine;

class TSvgPaintDevice : public QPaintDevice
{
public:
    explicit TSvgPaintDevice(QSize size);
    ~TSvgPaintDevice() override;

    QPaintEngine *paintEngine() const override;
    // The document written by the last painter that ended on this device.
    QByteArray Svg() const;

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    QSize FSize;
    std::unique_ptr<TSvgPaintEngine> FEngine;
};

} // namespace vm20
