#include "query/querybase.h"

#include "model/errors.h"
#include "query/queryitem.h"
#include "support/exception.h"
#include "support/nstrings.h"

#include <algorithm>

namespace vm20 {

// --- TNQueryBaseLink -----------------------------------------------------------

TNQueryBaseLink::~TNQueryBaseLink()
{
    SetQueryBase(nullptr);
}

void TNQueryBaseLink::SetQueryBase(TNQueryBase *value)
{
    if (FQueryBase == value)
        return;
    if (FQueryBase)
        FQueryBase->DelLink(this);
    if (value)
        value->AddLink(this);
}

// --- TNQueryBase: life -----------------------------------------------------------

TNQueryBase::TNQueryBase(QObject *parent)
    : QObject(parent)
{
}

TNQueryBase::~TNQueryBase()
{
    for (TNQueryBaseLink *link : FLinks)
        link->FQueryBase = nullptr;
    FLinks.clear();
    FQueries.clear();
}

void TNQueryBase::Open()
{
    if (FActive)
        return;
    DoBeforeOpen();
    try {
        LoadQueryList();
    } catch (...) {
        ClearQueries();
        throw;
    }
    ListChanged(qboListLoaded, -1);
    FActive = true;
    if (!FQueries.empty())
        SetItemIndex(0);
    DoAfterOpen();
}

void TNQueryBase::Close()
{
    if (!FActive)
        return;
    DoBeforeClose();
    FActive = false;
    FItemIndex = -1;
    ClearQueries();
    ListChanged(qboListCleared, -1);
    DoAfterClose();
}

// --- TNQueryBase: items ------------------------------------------------------------

void TNQueryBase::CheckIndex(int index) const
{
    if (index < 0 || index >= GetCount())
        throw ENQueryBaseError(qbeIndexOutOfBounds, ListIndexErrorText(index));
}

void TNQueryBase::SetItemIndex(int index)
{
    if (index == FItemIndex)
        return;
    CheckIndex(index);
    DoBeforeScroll();
    FItemIndex = index;
    IndexChanged();
    DoAfterScroll();
}

int TNQueryBase::AddItem(std::unique_ptr<TNQueryItem> item)
{
    if (!item)
        return -1;
    item->FQueryBase = this;
    FQueries.push_back(std::move(item));
    const int index = GetCount() - 1;
    ListChanged(qboItemAdded, index);
    QueryChanged(index);
    return index;
}

void TNQueryBase::AddLoadedItem(std::unique_ptr<TNQueryItem> item)
{
    if (!item)
        return;
    item->FQueryBase = this;
    FQueries.push_back(std::move(item));
}

void TNQueryBase::DeleteQuery(int index)
{
    CheckIndex(index);
    FQueries.erase(FQueries.begin() + index);
    ListChanged(qboItemDeleted, index);
    if (index != FItemIndex)
        return;
    const int count = GetCount();
    if (index >= count - 1) {
        if (index < 1)
            FItemIndex = -1;
        else
            SetItemIndex(index - 1);
    } else {
        SetItemIndex(index);   // still the current index: nothing happens
    }
}

int TNQueryBase::IndexByName(const QString &name) const
{
    for (int i = 0; i < GetCount(); ++i)
        if (SameText(FQueries[std::size_t(i)]->QueryName(), name))
            return i;
    return -1;
}

void TNQueryBase::ClearQueries()
{
    FItemIndex = -1;
    FQueries.clear();
}

TNQueryItem *TNQueryBase::GetQuery(int index) const
{
    if (index < 0 || index >= GetCount())
        throw EListError::IndexOutOfBounds(index);
    return FQueries[std::size_t(index)].get();
}

TNQueryItem *TNQueryBase::GetCurrentQuery() const
{
    // Deleting an item in front of the current one leaves the index as it
    // was, so it may point past the end.
    if (FItemIndex < 0 || FItemIndex >= GetCount())
        return nullptr;
    return FQueries[std::size_t(FItemIndex)].get();
}

// --- TNQueryBase: links ------------------------------------------------------------

void TNQueryBase::AddLink(TNQueryBaseLink *link)
{
    if (!link || link->FQueryBase == this)
        return;
    if (link->FQueryBase)
        link->FQueryBase->DelLink(link);
    FLinks.push_back(link);
    link->FQueryBase = this;
}

void TNQueryBase::DelLink(TNQueryBaseLink *link)
{
    const auto it = std::find(FLinks.begin(), FLinks.end(), link);
    if (it == FLinks.end())
        return;
    FLinks.erase(it);
    link->FQueryBase = nullptr;
}

bool TNQueryBase::NeedContent(QStringList &lines)
{
    const std::vector<TNQueryBaseLink *> links = FLinks;
    for (TNQueryBaseLink *link : links)
        if (link->GetQueryContent(lines))
            return true;
    return false;
}

bool TNQueryBase::GiveContent(const QStringList &lines)
{
    const std::vector<TNQueryBaseLink *> links = FLinks;
    for (TNQueryBaseLink *link : links)
        if (link->PutQueryContent(lines))
            return true;
    return false;
}

// A link may leave the store while it is told: the loop runs over a copy and
// skips links that are gone.
void TNQueryBase::ForEachLink(const std::function<void(TNQueryBaseLink *)> &call)
{
    if (FBaseUpdating)
        return;
    const std::vector<TNQueryBaseLink *> links = FLinks;
    for (TNQueryBaseLink *link : links)
        if (std::find(FLinks.begin(), FLinks.end(), link) != FLinks.end())
            call(link);
}

void TNQueryBase::IndexChanged()
{
    ForEachLink([](TNQueryBaseLink *link) { link->QueryIndexChanged(); });
}

void TNQueryBase::ListChanged(TQBOperation operation, int index)
{
    ForEachLink([operation, index](TNQueryBaseLink *link) { link->QueryListChanged(operation, index); });
}

void TNQueryBase::QueryChanged(int index)
{
    ForEachLink([index](TNQueryBaseLink *link) { link->QueryChanged(index); });
}

// --- TNQueryBase: events -------------------------------------------------------------

void TNQueryBase::DoBeforeOpen()
{
    if (BeforeOpen)
        BeforeOpen(this);
}

void TNQueryBase::DoAfterOpen()
{
    if (AfterOpen)
        AfterOpen(this);
}

void TNQueryBase::DoBeforeClose()
{
    if (BeforeClose)
        BeforeClose(this);
}

void TNQueryBase::DoAfterClose()
{
    if (AfterClose)
        AfterClose(this);
}

void TNQueryBase::DoBeforeScroll()
{
    if (BeforeScroll)
        BeforeScroll(this);
}

void TNQueryBase::DoAfterScroll()
{
    if (AfterScroll)
        AfterScroll(this);
}

} // namespace vm20
