#pragma once
// The row button: a small windowless button drawn round or flat, that can
// stay pressed and lights up under the mouse.
#include <QColor>
#include <QWidget>

#include <functional>

namespace vm20 {

class TNRndBtn : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)
    Q_PROPERTY(bool Rounded READ Rounded WRITE SetRounded)
    Q_PROPERTY(bool Flat READ Flat WRITE SetFlat)
    Q_PROPERTY(bool AllowPress READ AllowPress WRITE SetAllowPress)
    Q_PROPERTY(bool Pressed READ Pressed WRITE SetPressed)
    Q_PROPERTY(QColor Color READ Color WRITE SetColor)
    Q_PROPERTY(QColor PressedColor READ PressedColor WRITE SetPressedColor)
    Q_PROPERTY(QColor OverColor READ OverColor WRITE SetOverColor)
    Q_PROPERTY(int Margin READ Margin WRITE SetMargin)
    Q_PROPERTY(bool AutoSize READ AutoSize WRITE SetAutoSize)

public:
    explicit TNRndBtn(QWidget *parent = nullptr);

    QString Caption() const { return FCaption; }
    void SetCaption(const QString &value);
    bool Rounded() const { return FRounded; }
    void SetRounded(bool value);
    bool Flat() const { return FFlat; }
    void SetFlat(bool value);
    bool AllowPress() const { return FAllowPress; }
    void SetAllowPress(bool value);
    // Only a button that allows pressing stays pressed.
    bool Pressed() const { return FPressed; }
    void SetPressed(bool value);
    // An invalid colour stands for the palette's button colour.
    QColor Color() const { return FColor; }
    void SetColor(const QColor &value);
    // Invalid: a light shade of the palette's highlight colour.
    QColor PressedColor() const { return FPressedColor; }
    void SetPressedColor(const QColor &value);
    // Invalid: the palette's midlight colour.
    QColor OverColor() const { return FOverColor; }
    void SetOverColor(const QColor &value);
    int Margin() const { return FMargin; }
    void SetMargin(int value);
    bool AutoSize() const { return FAutoSize; }
    void SetAutoSize(bool value);
    bool MouseOver() const { return FMouseOver; }

    // The size AutoSize gives: caption width + 10 by caption height + 1.
    QSize AutoSizeHint() const;
    QSize sizeHint() const override;

    void draw(QPainter *painter, const QRect &rect) const;
    // What a click does: toggles a button that allows pressing, then OnClick.
    void Click();

    std::function<void(QObject *Sender)> OnClick;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void ApplyAutoSize();
    QColor FaceColor() const;

    QString FCaption;
    bool FRounded = true;
    bool FFlat = false;
    bool FAllowPress = false;
    bool FPressed = false;
    bool FAutoSize = false;
    bool FMouseOver = false;
    bool FMouseDown = false;
    int FMargin = 0;
    QColor FColor;
    QColor FPressedColor;
    QColor FOverColor;
};

} // namespace vm20
