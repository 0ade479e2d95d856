#include "ui/dropdownlistbox.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QLayout>
#include <QListWidget>
#include <QMouseEvent>

namespace vm20 {

TDropDownListBox::TDropDownListBox(QWidget *parent)
    : TDropDownCustomListBox(parent)
{
}

TDropDownListBox::~TDropDownListBox()
{
    if (FListBox) {
        FListBox->removeEventFilter(this);
        FListBox->viewport()->removeEventFilter(this);
    }
    delete FListBox.data();
}

QListWidget *TDropDownListBox::NewListBox(QWidget *parent)
{
    return new QListWidget(parent);
}

void TDropDownListBox::CreateControl()
{
    CreateDesktop();
    if (FListBox) {
        if (FListBox->parentWidget() != ListParent())
            FListBox->setParent(ListParent());
    } else {
        FListBox = NewListBox(ListParent());
        FListBox->setUniformItemSizes(true);
        FListBox->setFrameShape(QFrame::Box);
        FListBox->setLineWidth(1);
        FListBox->setMouseTracking(true);
        FListBox->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        FListBox->installEventFilter(this);
        FListBox->viewport()->installEventFilter(this);
        FListBox->resize(0, 0);
    }
    FListBox->setLayoutDirection(layoutDirection());
    FListBox->setFont(EditorFont());
    if (UseForm() && ListParent()->layout() && ListParent()->layout()->indexOf(FListBox) < 0)
        ListParent()->layout()->addWidget(FListBox);
    FListBox->hide();
    FPrevMouseMoveIndex = -1;
}

void TDropDownListBox::AcceptInput()
{
    const QList<QListWidgetItem *> selected = FListBox ? FListBox->selectedItems() : QList<QListWidgetItem *>();
    QListWidgetItem *row = FListBox && FListBox->currentItem() && FListBox->currentItem()->isSelected()
                               ? FListBox->currentItem()
                               : selected.value(0);
    if (row)
        SetItemIndex(row->data(Qt::UserRole).toInt());
}

void TDropDownListBox::ListExit()
{
    HideControl();
}

bool TDropDownListBox::eventFilter(QObject *watched, QEvent *event)
{
    if (!FListBox || (watched != FListBox && watched != FListBox->viewport()))
        return TDropDownCustomListBox::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::KeyPress: {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Escape) {
            Guarded([this] { DropUp(false); });
            return true;
        }
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            Guarded([this] { DropUp(true); });
            return true;
        }
        return false;
    }
    case QEvent::FocusOut:
        if (watched == FListBox && Dropped() && IsEditMode()
            && static_cast<QFocusEvent *>(event)->reason() != Qt::PopupFocusReason)
            Guarded([this] { ListExit(); });
        return false;
    case QEvent::MouseButtonPress:
        if (watched == FListBox->viewport() && ClickPicks()) {
            const QPoint at = static_cast<QMouseEvent *>(event)->position().toPoint();
            if (QListWidgetItem *row = FListBox->itemAt(at))
                FListBox->setCurrentItem(row);
            Guarded([this] { DropUp(true); });
            return true;
        }
        return false;
    case QEvent::MouseMove:
        if (watched == FListBox->viewport())
            UpdateHint(static_cast<QMouseEvent *>(event)->position().toPoint());
        return false;
    default:
        return false;
    }
}

} // namespace vm20
