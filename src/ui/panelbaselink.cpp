#include "ui/panelbaselink.h"

#include "query/query.h"
#include "query/querybaselink.h"
#include "query/queryitem.h"
#include "ui/querypanel.h"
#include "ui/resultfieldspanel.h"

namespace vm20 {

namespace {

TNQuery *QueryOf(const TNQueryBaseLink *link)
{
    if (const auto *panelLink = dynamic_cast<const TNPanelBaseLink *>(link))
        return panelLink->Query();
    if (const auto *queryLink = dynamic_cast<const TNQPBaseLink *>(link))
        return queryLink->Query();
    return nullptr;
}

} // namespace

TNPanelBaseLink::TNPanelBaseLink(TNQueryPanel *panel) : FQueryPanel(panel) {}

TNPanelBaseLink::TNPanelBaseLink(TNResultFieldsPanel *panel) : FResultPanel(panel) {}

TNQuery *TNPanelBaseLink::Query() const
{
    if (FQueryPanel)
        return FQueryPanel->Query();
    if (FResultPanel)
        return FResultPanel->Query();
    return nullptr;
}

TNQueryItem *TNPanelBaseLink::ShownItem() const
{
    // The pointer alone may outlive its item: it counts only while the store
    // still holds it.
    const TNQueryBase *base = QueryBase();
    if (!base || !FShownItem)
        return nullptr;
    for (int i = 0; i < base->GetCount(); ++i)
        if (base->GetQuery(i) == FShownItem)
            return FShownItem;
    return nullptr;
}

bool TNPanelBaseLink::Leads() const
{
    const TNQuery *query = Query();
    if (!query || !QueryBase())
        return false;
    bool earlier = true;
    for (const TNQueryBaseLink *link : QueryBase()->Links()) {
        if (link == this) {
            earlier = false;
            continue;
        }
        if (QueryOf(link) != query)
            continue;
        if (earlier || dynamic_cast<const TNQPBaseLink *>(link))
            return false;
    }
    return true;
}

void TNPanelBaseLink::QueryChanged(int index)
{
    const TNQueryBase *base = QueryBase();
    if (!base || index != base->ItemIndex())
        return;
    if (const TNQueryItem *item = base->GetCurrentQuery(); item && Leads()) {
        TNQuery *query = Query();
        query->Description() = item->Description();
        query->SetQueryName(item->QueryName());
    }
    // A result panel shows neither name nor description.
    if (FQueryPanel && FQueryPanel->Active())
        FQueryPanel->RefreshPanel();
}

void TNPanelBaseLink::QueryIndexChanged()
{
    if (!Leads())
        return;
    TNQuery *query = Query();
    if (TNQueryItem *shown = ShownItem()) {
        QStringList lines;
        query->SaveToStrings(lines);
        shown->SaveContent(lines);
    }
    FShownItem = nullptr;
    // Read from the storage here rather than through the item's Load, which
    // hands the text to the store's first link only: panels over other
    // queries must each get it.
    if (TNQueryItem *item = QueryBase()->GetCurrentQuery()) {
        QStringList lines;
        item->LoadContent(lines);
        query->LoadFromStrings(lines);
        query->Description() = item->Description();
        query->SetQueryName(item->QueryName());
        query->SetModified(false);
        FShownItem = item;
    }
}

void TNPanelBaseLink::QueryListChanged(TQBOperation operation, int index)
{
    if (operation == qboListCleared) {
        FShownItem = nullptr;
        return;
    }
    if (operation != qboItemDeleted || !QueryBase() || index != QueryBase()->ItemIndex())
        return;
    FShownItem = nullptr;
    if (Leads())
        Query()->ClearAll();
}

bool TNPanelBaseLink::GetQueryContent(QStringList &lines)
{
    TNQuery *query = Query();
    if (!query)
        return false;
    query->SaveToStrings(lines);
    return true;
}

bool TNPanelBaseLink::PutQueryContent(const QStringList &lines)
{
    TNQuery *query = Query();
    if (!query)
        return false;
    query->LoadFromStrings(lines);
    // Any item may have been loaded: never save this text into the item
    // shown before.
    FShownItem = nullptr;
    return true;
}

} // namespace vm20
