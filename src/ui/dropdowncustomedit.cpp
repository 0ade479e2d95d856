#include "ui/dropdowncustomedit.h"

#include "ui/ddlabelerror.h"
#include "ui/geometry.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QLocale>
#include <QTimer>

namespace vm20 {

TDropDownCustomEdit::TDropDownCustomEdit(QWidget *parent)
    : TDropDownLabel(parent)
{
}

void TDropDownCustomEdit::SetAutoUpperCase(bool value)
{
    if (AutoUpperCase() == value)
        return;
    FOptions = value ? FOptions | 1 : FOptions & ~1;
}

void TDropDownCustomEdit::SetAutoLowerCase(bool value)
{
    if (AutoLowerCase() == value)
        return;
    FOptions = value ? FOptions | 2 : FOptions & ~2;
}

void TDropDownCustomEdit::SetValueType(int value)
{
    if (value < vtInteger || value > vtString)
        throw EDDLabelError(QStringLiteral("Invalid value type: %1").arg(value));
    FValueType = TValueType(value);
}

QRect TDropDownCustomEdit::ClientRect() const
{
    if (IsEditMode())
        return EditControl()->rect();
    return rect();
}

void TDropDownCustomEdit::EditExit()
{
    DropUp(true);
}

void TDropDownCustomEdit::EditDblClick()
{
    if (!OnEditDblClick)
        return;
    QString text = GetEditText();
    OnEditDblClick(this, text);
    SetEditText(text);
}

void TDropDownCustomEdit::AdjustSizes()
{
    QWidget *editor = EditControl();
    const QFontMetrics metrics(font());
    const int frame = std::max(0, editor->minimumSizeHint().height() - metrics.height());
    editor->resize(EditorSize(metrics, GetEditText(), frame));
}

void TDropDownCustomEdit::AdjustPosition()
{
    QWidget *editor = EditControl();
    const bool rtl = editor->layoutDirection() == Qt::RightToLeft;
    // Centred on the label's line so that the text does not jump.
    const int top = std::max(0, y() - (editor->height() - height()) / 2);
    editor->move(EditorLeft(x(), width(), editor->width(), rtl), top);
}

void TDropDownCustomEdit::AdjustPlacement()
{
    if (!EditControl())
        return;
    AdjustSizes();
    AdjustPosition();
}

void TDropDownCustomEdit::ShowControl()
{
    QWidget *editor = EditControl();
    if (editor->parentWidget() != parentWidget())
        editor->setParent(parentWidget());
    editor->setFont(EditorFont());
    hide();
    ShowEditControl();
    AdjustPlacement();
    editor->raise();
    editor->setFocus(Qt::OtherFocusReason);
}

void TDropDownCustomEdit::HideControl()
{
    if (QWidget *editor = EditControl())
        editor->hide();
    show();
}

bool TDropDownCustomEdit::IsEditMode() const
{
    const QWidget *editor = EditControl();
    return editor && editor->isVisibleTo(editor->parentWidget());
}

void TDropDownCustomEdit::ValueChanged()
{
    const QLocale locale;
    if (AutoUpperCase())
        SetValueSilently(locale.toUpper(Value()));
    else if (AutoLowerCase())
        SetValueSilently(locale.toLower(Value()));
    TDropDownLabel::ValueChanged();
}

void TDropDownCustomEdit::BiDiModeChanged()
{
    if (QWidget *editor = EditControl())
        editor->setLayoutDirection(layoutDirection());
}

void TDropDownCustomEdit::WireEditor(QWidget *editor)
{
    editor->installEventFilter(this);
    editor->setLayoutDirection(layoutDirection());
    editor->hide();
}

bool TDropDownCustomEdit::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != EditControl())
        return TDropDownLabel::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::KeyPress: {
        auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            Guarded([this] { DropUp(true); });
            return true;
        }
        if (key->key() == Qt::Key_Escape) {
            Guarded([this] { DropUp(false); });
            return true;
        }
        const bool typed = !key->text().isEmpty() && key->text().at(0).isPrint()
                           && !(key->modifiers() & (Qt::ControlModifier | Qt::MetaModifier));
        if (typed && FiltersKeys()) {
            const QChar point = QLocale().decimalPoint().at(0);
            for (QChar c : key->text())
                if (!KeyAllowed(FValueType, c, point))
                    return true;
        }
        // The box follows its text once the key has reached it.
        QTimer::singleShot(0, this, [this] { AdjustPlacement(); });
        return false;
    }
    case QEvent::FocusOut:
        // A calendar or completer pop-up takes the focus without leaving.
        if (static_cast<QFocusEvent *>(event)->reason() != Qt::PopupFocusReason && Dropped())
            Guarded([this] { EditExit(); });
        return false;
    case QEvent::MouseButtonDblClick:
        if (OnEditDblClick) {
            Guarded([this] { EditDblClick(); });
            return true;
        }
        return false;
    default:
        return false;
    }
}

} // namespace vm20
