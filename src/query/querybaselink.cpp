#include "query/querybaselink.h"

#include "query/query.h"
#include "query/queryitem.h"

namespace vm20 {

void TNQPBaseLink::QueryChanged(int index)
{
    const TNQueryBase *base = QueryBase();
    if (!base || index != base->ItemIndex())
        return;
    if (const TNQueryItem *item = base->GetCurrentQuery()) {
        FQuery->Description() = item->Description();
        FQuery->SetQueryName(item->QueryName());
    }
}

void TNQPBaseLink::QueryIndexChanged()
{
    if (QueryBase() && QueryBase()->ItemIndex() != -1)
        FQuery->LoadCurBaseQuery();
}

void TNQPBaseLink::QueryListChanged(TQBOperation operation, int index)
{
    if (operation == qboItemDeleted && QueryBase() && index == QueryBase()->ItemIndex())
        FQuery->ClearAll();
}

bool TNQPBaseLink::GetQueryContent(QStringList &lines)
{
    FQuery->SaveToStrings(lines);
    return true;
}

bool TNQPBaseLink::PutQueryContent(const QStringList &lines)
{
    FQuery->LoadFromStrings(lines);
    return true;
}

// --- the query's side ------------------------------------------------------------

TNQueryBase *TNQuery::QueryBase() const
{
    return FBaseLink ? FBaseLink->QueryBase() : nullptr;
}

void TNQuery::SetQueryBase(TNQueryBase *value)
{
    if (QueryBase() == value)
        return;
    if (!FBaseLink)
        FBaseLink = std::make_unique<TNQPBaseLink>(this);
    FBaseLink->SetQueryBase(value);
}

// Reads the current item's storage directly rather than through the item's
// Load, which hands the text to the store's first link: with several queries
// on one store each must get the text itself.
void TNQuery::LoadCurBaseQuery()
{
    TNQueryItem *item = QueryBase() ? QueryBase()->GetCurrentQuery() : nullptr;
    if (!item)
        return;
    QStringList lines;
    item->LoadContent(lines);
    LoadFromStrings(lines);
}

} // namespace vm20
