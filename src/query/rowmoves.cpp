// The row moves and the row deletion a view offers on its current row. A
// moved row stays the same object, so a view keeps its widgets and its
// current row; observers hear one RowMoved per move.
#include "query/query.h"

namespace vm20 {

namespace {

// A non-root row of this query's tree, with its parent and index there.
bool Locate(const TNQuery &query, TFilterRow *row, TFilterBracket *&parent, int &index)
{
    if (!row || row->Query() != &query || !row->Parent())
        return false;
    parent = row->Parent();
    index = parent->IndexOf(row);
    return index >= 0;
}

} // namespace

void TNQuery::RowMoved(TFilterRow *row, TFilterBracket *oldParent, int oldIndex)
{
    if (FUpdating > 0 || FDestroying)
        return;
    FObservers.Notify([&](TNQueryObserver *observer) {
        observer->RowMoved(row, oldParent, oldIndex);
    });
}

void TNQuery::RowAdded(TFilterRow *row)
{
    if (FUpdating > 0 || FDestroying)
        return;
    FObservers.Notify([row](TNQueryObserver *observer) { observer->RowAdded(row); });
}

void TNQuery::TitlesChanged()
{
    if (FDestroying)
        return;
    if (FUpdating > 0) {
        FTitlesPending = true;
        return;
    }
    FObservers.Notify([](TNQueryObserver *observer) { observer->TitlesChanged(); });
}

bool TNQuery::MoveRowUp(TFilterRow *row)
{
    TFilterBracket *parent = nullptr;
    int index = -1;
    if (!Locate(*this, row, parent, index) || index == 0)
        return false;
    std::swap(parent->FRows[std::size_t(index) - 1], parent->FRows[std::size_t(index)]);
    InvalidateNumbers();
    RowMoved(row, parent, index);
    return true;
}

bool TNQuery::MoveRowDown(TFilterRow *row)
{
    TFilterBracket *parent = nullptr;
    int index = -1;
    if (!Locate(*this, row, parent, index) || index + 1 >= parent->GetRowCount())
        return false;
    std::swap(parent->FRows[std::size_t(index)], parent->FRows[std::size_t(index) + 1]);
    InvalidateNumbers();
    RowMoved(row, parent, index);
    return true;
}

bool TNQuery::MoveRowLeft(TFilterRow *row)
{
    TFilterBracket *parent = nullptr;
    int index = -1;
    if (!Locate(*this, row, parent, index) || parent->IsRoot())
        return false;
    TFilterBracket *grandParent = parent->Parent();
    const int parentIndex = grandParent->IndexOf(parent);
    grandParent->PutRow(parentIndex + 1, parent->TakeRow(index));
    RowMoved(row, parent, index);
    if (parent->GetRowCount() == 0)
        grandParent->DeleteRow(parentIndex);
    return true;
}

bool TNQuery::MoveRowRight(TFilterRow *row)
{
    TFilterBracket *parent = nullptr;
    int index = -1;
    if (!Locate(*this, row, parent, index))
        return false;
    TFilterRow *previous = index > 0 ? parent->GetRow(index - 1) : nullptr;
    if (previous && previous->IsBracket()) {
        auto *target = static_cast<TFilterBracket *>(previous);
        target->PutRow(target->GetRowCount(), parent->TakeRow(index));
    } else {
        // The new bracket arrives empty (never with the empty condition an
        // added bracket may get) in front of the row, which then moves in.
        auto *wrapper = static_cast<TFilterBracket *>(
            parent->InsertRow(index, std::make_unique<TFilterBracket>(this)));
        ++index;
        wrapper->PutRow(0, parent->TakeRow(index));
    }
    RowMoved(row, parent, index);
    return true;
}

bool TNQuery::DeleteRow(TFilterRow *row)
{
    TFilterBracket *parent = nullptr;
    int index = -1;
    if (!Locate(*this, row, parent, index))
        return false;
    parent->DeleteRow(index);
    if (FFilter->GetRowCount() == 0)
        FFilter->SetEnabled(true);
    return true;
}

} // namespace vm20
