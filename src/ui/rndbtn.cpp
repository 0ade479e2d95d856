#include "ui/rndbtn.h"

#include "ui/accessibility.h"
#include "ui/readablecolor.h"

#include <QEnterEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

namespace vm20 {

TNRndBtn::TNRndBtn(QWidget *parent)
    : QWidget(parent)
{
    InstallAccessibility();
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::NoFocus);
    resize(20, 16);
}

void TNRndBtn::SetCaption(const QString &value)
{
    if (FCaption == value)
        return;
    FCaption = value;
    ApplyAutoSize();
    update();
}

void TNRndBtn::SetRounded(bool value)
{
    if (FRounded == value)
        return;
    FRounded = value;
    update();
}

void TNRndBtn::SetFlat(bool value)
{
    if (FFlat == value)
        return;
    FFlat = value;
    update();
}

void TNRndBtn::SetAllowPress(bool value)
{
    if (FAllowPress == value)
        return;
    FAllowPress = value;
    if (!value)
        FPressed = false;
    update();
}

void TNRndBtn::SetPressed(bool value)
{
    value = value && FAllowPress;
    if (FPressed == value)
        return;
    FPressed = value;
    update();
}

void TNRndBtn::SetColor(const QColor &value)
{
    if (FColor == value)
        return;
    FColor = value;
    update();
}

void TNRndBtn::SetPressedColor(const QColor &value)
{
    if (FPressedColor == value)
        return;
    FPressedColor = value;
    update();
}

void TNRndBtn::SetOverColor(const QColor &value)
{
    if (FOverColor == value)
        return;
    FOverColor = value;
    update();
}

void TNRndBtn::SetMargin(int value)
{
    if (FMargin == value)
        return;
    FMargin = value;
    update();
}

void TNRndBtn::SetAutoSize(bool value)
{
    if (FAutoSize == value)
        return;
    FAutoSize = value;
    ApplyAutoSize();
}

QSize TNRndBtn::AutoSizeHint() const
{
    const QFontMetrics metrics(font());
    return QSize(metrics.horizontalAdvance(FCaption) + 10, metrics.height() + 1);
}

QSize TNRndBtn::sizeHint() const
{
    return AutoSizeHint();
}

void TNRndBtn::ApplyAutoSize()
{
    if (FAutoSize)
        resize(AutoSizeHint());
}

QColor TNRndBtn::FaceColor() const
{
    if (FPressed)
        return FPressedColor.isValid() ? FPressedColor : palette().color(QPalette::Highlight).lighter(160);
    if (FMouseOver && isEnabled())
        return FOverColor.isValid() ? FOverColor : palette().color(QPalette::Midlight);
    return FColor.isValid() ? FColor : palette().color(QPalette::Button);
}

void TNRndBtn::draw(QPainter *painter, const QRect &rect) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, FRounded);
    const QRectF face = QRectF(rect).adjusted(FMargin + 0.5, FMargin + 0.5, -FMargin - 0.5, -FMargin - 0.5);
    const bool sunken = FPressed || FMouseDown;
    const QColor frame = FFlat ? MoreContrasting(palette().color(QPalette::Window), palette().color(QPalette::Mid),
                                                 palette().color(QPalette::Light))
                               : palette().color(sunken ? QPalette::Dark : QPalette::Shadow);
    painter->setPen(QPen(frame, 1));
    painter->setBrush(FaceColor());
    if (FRounded) {
        const qreal radius = std::min(face.width(), face.height()) / 2;
        painter->drawRoundedRect(face, radius, radius);
    } else {
        painter->drawRect(face);
    }
    if (!FFlat && !FRounded) {
        // A raised or sunken edge on the square face.
        painter->setPen(palette().color(sunken ? QPalette::Dark : QPalette::Light));
        painter->drawLine(face.topLeft() + QPointF(1, 1), face.topRight() + QPointF(-1, 1));
        painter->drawLine(face.topLeft() + QPointF(1, 1), face.bottomLeft() + QPointF(1, -1));
    }
    painter->setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText));
    const QRect textRect = sunken ? rect.translated(1, 1) : rect;
    painter->drawText(textRect, Qt::AlignCenter | Qt::TextSingleLine, FCaption);
    painter->restore();
}

void TNRndBtn::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    draw(&painter, rect());
}

void TNRndBtn::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return QWidget::mousePressEvent(event);
    FMouseDown = true;
    update();
}

void TNRndBtn::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !FMouseDown)
        return QWidget::mouseReleaseEvent(event);
    FMouseDown = false;
    update();
    if (!rect().contains(event->position().toPoint()))
        return;
    Click();
}

void TNRndBtn::Click()
{
    if (FAllowPress)
        SetPressed(!FPressed);
    if (OnClick)
        OnClick(this);
}

void TNRndBtn::enterEvent(QEnterEvent *event)
{
    FMouseOver = true;
    update();
    QWidget::enterEvent(event);
}

void TNRndBtn::leaveEvent(QEvent *event)
{
    FMouseOver = false;
    update();
    QWidget::leaveEvent(event);
}

void TNRndBtn::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::FontChange)
        ApplyAutoSize();
    QWidget::changeEvent(event);
}

} // namespace vm20
