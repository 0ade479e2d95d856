// The condition panel's current row and current control, and its keyboard.
#include "ui/querypanel.h"

#include "support/exception.h"
#include "ui/dropdownlabel.h"
#include "ui/querypanelaccessible.h"
#include "ui/rndbtn.h"

#include <QAccessible>
#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QPointer>
#include <QScrollBar>
#include <QToolTip>

namespace vm20 {

namespace {

bool IsArrow(int key)
{
    return key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down;
}

// How far to scroll so that [low, high) shows within [0, size): the near edge
// first, so a control wider than the view shows its start.
int ScrollDelta(int low, int high, int size)
{
    if (low < 0)
        return low;
    if (high > size)
        return std::min(high - size, low);
    return 0;
}

} // namespace

// --- current row ---------------------------------------------------------------------------

TFilterBracket *TNQueryPanel::GetCurrentBracket() const
{
    return BracketOfRow(FCurrentRow);
}

int TNQueryPanel::RootOffset() const
{
    return FAppearance->Has(TQPAppearance::aoHideRootRow) ? 1 : 0;
}

// The query keeps its rows numbered between changes, so stepping through
// them costs no walk of the tree per key.
TFilterRow *TNQueryPanel::GetRowByNum(int rowNum) const
{
    if (!FActive)
        return nullptr;
    return FQuery->GetRowByNum(rowNum + RootOffset());
}

void TNQueryPanel::SetCurrentRowNum(int rowNum)
{
    TFilterRow *row = GetRowByNum(rowNum);
    TQueryRowView *view = row ? RowView(row) : nullptr;
    if (!view)
        return;
    const int first = view->FirstCurControl();
    const bool controlChanged = view->CurrentControlIndex() != first;
    view->SetCurrentControlIndex(first);
    if (row != FCurrentRow) {
        SetCurrentRow(row);
    } else if (controlChanged) {
        RefreshRow(row);
        AnnounceCurrent();
    }
    if (!FDestroying && !FQuery->Destroying())
        ScrollToCurrent();
}

void TNQueryPanel::IncCurRow()
{
    SetShowFrame(true);
    const int current = FCurrentRow ? FCurrentRow->RowNum() - RootOffset() : -1;
    const int last = FQuery->GetRowCount() - 1 - RootOffset();
    if (current < last)
        SetCurrentRowNum(current + 1);
}

void TNQueryPanel::DecCurRow()
{
    SetShowFrame(true);
    const int current = FCurrentRow ? FCurrentRow->RowNum() - RootOffset() : -1;
    if (current > 0)
        SetCurrentRowNum(current - 1);
}

void TNQueryPanel::CurrentRowDestroyed(TFilterRow *removed)
{
    const TFilterRow *inside = FCurrentRow;
    while (inside && inside != removed)
        inside = inside->Parent();
    if (!inside)
        return;
    // The tree is still whole: the row after the removed sub-tree, else the
    // one before it, as long as a row other than the root stays.
    TFilterRow *next = nullptr;
    if (removed->Parent()) {
        const int first = removed->RowNum();
        const int last = removed->IsBracket() ? static_cast<TFilterBracket *>(removed)->GetLastRowNum() : first;
        if (FQuery->GetRowCount() - (last - first + 1) > 1) {
            next = FQuery->GetRowByNum(last + 1);
            if (!next)
                next = FQuery->GetRowByNum(first - 1);
        }
    }
    // Not through SetCurrentRow: placing the rows now would place the ones
    // on their way out.
    FCurrentRow = nullptr;
    const auto found = next ? FViews.find(next) : FViews.end();
    if (found != FViews.end()) {
        FCurrentRow = next;
        TQueryRowView *view = found->second.get();
        if (view->CurrentControlIndex() < 0)
            view->SetCurrentControlIndex(view->FirstCurControl());
    }
    viewport()->update();
}

void TNQueryPanel::ScrollToCurrent()
{
    const TQueryRowView *view = FCurrentRow ? RowView(FCurrentRow) : nullptr;
    if (!view || !view->Visible())
        return;
    const TDropDownLabel *control = view->CurrentControl();
    // The focus frame stands 2 pixels around the control.
    const QRect shown = (control ? control->geometry() : view->Button()->geometry()).adjusted(-2, -2, 2, 2);
    const QSize port = viewport()->size();
    const int dy = ScrollDelta(shown.top(), shown.bottom() + 1, port.height());
    int dx = ScrollDelta(shown.left(), shown.right() + 1, port.width());
    // Right to left, a larger scroll value moves the rows to the right.
    if (layoutDirection() == Qt::RightToLeft)
        dx = -dx;
    if (dy != 0)
        verticalScrollBar()->setValue(verticalScrollBar()->value() + dy);
    if (dx != 0)
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() + dx);
}

void TNQueryPanel::AnnounceCurrent()
{
    if (!QAccessible::isActive() || !FCurrentRow || !hasFocus())
        return;
    if (QAccessibleInterface *item = QueryRowAccessible(this, FCurrentRow)) {
        QAccessibleEvent event(item, QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }
}

void TNQueryPanel::focusInEvent(QFocusEvent *event)
{
    QAbstractScrollArea::focusInEvent(event);
    // Coming in from the keyboard, the user needs a row to start from; a
    // click chooses its own.
    const Qt::FocusReason reason = event->reason();
    if (!FCurrentRow && FActive && FAppearance->Has(TQPAppearance::aoAllowKeyboard)
        && reason != Qt::MouseFocusReason && reason != Qt::PopupFocusReason) {
        if (TFilterRow *first = FirstRow()) {
            SetCurrentRow(first);
            return;
        }
    }
    AnnounceCurrent();
}

// --- row moves --------------------------------------------------------------------------------

bool TNQueryPanel::MoveCurRow(bool (TNQuery::*move)(TFilterRow *))
{
    TFilterRow *row = FCurrentRow;
    if (FReadOnly || !row || !(FQuery->*move)(row))
        return false;
    // The query told the panel what moved; the row keeps its widgets.
    if (FCurrentRow != row)
        SetCurrentRow(row);
    viewport()->update();
    NotifyChange();
    ScrollToCurrent();
    AnnounceCurrent();
    return true;
}

bool TNQueryPanel::MoveCurRowUp()
{
    return MoveCurRow(&TNQuery::MoveRowUp);
}

bool TNQueryPanel::MoveCurRowDown()
{
    return MoveCurRow(&TNQuery::MoveRowDown);
}

bool TNQueryPanel::MoveCurRowLeft()
{
    return MoveCurRow(&TNQuery::MoveRowLeft);
}

bool TNQueryPanel::MoveCurRowRight()
{
    return MoveCurRow(&TNQuery::MoveRowRight);
}

// --- keyboard ------------------------------------------------------------------------------------

bool TNQueryPanel::HandlesKey(int key, Qt::KeyboardModifiers modifiers) const
{
    const Qt::KeyboardModifiers mods = modifiers & ~Qt::KeypadModifier;
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return mods == Qt::NoModifier;
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Insert:
    case Qt::Key_Delete:
        return true;
    case Qt::Key_Z:
        return mods == Qt::ControlModifier || mods == (Qt::ControlModifier | Qt::ShiftModifier);
    case Qt::Key_Y:
    case Qt::Key_C:
    case Qt::Key_V:
        return mods == Qt::ControlModifier;
    default:
        return false;
    }
}

bool TNQueryPanel::LabelBusy() const
{
    if (QApplication::activePopupWidget() || viewport()->isAncestorOf(QApplication::focusWidget()))
        return true;
    const auto found = FCurrentRow ? FViews.find(FCurrentRow) : FViews.end();
    if (found != FViews.end())
        for (const TDropDownLabel *label : found->second->Controls())
            if (label->Dropped())
                return true;
    return false;
}

bool TNQueryPanel::KeyDown(int key, Qt::KeyboardModifiers modifiers)
{
    if (!FActive || !FAppearance->Has(TQPAppearance::aoAllowKeyboard) || LabelBusy() || !HandlesKey(key, modifiers))
        return false;
    const Qt::KeyboardModifiers mods = modifiers & ~Qt::KeypadModifier;
    const bool plain = mods == Qt::NoModifier;
    const bool ctrl = mods == Qt::ControlModifier;
    const TQueryRowView *view = FCurrentRow ? RowView(FCurrentRow) : nullptr;
    const bool rowShown = view && view->Visible();
    // Arrows point where the rows are drawn: right to left, Left goes on
    // along the sentence and Ctrl+Left indents.
    if (layoutDirection() == Qt::RightToLeft && (key == Qt::Key_Left || key == Qt::Key_Right))
        key = key == Qt::Key_Left ? Qt::Key_Right : Qt::Key_Left;

    if ((IsArrow(key) || key == Qt::Key_Delete || key == Qt::Key_Return || key == Qt::Key_Enter) && !rowShown)
        return true;
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        DropDownCurControl();
        break;
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (plain)
            MoveCurControl(key == Qt::Key_Right);
        else if (ctrl && key == Qt::Key_Right)
            MoveCurRowRight();
        else if (ctrl)
            MoveCurRowLeft();
        break;
    case Qt::Key_Up:
        if (plain)
            DecCurRow();
        else if (ctrl)
            MoveCurRowUp();
        break;
    case Qt::Key_Down:
        if (plain)
            IncCurRow();
        else if (ctrl)
            MoveCurRowDown();
        break;
    case Qt::Key_Insert:
        if (mods & Qt::AltModifier)
            PopupMenuForCurrentRow();
        else if (!FReadOnly)
            InsertCondition();
        break;
    case Qt::Key_Delete:
        if (ctrl && !FReadOnly)
            DeleteCurRow();
        break;
    case Qt::Key_Z:
    case Qt::Key_Y:
        if (FReadOnly)
            break;
        if (key == Qt::Key_Z && ctrl)
            Undo();
        else
            Redo();
        break;
    case Qt::Key_C:
        CopyCurrentRow();
        break;
    case Qt::Key_V:
        if (!FReadOnly)
            PasteRows();
        break;
    default:
        break;
    }
    return true;
}

void TNQueryPanel::keyPressEvent(QKeyEvent *event)
{
    if (KeyDown(event->key(), event->modifiers())) {
        event->accept();
        return;
    }
    QAbstractScrollArea::keyPressEvent(event);
}

bool TNQueryPanel::event(QEvent *event)
{
    // The panel's keys win over a host's shortcuts (an Edit menu's Undo,
    // Copy or Delete) while it has the focus.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (FActive && FAppearance->Has(TQPAppearance::aoAllowKeyboard) && !LabelBusy()
            && HandlesKey(key->key(), key->modifiers())) {
            event->accept();
            return true;
        }
    }
    return QAbstractScrollArea::event(event);
}

void TNQueryPanel::MoveCurControl(bool forward)
{
    SetShowFrame(true);
    TQueryRowView *view = RowView(FCurrentRow);
    const int index = forward ? view->NextCurControl() : view->PrevCurControl();
    if (index == view->CurrentControlIndex())
        return;
    view->SetCurrentControlIndex(index);
    RefreshRow(FCurrentRow);
    ScrollToCurrent();
    if (QAccessible::isActive() && hasFocus())
        if (TDropDownLabel *control = view->CurrentControl()) {
            QAccessibleEvent event(control, QAccessible::Focus);
            QAccessible::updateAccessibility(&event);
        }
}

void TNQueryPanel::DropDownCurControl()
{
    QPointer<TDropDownLabel> control = RowView(FCurrentRow)->CurrentControl();
    if (!control)
        return;
    FKeyboardDrop = control;
    try {
        control->DropDown();
    } catch (const Exception &e) {
        FKeyboardDrop = nullptr;
        // An editor that cannot open (a list its provider cannot fill) says
        // why at the label, as a click on it would.
        if (control)
            QToolTip::showText(control->mapToGlobal(QPoint(0, control->height())), e.Message(), control);
    }
}

// After the current row and its sub-tree; without a current row at the end.
void TNQueryPanel::InsertCondition()
{
    TFilterBracket *bracket = GetCurrentBracket();
    TSimpleCond *added = FCurrentRow && !FCurrentRow->IsBracket()
                             ? FQuery->AddConditionNum(bracket, FCurrentRow->RowNum() + 1, nullptr)
                             : FQuery->AddCondition(bracket, nullptr);
    NotifyChange();
    ScrollToCurrent();
    if (FCurrentRow == added)
        OpenFieldList(added);
}

void TNQueryPanel::DeleteCurRow()
{
    if (!FCurrentRow || !FCurrentRow->Parent() || !FQuery->DeleteRow(FCurrentRow))
        return;
    NotifyChange();
    ScrollToCurrent();
    AnnounceCurrent();
}

void TNQueryPanel::KeyboardDropEnded(const TDropDownLabel *label)
{
    if (!label || FKeyboardDrop != label)
        return;
    FKeyboardDrop = nullptr;
    // A click elsewhere that closed the label keeps the focus it gave.
    if (QApplication::mouseButtons() == Qt::NoButton && isVisible() && !FDestroying)
        setFocus(Qt::OtherFocusReason);
}

void TNQueryPanel::PopupMenuForCurrentRow()
{
    TFilterRow *row = FCurrentRow ? FCurrentRow : FQuery->Filter();
    const TQueryRowView *view = RowView(row);
    if (!view)
        return;
    const std::vector<TDropDownLabel *> controls = view->Controls();
    const int first = view->FirstCurControl();
    const QWidget *at = first >= 0 ? static_cast<const QWidget *>(controls[std::size_t(first)]) : view->Button();
    if (row->Parent()) {
        RowMenuPopup();
        RunMenu(FRowPopup, at, row);
    } else {
        EnableMenu(FMainPopup);
        RunMenu(FMainPopup, at, row);
    }
}

} // namespace vm20
