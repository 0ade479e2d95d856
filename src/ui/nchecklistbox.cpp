#include "ui/nchecklistbox.h"

#include <QKeyEvent>

namespace vm20 {

TNCheckListBox::TNCheckListBox(QWidget *parent)
    : QListWidget(parent)
{
    ApplySelectionMode();
}

void TNCheckListBox::SetMultiSelect(bool value)
{
    if (FMultiSelect == value)
        return;
    FMultiSelect = value;
    ApplySelectionMode();
}

void TNCheckListBox::SetExtendedSelect(bool value)
{
    if (FExtendedSelect == value)
        return;
    FExtendedSelect = value;
    ApplySelectionMode();
}

void TNCheckListBox::ApplySelectionMode()
{
    if (!FMultiSelect)
        setSelectionMode(SingleSelection);
    else
        setSelectionMode(FExtendedSelect ? ExtendedSelection : MultiSelection);
}

bool TNCheckListBox::Checked(int row) const
{
    const QListWidgetItem *it = item(row);
    return it && it->checkState() == Qt::Checked;
}

void TNCheckListBox::SetChecked(int row, bool value)
{
    if (QListWidgetItem *it = item(row))
        it->setCheckState(value ? Qt::Checked : Qt::Unchecked);
}

void TNCheckListBox::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Space || event->modifiers() != Qt::NoModifier)
        return QListWidget::keyPressEvent(event);
    const int current = currentRow();
    for (int row = 0; row < count(); ++row)
        if (row != current && item(row)->isSelected())
            SetChecked(row, !Checked(row));
    if (current >= 0)
        SetChecked(current, !Checked(current));
    event->accept();
}

} // namespace vm20
