#include "ui/dropdowncustomlistbox.h"

#include "ui/geometry.h"

#include <QGuiApplication>
#include <QListWidget>
#include <QScreen>
#include <QToolTip>
#include <QVBoxLayout>

namespace vm20 {

TDropDownCustomListBox::TDropDownCustomListBox(QWidget *parent)
    : TDropDownList(parent)
{
}

TDropDownCustomListBox::~TDropDownCustomListBox()
{
    delete FForm.data();
}

void TDropDownCustomListBox::SetUseForm(bool value)
{
    FUseForm = value;
}

void TDropDownCustomListBox::CreateDesktop()
{
    if (FUseForm) {
        if (!FForm) {
            FForm = new QWidget(window(), Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
            auto *layout = new QVBoxLayout(FForm);
            layout->setContentsMargins(0, 0, 0, 0);
        }
        FDesktop = FForm;
    } else {
        FDesktop = window();
    }
}

QWidget *TDropDownCustomListBox::ListParent() const
{
    return FDesktop.data();
}

QPoint TDropDownCustomListBox::ClientToDesktop(const QPoint &p) const
{
    const QWidget *from = parentWidget() ? parentWidget() : this;
    if (FUseForm)
        return from->mapToGlobal(p);
    return FDesktop ? from->mapTo(FDesktop.data(), p) : p;
}

int TDropDownCustomListBox::GetLBWidth(int minWidth, const QStringList &strings) const
{
    const QFontMetrics metrics(ListBox() ? ListBox()->font() : font());
    int widest = minWidth;
    for (const QString &s : strings)
        widest = std::max(widest, metrics.horizontalAdvance(s));
    return widest + 23;
}

void TDropDownCustomListBox::SetListSorted(bool value)
{
    if (value)
        ListBox()->sortItems();
}

int TDropDownCustomListBox::GetListItemHeight() const
{
    QListWidget *list = ListBox();
    if (list->count() > 0)
        return std::max(list->sizeHintForRow(0), 1);
    return QFontMetrics(list->font()).height() + 2;
}

void TDropDownCustomListBox::ShowControl()
{
    EnsureDefaultGroup();
    QListWidget *list = ListBox();
    list->clear();
    for (int i = 0; i < FItems.size(); ++i) {
        auto *row = new QListWidgetItem(FItems[i]);
        row->setData(Qt::UserRole, i);
        list->addItem(row);
    }
    SetListSorted(SortList());
    // The current item shows selected, so Enter alone keeps it.
    for (int row = 0; row < list->count(); ++row)
        if (list->item(row)->data(Qt::UserRole).toInt() == ItemIndex())
            list->setCurrentRow(row);
    PlaceList();
}

void TDropDownCustomListBox::PlaceList()
{
    QListWidget *list = ListBox();
    TListBoxPlacement p;
    p.labelTopLeft = ClientToDesktop(pos());
    p.labelWidth = width();
    p.textHeight = QFontMetrics(font()).height();
    p.list = QSize(GetLBWidth(width(), FItems), GetListItemHeight() * int(FItems.size()) + 4);
    p.useForm = FUseForm;
    p.rightToLeft = layoutDirection() == Qt::RightToLeft;
    if (FUseForm) {
        int smallest = 0;
        for (const QScreen *screen : QGuiApplication::screens())
            smallest = smallest == 0 ? screen->geometry().height() : std::min(smallest, screen->geometry().height());
        p.availableHeight = smallest > 0 ? smallest : 480;
    } else {
        p.availableHeight = FDesktop->height();
        p.availableWidth = FDesktop->width();
    }
    const QRect bounds = PlaceListBox(p);
    if (FUseForm) {
        FForm->setGeometry(bounds);
        FForm->show();
    } else {
        list->setGeometry(bounds);
    }
    list->show();
    list->raise();
    list->setFocus(Qt::PopupFocusReason);
}

void TDropDownCustomListBox::HideControl()
{
    if (QListWidget *list = ListBox())
        list->hide();
    if (FUseForm && FForm && FForm->isVisible())
        FForm->hide();
}

bool TDropDownCustomListBox::IsEditMode() const
{
    const QListWidget *list = ListBox();
    return list && list->isVisibleTo(list->parentWidget());
}

void TDropDownCustomListBox::BiDiModeChanged()
{
    if (QListWidget *list = ListBox())
        list->setLayoutDirection(layoutDirection());
}

void TDropDownCustomListBox::UpdateHint(const QPoint &pos)
{
    QListWidget *list = ListBox();
    const QListWidgetItem *item = list->itemAt(pos);
    const int index = item ? list->row(item) : -1;
    if (index == FPrevMouseMoveIndex)
        return;
    FPrevMouseMoveIndex = index;
    // Only a text the list cuts off needs a hint.
    const bool cut = item && list->fontMetrics().horizontalAdvance(item->text()) > list->viewport()->width() - 4;
    const QString hint = cut ? item->text() : QString();
    list->setToolTip(hint);
    if (hint.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(list->viewport()->mapToGlobal(pos), hint, list);
}

} // namespace vm20
