#pragma once
// Keeps one listener on the model its holder currently uses, so that the
// holder hears of entities about to be freed and of the model's end.
#include "model/dbstructure.h"
#include "model/modelobserver.h"

#include <QPointer>

#include <functional>

namespace vm20 {

class TModelWatch : public TNModelObserver
{
public:
    TModelWatch() = default;
    ~TModelWatch() override { Watch(nullptr); }
    TModelWatch(const TModelWatch &) = delete;
    TModelWatch &operator=(const TModelWatch &) = delete;

    void Watch(TNCustomDBStructure *model)
    {
        if (FModel == model)
            return;
        if (FModel)
            FModel->RemoveObserver(this);
        FModel = model;
        if (FModel)
            FModel->AddObserver(this);
    }

    // An entity of the model is about to be freed (Entity nullptr: every
    // entity of that kind).
    std::function<void(const TModelChange &entity)> OnDeleting;
    // The model is being destroyed; nothing of it may be kept.
    std::function<void()> OnDestroyed;

    void EntityDeleting(TNCustomDBStructure *model, const TModelChange &entity) override
    {
        (void)model;
        if (OnDeleting)
            OnDeleting(entity);
    }
    void ModelDestroyed(TNCustomDBStructure *model) override
    {
        (void)model;
        FModel = nullptr;
        if (OnDestroyed)
            OnDestroyed();
    }

private:
    QPointer<TNCustomDBStructure> FModel;
};

} // namespace vm20
