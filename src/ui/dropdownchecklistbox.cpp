#include "ui/dropdownchecklistbox.h"

#include "ui/nchecklistbox.h"
#include "support/nstrings.h"

namespace vm20 {
namespace {

bool ContainsText(const QStringList &list, const QString &text)
{
    return list.contains(text, Qt::CaseInsensitive);
}

} // namespace

TDropDownCheckListBox::TDropDownCheckListBox(QWidget *parent)
    : TDropDownListBox(parent)
{
}

TNCheckListBox *TDropDownCheckListBox::CheckListBox() const
{
    return static_cast<TNCheckListBox *>(ListBox());
}

QListWidget *TDropDownCheckListBox::NewListBox(QWidget *parent)
{
    auto *list = new TNCheckListBox(parent);
    list->SetMultiSelect(true);
    list->SetExtendedSelect(true);
    return list;
}

int TDropDownCheckListBox::GetLBWidth(int minWidth, const QStringList &strings) const
{
    return TDropDownListBox::GetLBWidth(minWidth, strings) + 20;
}

void TDropDownCheckListBox::ShowControl()
{
    TDropDownListBox::ShowControl();
    const QStringList checked = ComposeCommaText(Value());
    TNCheckListBox *list = CheckListBox();
    for (int row = 0; row < list->count(); ++row) {
        QListWidgetItem *item = list->item(row);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        const QString value = FValues.value(item->data(Qt::UserRole).toInt());
        item->setCheckState(ContainsText(checked, value) ? Qt::Checked : Qt::Unchecked);
    }
}

void TDropDownCheckListBox::AcceptInput()
{
    TNCheckListBox *list = CheckListBox();
    if (!list)
        return;
    QStringList values;
    QStringList texts;
    for (int row = 0; row < list->count(); ++row) {
        if (!list->Checked(row))
            continue;
        const int index = list->item(row)->data(Qt::UserRole).toInt();
        values.append(FValues.value(index));
        texts.append(FItems.value(index));
    }
    SetValue(ListToCommaText(values));
    SetCaption(ListToCommaText(texts));
}

void TDropDownCheckListBox::ValueChanged()
{
    QStringList texts;
    for (const QString &value : ComposeCommaText(Value())) {
        const int index = int(FValues.indexOf(value));
        if (index >= 0 && index < FItems.size())
            texts.append(FItems[index]);
    }
    SetCaption(ListToCommaText(texts));
}

void TDropDownCheckListBox::ListExit()
{
    DropUp(true);
}

} // namespace vm20
