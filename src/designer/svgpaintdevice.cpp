#include "designer/svgpaintdevice.h"

#include <QBuffer>
#include <QPaintEngine>
#include <QPainterPath>
#include <QTextItem>
#include <QXmlStreamWriter>

namespace vm20 {

class TSvgPaintEngine : public QPaintEngine
{
public:
    explicit TSvgPaintEngine(QSize size)
        : QPaintEngine(AllFeatures)
        , FSize(size)
    {
    }

    QByteArray Svg() const { return FSvg; }

    bool begin(QPaintDevice *) override
    {
        FSvg.clear();
        FBuffer.setBuffer(&FSvg);
        FBuffer.open(QIODevice::WriteOnly);
        FXml.setDevice(&FBuffer);
        FXml.setAutoFormatting(true);
        FXml.writeStartDocument();
        FXml.writeStartElement(QStringLiteral("svg"));
        FXml.writeDefaultNamespace(QStringLiteral("http://www.w3.org/2000/svg"));
        FXml.writeAttribute(QStringLiteral("width"), QString::number(FSize.width()));
        FXml.writeAttribute(QStringLiteral("height"), QString::number(FSize.height()));
        FXml.writeAttribute(QStringLiteral("viewBox"),
                            QStringLiteral("0 0 %1 %2").arg(FSize.width()).arg(FSize.height()));
        return true;
    }

    bool end() override
    {
        FXml.writeEndElement();
        FXml.writeEndDocument();
        FBuffer.close();
        return true;
    }

    void updateState(const QPaintEngineState &state) override
    {
        const DirtyFlags dirty = state.state();
        if (dirty & DirtyPen)
            FPen = state.pen();
        if (dirty & DirtyBrush)
            FBrush = state.brush();
        if (dirty & DirtyFont)
            FFont = state.font();
        if (dirty & DirtyTransform)
            FTransform = state.transform();
    }

    void drawLines(const QLineF *lines, int count) override
    {
        for (int i = 0; i < count; ++i) {
            const QLineF l = FTransform.map(lines[i]);
            FXml.writeStartElement(QStringLiteral("line"));
            FXml.writeAttribute(QStringLiteral("x1"), Num(l.x1()));
            FXml.writeAttribute(QStringLiteral("y1"), Num(l.y1()));
            FXml.writeAttribute(QStringLiteral("x2"), Num(l.x2()));
            FXml.writeAttribute(QStringLiteral("y2"), Num(l.y2()));
            WriteStroke();
            FXml.writeEndElement();
        }
    }

    void drawRects(const QRectF *rects, int count) override
    {
        for (int i = 0; i < count; ++i) {
            const QRectF r = FTransform.mapRect(rects[i]);
            FXml.writeStartElement(QStringLiteral("rect"));
            FXml.writeAttribute(QStringLiteral("x"), Num(r.x()));
            FXml.writeAttribute(QStringLiteral("y"), Num(r.y()));
            FXml.writeAttribute(QStringLiteral("width"), Num(r.width()));
            FXml.writeAttribute(QStringLiteral("height"), Num(r.height()));
            WriteFill();
            WriteStroke();
            FXml.writeEndElement();
        }
    }

    void drawPolygon(const QPointF *points, int count, PolygonDrawMode mode) override
    {
        QPainterPath path;
        if (count > 0)
            path.moveTo(points[0]);
        for (int i = 1; i < count; ++i)
            path.lineTo(points[i]);
        if (mode != PolylineMode)
            path.closeSubpath();
        WritePath(path, mode != PolylineMode);
    }

    void drawPath(const QPainterPath &path) override { WritePath(path, true); }

    void drawTextItem(const QPointF &p, const QTextItem &textItem) override
    {
        const QPointF at = FTransform.map(p);
        const QFont font = textItem.font();
        const qreal scale = FTransform.m22() != 0 ? FTransform.m22() : 1;
        const qreal size = font.pixelSize() > 0 ? font.pixelSize() : font.pointSizeF() * 96 / 72;
        FXml.writeStartElement(QStringLiteral("text"));
        FXml.writeAttribute(QStringLiteral("x"), Num(at.x()));
        FXml.writeAttribute(QStringLiteral("y"), Num(at.y()));
        // The generic family lets a viewer without the font pick a like one.
        FXml.writeAttribute(QStringLiteral("font-family"), font.family() + QStringLiteral(", sans-serif"));
        FXml.writeAttribute(QStringLiteral("font-size"), Num(size * scale));
        if (font.bold())
            FXml.writeAttribute(QStringLiteral("font-weight"), QStringLiteral("bold"));
        FXml.writeAttribute(QStringLiteral("fill"), FPen.color().name());
        FXml.writeAttribute(QStringLiteral("xml:space"), QStringLiteral("preserve"));
        FXml.writeCharacters(textItem.text());
        FXml.writeEndElement();
    }

    void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override {}

    Type type() const override { return User; }

private:
    static QString Num(qreal v) { return QString::number(v, 'g', 6); }

    void WriteStroke()
    {
        if (FPen.style() == Qt::NoPen) {
            FXml.writeAttribute(QStringLiteral("stroke"), QStringLiteral("none"));
            return;
        }
        FXml.writeAttribute(QStringLiteral("stroke"), FPen.color().name());
        const qreal width = FPen.widthF() > 0 ? FPen.widthF() : 1;
        FXml.writeAttribute(QStringLiteral("stroke-width"), Num(width));
    }

    void WriteFill()
    {
        if (FBrush.style() == Qt::NoBrush) {
            FXml.writeAttribute(QStringLiteral("fill"), QStringLiteral("none"));
            return;
        }
        FXml.writeAttribute(QStringLiteral("fill"), FBrush.color().name());
    }

    void WritePath(const QPainterPath &path, bool filled)
    {
        const QPainterPath mapped = FTransform.map(path);
        QString d;
        for (int i = 0; i < mapped.elementCount(); ++i) {
            const QPainterPath::Element e = mapped.elementAt(i);
            switch (e.type) {
            case QPainterPath::MoveToElement:
                d += QStringLiteral("M%1 %2 ").arg(Num(e.x), Num(e.y));
                break;
            case QPainterPath::LineToElement:
                d += QStringLiteral("L%1 %2 ").arg(Num(e.x), Num(e.y));
                break;
            case QPainterPath::CurveToElement:
                d += QStringLiteral("C%1 %2 ").arg(Num(e.x), Num(e.y));
                break;
            case QPainterPath::CurveToDataElement:
                d += QStringLiteral("%1 %2 ").arg(Num(e.x), Num(e.y));
                break;
            }
        }
        FXml.writeStartElement(QStringLiteral("path"));
        FXml.writeAttribute(QStringLiteral("d"), d.trimmed());
        if (filled)
            WriteFill();
        else
            FXml.writeAttribute(QStringLiteral("fill"), QStringLiteral("none"));
        WriteStroke();
        FXml.writeEndElement();
    }

    QSize FSize;
    QByteArray FSvg;
    QBuffer FBuffer;
    QXmlStreamWriter FXml;
    QPen FPen;
    QBrush FBrush;
    QFont FFont;
    QTransform FTransform;
};

TSvgPaintDevice::TSvgPaintDevice(QSize size)
    : FSize(size)
    , FEngine(std::make_unique<TSvgPaintEngine>(size))
{
}

TSvgPaintDevice::~TSvgPaintDevice() = default;

QPaintEngine *TSvgPaintDevice::paintEngine() const
{
    return FEngine.get();
}

QByteArray TSvgPaintDevice::Svg() const
{
    return FEngine->Svg();
}

int TSvgPaintDevice::metric(PaintDeviceMetric metric) const
{
    switch (metric) {
    case PdmWidth:
        return FSize.width();
    case PdmHeight:
        return FSize.height();
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
        return 96;
    case PdmWidthMM:
        return FSize.width() * 254 / 960;
    case PdmHeightMM:
        return FSize.height() * 254 / 960;
    case PdmNumColors:
        return 0x7fffffff;
    case PdmDepth:
        return 32;
    case PdmDevicePixelRatio:
        return 1;
    case PdmDevicePixelRatioScaled:
        return int(devicePixelRatioFScale());
    default:
        return 0;
    }
}

} // namespace vm20
