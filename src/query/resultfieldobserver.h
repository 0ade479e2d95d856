#pragma once
// Listeners of a result column list. Any number may be attached; each is
// told in the order it was attached and may attach or detach listeners while
// it is being told.
//
// Contract, as a view over the columns sees it (indexes are list positions):
//  - FieldInserted(i) after a column was put at i (Add, Insert, New, the
//    AddBy... and InsertBy... calls, NewResultField).
//  - FieldRemoving(i) before the column at i is taken out and freed; it is
//    still intact. A column that loses its last model field because that
//    field is deleted from the model is removed this way.
//  - FieldMoved(from, to) after Move: the column now sits at `to`.
//  - FieldChanged(i) after a property of the column at i changed (caption,
//    alias, formula, sorting, sort order) or one of its fields was dropped.
//  - Reset() when the whole list may have changed: Clear, and the outermost
//    EndUpdate of a batch (a query text or SQL load, Assign). Inside
//    BeginUpdate/EndUpdate no other notification is sent.
// The list's OnChange event is raised as before, after the listeners.
namespace vm20 {

class TRFieldListObserver
{
public:
    virtual ~TRFieldListObserver() = default;
    virtual void FieldInserted(int index) { (void)index; }
    virtual void FieldRemoving(int index) { (void)index; }
    virtual void FieldMoved(int from, int to)
    {
        (void)from;
        (void)to;
    }
    virtual void FieldChanged(int index) { (void)index; }
    virtual void Reset() {}
};

} // namespace vm20
