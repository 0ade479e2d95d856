#pragma once
// A hyperlink-like label that shows a value and, when clicked, drops down an
// editor; dropping up accepts or discards what the user entered.
#include "ui/imagelist.h"

#include <QFont>
#include <QWidget>

#include <functional>

namespace vm20 {

// The caption a label shows when it has none.
inline constexpr const char *EmptyCaption = "_____";

class TDropDownLabel : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString Caption READ Caption WRITE SetCaption)
    Q_PROPERTY(bool Dropped READ Dropped WRITE SetDropped)
    Q_PROPERTY(Qt::LayoutDirection BiDiMode READ BiDiMode WRITE SetBiDiMode)
    Q_PROPERTY(QString Value READ Value WRITE SetValue)
    Q_PROPERTY(bool Focused READ Focused WRITE SetFocused)
    Q_PROPERTY(bool Fixed READ Fixed WRITE SetFixed)

public:
    using TNotifyEvent = std::function<void(QObject *Sender)>;
    using TBeforeDropUpEvent = std::function<void(QObject *Sender, QString &Value, bool &Accept)>;
    using TAfterDropUpEvent = std::function<void(QObject *Sender, bool Accepted)>;
    using TAltClickEvent = std::function<void(QObject *Sender)>;
    using TGetGroupImageIndexEvent = std::function<void(const QString &AGroupName, int &AImageIndex)>;
    using TGetItemImageIndexEvent =
        std::function<void(const QString &AGroupName, const QString &AItemName, int &AImageIndex)>;

    explicit TDropDownLabel(QWidget *parent = nullptr);
    ~TDropDownLabel() override;

    // An empty caption shows as five underscores; "&" is drawn as written.
    QString Caption() const { return FCaption; }
    void SetCaption(const QString &value);
    bool Dropped() const { return FDropped; }
    // Writing true drops down, false drops up discarding.
    void SetDropped(bool value);
    Qt::LayoutDirection BiDiMode() const { return layoutDirection(); }
    void SetBiDiMode(Qt::LayoutDirection value);
    // Whether the editor is showing; writing drops down or up (accepting).
    bool EditMode() const { return IsEditMode(); }
    void SetEditMode(bool value);
    QString Value() const { return FValue; }
    void SetValue(const QString &value);
    bool Focused() const { return FFocused; }
    void SetFocused(bool value);
    bool Fixed() const { return FFixed; }
    void SetFixed(bool value);
    const TImageList *Images() const { return FImages; }
    void SetImages(const TImageList *value) { FImages = value; }

    void DropDown();
    void DropUp(bool Accept);
    // Drops up only when the editor is showing.
    void CloseEdit(bool Accept);
    // A click with or without Ctrl (Ctrl makes it an alt click).
    void Click(Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    void DoGetGroupImageIndex(const QString &GroupName, int &Index) const;
    void DoGetItemImageIndex(const QString &GroupName, const QString &ItemName, int &Index) const;

    // Paints the caption, and the focus frame when focused.
    void draw(QPainter *painter, const QRect &rect) const;
    QSize sizeHint() const override;

    TNotifyEvent BeforeDropDown;
    TNotifyEvent AfterDropDown;
    TBeforeDropUpEvent BeforeDropUp;
    TAfterDropUpEvent AfterDropUp;
    TBeforeDropUpEvent OnCustomDropDown;
    TAltClickEvent OnAltClick;
    TAltClickEvent OnRightClick;
    TGetGroupImageIndexEvent OnGetGroupImageIndex;
    TGetItemImageIndexEvent OnGetItemImageIndex;

protected:
    // Makes the editor; safe to call more than once.
    virtual void CreateControl() {}
    virtual void ShowControl();
    virtual void HideControl() {}
    virtual void AcceptInput();
    virtual void ValueChanged();
    virtual bool IsEditMode() const { return false; }
    virtual void BiDiModeChanged() {}
    virtual void DoBeforeDropUp(bool &Accept);
    virtual void DoAfterDropUp(bool Accept);
    virtual void DoRightClick();

    // Creates the editor once the label has a parent.
    void EnsureControl();
    // Runs a user action; an error of the library shows as a tool tip at the
    // label instead of escaping into the event loop.
    void Guarded(const std::function<void()> &action);
    // The font of the editor or list that opens over the label: the label's
    // own without the underline that marks the current label as a link.
    QFont EditorFont() const;
    // Shows a message at the label (errors of user actions).
    void ShowMessage(const QString &text);
    void SetValueSilently(const QString &value) { FValue = value; }

    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void changeEvent(QEvent *event) override;

    QString FCustomValue;

private:
    void AdjustLabelSize();

    QString FCaption;
    QString FValue;
    bool FFocused = false;
    bool FFixed = false;
    bool FDropped = false;
    bool FControlMade = false;
    bool FPressed = false;
    bool FDroppingUp = false;
    const TImageList *FImages = nullptr;
};

} // namespace vm20
