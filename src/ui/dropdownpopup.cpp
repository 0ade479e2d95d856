#include "ui/dropdownpopup.h"

#include "ui/ddlabelerror.h"

#include <QPointer>

namespace vm20 {

TDropDownPopup::TDropDownPopup(QWidget *parent)
    : TDropDownList(parent)
{
}

TDropDownPopup::~TDropDownPopup()
{
    if (FMenu)
        FMenu->SetImages(nullptr);
}

void TDropDownPopup::SetMaxItemCount(int value)
{
    if (value < 0)
        throw EDDLabelError(QStringLiteral("Invalid item count per column: %1").arg(value));
    if (FMaxItemCount == value)
        return;
    FMaxItemCount = value;
    if (FMenu)
        FMenu->SetFitToScreen(value == 0);
}

void TDropDownPopup::CreateControl()
{
    if (FMenu)
        return;
    FMenu = std::make_unique<TNPopupMenu>();
    FMenu->SetFitToScreen(FMaxItemCount == 0);
    FMenu->SetBiDiMode(layoutDirection());
}

void TDropDownPopup::BiDiModeChanged()
{
    if (FMenu)
        FMenu->SetBiDiMode(layoutDirection());
}

void TDropDownPopup::BuildMenu()
{
    if (!FMenu)
        CreateControl();
    EnsureDefaultGroup();
    TNMenuItem &root = FMenu->Items();
    root.Clear();
    FMenu->SetImages(Images());
    // Column breaks count group headers and values apart, across groups.
    std::vector<TNMenuItem *> added;
    std::vector<bool> isGroup;
    for (int g = 0; g < FGroups.Count(); ++g) {
        const TItemGroup *group = FGroups.Items(g);
        TNMenuItem *level = &root;
        if (!group->GroupName().isEmpty()) {
            level = root.Add(group->GroupName());
            if (group->GroupName() != QLatin1String("-"))
                DoGetGroupImageIndex(group->GroupName(), level->ImageIndex);
            added.push_back(level);
            isGroup.push_back(true);
        }
        for (int index : group->Items) {
            TNMenuItem *item = level->Add(FItems[index]);
            if (!item->IsSeparator())
                DoGetItemImageIndex(group->GroupName(), FItems[index], item->ImageIndex);
            item->Tag = index;
            item->OnClick = [this](TNMenuItem *sender) { MenuClick(sender); };
            added.push_back(item);
            isGroup.push_back(false);
        }
    }
    const std::vector<bool> breaks = MaxItemCountBreaks(isGroup, FMaxItemCount);
    for (std::size_t i = 0; i < added.size(); ++i)
        added[i]->Break = breaks[i] ? mbBarBreak : mbNone;
}

void TDropDownPopup::ShowControl()
{
    BuildMenu();
    const bool rtl = layoutDirection() == Qt::RightToLeft;
    const QPoint local(x() + (rtl ? width() : 0), y() + height());
    const QPoint global = parentWidget() ? parentWidget()->mapToGlobal(local) : mapToGlobal(QPoint(0, height()));
    QPointer<TDropDownPopup> self(this);
    FMenu->Popup(global.x(), global.y());
    if (self && Dropped())
        DropUp(false);
}

void TDropDownPopup::HideControl()
{
    if (FMenu)
        FMenu->Close();
}

void TDropDownPopup::MenuClick(TNMenuItem *item)
{
    Guarded([this, item] {
        SetItemIndex(item->Tag);
        DropUp(true);
    });
}

} // namespace vm20
