#pragma once
// Holds a model's change notification while an entity is being built for it:
// the entity is news once it is in the model, not setter by setter before.
#include "model/dbstructure.h"

namespace vm20 {

class TQuietScope
{
public:
    explicit TQuietScope(TNCustomDBStructure &model) : FModel(model), FWasUpdating(model.Updating())
    {
        FModel.BeginUpdate();
    }
    ~TQuietScope() { Release(); }
    // Ends the hold early (once).
    void Release()
    {
        if (!FWasUpdating && !FReleased)
            FModel.EndUpdate();
        FReleased = true;
    }
    TQuietScope(const TQuietScope &) = delete;
    TQuietScope &operator=(const TQuietScope &) = delete;

private:
    TNCustomDBStructure &FModel;
    bool FWasUpdating;
    bool FReleased = false;
};

} // namespace vm20
