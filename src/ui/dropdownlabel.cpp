#include "ui/dropdownlabel.h"

#include "ui/accessibility.h"
#include "ui/readablecolor.h"
#include "support/exception.h"

#include <QAccessible>
#include <QMouseEvent>
#include <QPainter>
#include <QScopeGuard>
#include <QToolTip>

namespace vm20 {

TDropDownLabel::TDropDownLabel(QWidget *parent)
    : QWidget(parent)
    , FCaption(QString::fromLatin1(EmptyCaption))
{
    InstallAccessibility();
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::NoFocus);
    AdjustLabelSize();
}

TDropDownLabel::~TDropDownLabel() = default;

void TDropDownLabel::SetCaption(const QString &value)
{
    const QString shown = value.isEmpty() ? QString::fromLatin1(EmptyCaption) : value;
    if (FCaption == shown)
        return;
    FCaption = shown;
    AdjustLabelSize();
    update();
    if (QAccessible::isActive()) {
        QAccessibleEvent event(this, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&event);
    }
}

void TDropDownLabel::SetDropped(bool value)
{
    if (FDropped == value)
        return;
    if (value)
        DropDown();
    else
        DropUp(false);
}

void TDropDownLabel::SetBiDiMode(Qt::LayoutDirection value)
{
    if (layoutDirection() == value)
        return;
    setLayoutDirection(value);
}

void TDropDownLabel::SetEditMode(bool value)
{
    if (IsEditMode() == value)
        return;
    if (value)
        DropDown();
    else
        DropUp(true);
}

void TDropDownLabel::SetValue(const QString &value)
{
    if (FValue == value)
        return;
    FValue = value;
    ValueChanged();
}

void TDropDownLabel::SetFocused(bool value)
{
    if (FFocused == value)
        return;
    FFocused = value;
    update();
}

void TDropDownLabel::SetFixed(bool value)
{
    FFixed = value;
}

void TDropDownLabel::DropDown()
{
    if (FFixed)
        return;
    EnsureControl();
    if (BeforeDropDown)
        BeforeDropDown(this);
    FDropped = true;
    try {
        ShowControl();
    } catch (...) {
        // An editor that cannot show leaves the label idle and usable.
        HideControl();
        show();
        FDropped = false;
        throw;
    }
    if (FDropped && AfterDropDown)
        AfterDropDown(this);
    if (QAccessible::isActive()) {
        QAccessible::State changed;
        changed.expanded = true;
        QAccessibleStateChangeEvent event(this, changed);
        QAccessible::updateAccessibility(&event);
    }
}

void TDropDownLabel::DropUp(bool Accept)
{
    // Hiding an editor moves the focus, which would drop up a second time.
    if (FDroppingUp)
        return;
    FDroppingUp = true;
    const auto done = qScopeGuard([this] { FDroppingUp = false; });
    DoBeforeDropUp(Accept);
    if (Accept)
        AcceptInput();
    HideControl();
    if (parentWidget())
        parentWidget()->update();
    FDropped = false;
    DoAfterDropUp(Accept);
}

void TDropDownLabel::CloseEdit(bool Accept)
{
    if (IsEditMode())
        DropUp(Accept);
}

void TDropDownLabel::Click(Qt::KeyboardModifiers modifiers)
{
    if (modifiers & Qt::ControlModifier) {
        if (OnAltClick)
            OnAltClick(this);
        return;
    }
    if (FDropped)
        DropUp(false);
    else
        DropDown();
}

void TDropDownLabel::DoGetGroupImageIndex(const QString &GroupName, int &Index) const
{
    Index = -1;
    if (OnGetGroupImageIndex)
        OnGetGroupImageIndex(GroupName, Index);
}

void TDropDownLabel::DoGetItemImageIndex(const QString &GroupName, const QString &ItemName, int &Index) const
{
    Index = -1;
    if (OnGetItemImageIndex)
        OnGetItemImageIndex(GroupName, ItemName, Index);
}

void TDropDownLabel::ShowControl()
{
    FCustomValue = FValue;
    bool accept = true;
    if (OnCustomDropDown)
        OnCustomDropDown(this, FCustomValue, accept);
    DropUp(accept);
}

void TDropDownLabel::AcceptInput()
{
    // An empty answer never clears the value.
    if (!FCustomValue.isEmpty())
        SetValue(FCustomValue);
}

void TDropDownLabel::ValueChanged()
{
    SetCaption(FValue);
}

void TDropDownLabel::DoBeforeDropUp(bool &Accept)
{
    // The handler may veto; what it writes into the value is not used.
    QString scratch;
    if (BeforeDropUp)
        BeforeDropUp(this, scratch, Accept);
}

void TDropDownLabel::DoAfterDropUp(bool Accept)
{
    if (AfterDropUp)
        AfterDropUp(this, Accept);
}

void TDropDownLabel::DoRightClick()
{
    if (OnRightClick)
        OnRightClick(this);
}

void TDropDownLabel::EnsureControl()
{
    if (FControlMade || !parentWidget())
        return;
    CreateControl();
    FControlMade = true;
}

void TDropDownLabel::Guarded(const std::function<void()> &action)
{
    try {
        action();
    } catch (const Exception &e) {
        ShowMessage(e.Message());
    }
}

void TDropDownLabel::ShowMessage(const QString &text)
{
    QToolTip::showText(mapToGlobal(QPoint(0, height())), text, this);
}

void TDropDownLabel::draw(QPainter *painter, const QRect &rect) const
{
    painter->save();
    const QPalette::ColorGroup group = isEnabled() ? QPalette::Active : QPalette::Disabled;
    // A label sits on a panel's base or on a window; the lighter of the two
    // is the one its colour has to stand out from.
    const QColor base = palette().color(QPalette::Base);
    const QColor window = palette().color(QPalette::Window);
    const QColor background = base.lightnessF() > window.lightnessF() ? base : window;
    painter->setPen(ReadableOn(palette().color(group, foregroundRole()), background));
    painter->setFont(font());
    const Qt::Alignment align = (layoutDirection() == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
    painter->drawText(rect, int(align) | Qt::TextSingleLine, FCaption);
    if (FFocused) {
        painter->setPen(ReadableOn(QColor(0, 0, 128), background));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(rect.adjusted(0, 0, -1, -1));
    }
    painter->restore();
}

QSize TDropDownLabel::sizeHint() const
{
    const QFontMetrics metrics(font());
    return QSize(metrics.horizontalAdvance(FCaption), metrics.height());
}

void TDropDownLabel::AdjustLabelSize()
{
    resize(sizeHint());
}

void TDropDownLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    draw(&painter, rect());
}

void TDropDownLabel::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::RightButton) {
        DoRightClick();
        return;
    }
    FPressed = event->button() == Qt::LeftButton;
}

void TDropDownLabel::mouseReleaseEvent(QMouseEvent *event)
{
    const bool click = FPressed && event->button() == Qt::LeftButton && rect().contains(event->position().toPoint());
    FPressed = false;
    if (click) {
        const Qt::KeyboardModifiers modifiers = event->modifiers();
        Guarded([this, modifiers] { Click(modifiers); });
    }
}

void TDropDownLabel::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::FontChange)
        AdjustLabelSize();
    if (event->type() == QEvent::LayoutDirectionChange)
        BiDiModeChanged();
    QWidget::changeEvent(event);
}

QFont TDropDownLabel::EditorFont() const
{
    QFont plain = font();
    plain.setUnderline(false);
    return plain;
}

} // namespace vm20
