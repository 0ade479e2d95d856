#pragma once
// Listeners of a data model. Any number may be attached; each is told of
// every change in the order it was attached, and may attach or detach
// listeners (itself included) while it is being told.
//
// Contract, as a view over the model sees it:
//  - ModelChanged(model, change) after every change that Changed() signals,
//    unless BeginUpdate is in effect (the batch signals once, with mckAll,
//    when its caller calls Changed()). change.Kind says what kind of entity
//    changed (mckAll when several kinds or the whole model did: a load,
//    ClearStructure, a rebuild from the provider); change.Entity names the
//    entity when one did (a TDSTable*, TDSField*, TDSFieldGroup*, TDSLink*,
//    TDSOperator* or TDSCondition*), else nullptr. The host's OnChange is
//    raised at the same moment, after the listeners.
//  - EntityDeleting(model, entity) before a table, field, link, operator or
//    predefined condition is freed, while it is still intact and still in
//    the model's lists. Queries over the model answer it by dropping their
//    references (conditions fall back to the unrecognized placeholders,
//    result columns drop the field). A ModelChanged follows once the entity
//    is gone. Entities freed by clearing the whole model are announced one by
//    one the same way before the single ModelChanged(mckAll).
//  - ModelDestroyed(model) once, at the start of the model's destructor; the
//    model is still intact but must not be kept.

namespace vm20 {

class TNCustomDBStructure;

enum TModelChangeKind {
    mckAll,
    mckTables,
    mckFields,
    mckGroups,
    mckLinks,
    mckOperators,
    mckConditions,
    mckOptions
};

struct TModelChange
{
    TModelChangeKind Kind = mckAll;
    const void *Entity = nullptr;
};

class TNModelObserver
{
public:
    virtual ~TNModelObserver() = default;
    virtual void ModelChanged(TNCustomDBStructure *model, const TModelChange &change)
    {
        (void)model;
        (void)change;
    }
    virtual void EntityDeleting(TNCustomDBStructure *model, const TModelChange &entity)
    {
        (void)model;
        (void)entity;
    }
    virtual void ModelDestroyed(TNCustomDBStructure *model) { (void)model; }
};

} // namespace vm20
