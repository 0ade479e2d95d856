#include "ui/menuitem.h"

namespace vm20 {

TNMenuItem *TNMenuItem::Add(const QString &caption)
{
    FItems.push_back(std::make_unique<TNMenuItem>(caption));
    FItems.back()->FParent = this;
    return FItems.back().get();
}

void TNMenuItem::ClearBreaks()
{
    for (const auto &item : FItems) {
        item->Break = mbNone;
        item->ClearBreaks();
    }
}

} // namespace vm20
