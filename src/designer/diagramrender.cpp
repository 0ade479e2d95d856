// The diagram drawn away from the screen: into any paint device, and into
// PNG or SVG files for a model's documentation.
#include "designer/designarea.h"
#include "designer/structdesignpanel.h"
#include "designer/structuredesignerror.h"
#include "designer/svgpaintdevice.h"

#include <QFile>
#include <QImage>
#include <QPainter>

namespace vm20 {

namespace {
constexpr int RenderMargin = 12;
}

QSize TNStructDesignPanel::DiagramSize() const
{
    const QRect all = DiagramRect();
    if (all.isNull())
        return {2 * RenderMargin, 2 * RenderMargin};
    return {all.right() + 1 + RenderMargin, all.bottom() + 1 + RenderMargin};
}

void TNStructDesignPanel::DrawDiagram(QPainter *painter)
{
    const QSize size = DiagramSize();
    painter->fillRect(QRect(QPoint(0, 0), size), Qt::white);
    painter->setFont(FDesignArea->Canvas()->font());
    DrawLinks(painter, QRect(QPoint(0, 0), size), Qt::white);
    for (const auto &rep : FTableReps)
        rep->Draw(painter);
}

void TNStructDesignPanel::RenderTo(QPaintDevice *device)
{
    if (!FActive)
        Activate();
    QPainter painter(device);
    painter.setRenderHint(QPainter::TextAntialiasing);
    DrawDiagram(&painter);
}

void TNStructDesignPanel::SaveDiagram(const QString &fileName, qreal scale)
{
    if (!FActive)
        Activate();
    const QSize size = DiagramSize();
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        throw EStructureDesignError(QStringLiteral("Can not write \"%1\": %2")
                                        .arg(fileName, file.errorString()));
    bool written = false;
    if (fileName.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive)) {
        TSvgPaintDevice svg(size);
        RenderTo(&svg);
        written = file.write(svg.Svg()) == svg.Svg().size();
    } else {
        QImage image(size * scale, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(scale);
        RenderTo(&image);
        written = image.save(&file, "PNG");
    }
    if (!written)
        throw EStructureDesignError(QStringLiteral("Can not write \"%1\"").arg(fileName));
}

} // namespace vm20
