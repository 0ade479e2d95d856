#pragma once
// One entry of a pop-up menu: a command, a separator ("-") or a sub-menu.
#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace vm20 {

enum TMenuBreak : int { mbNone, mbBreak, mbBarBreak };

class TNMenuItem
{
public:
    TNMenuItem() = default;
    explicit TNMenuItem(QString caption) : Caption(std::move(caption)) {}

    // Drawn as written: "&" marks no accelerator.
    QString Caption;
    int ImageIndex = -1;
    int Tag = 0;
    // Whether this item starts a new column, and with a bar before it.
    TMenuBreak Break = mbNone;
    std::function<void(TNMenuItem *Sender)> OnClick;

    TNMenuItem *Add(const QString &caption);
    int Count() const { return int(FItems.size()); }
    TNMenuItem *Items(int index) const { return FItems.at(std::size_t(index)).get(); }
    TNMenuItem *Parent() const { return FParent; }
    void Clear() { FItems.clear(); }
    bool IsSeparator() const { return Caption == QLatin1String("-"); }
    // Removes every break from this level and all levels below.
    void ClearBreaks();

private:
    std::vector<std::unique_ptr<TNMenuItem>> FItems;
    TNMenuItem *FParent = nullptr;
};

} // namespace vm20
