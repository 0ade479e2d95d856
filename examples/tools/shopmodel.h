#pragma once
// The sample shop model: imported from the shop database, then made fit for
// people (captions, groups by subject, calculated fields, pick lists and
// ready-made conditions).
#include "model/dbstructure.h"

namespace vm20 {

// Imports the model through `info` (attached to `model` for good) and curates
// it. Raises vm20::Exception when the database lacks a column the curation
// names, so that the script and the curation cannot drift apart unnoticed.
void BuildShopModel(TNCustomDBStructure &model, TNDBInfo &info);

// The curation alone, on a model just imported from the shop database.
void CurateShopModel(TNCustomDBStructure &model);

} // namespace vm20
