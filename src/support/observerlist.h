#pragma once
// The listeners of one notifier. A listener may add or remove listeners
// (itself included) while it is being told: a removed one is not told again,
// and one added during a notification hears only the next one. Notifications
// may nest.
#include <algorithm>
#include <cstddef>
#include <vector>

namespace vm20 {

template <class T>
class TObserverList
{
public:
    void Add(T *observer)
    {
        if (observer && std::find(FItems.begin(), FItems.end(), observer) == FItems.end())
            FItems.push_back(observer);
    }

    void Remove(T *observer)
    {
        const auto it = std::find(FItems.begin(), FItems.end(), observer);
        if (it == FItems.end())
            return;
        if (FDepth > 0) {
            // Slots stay put while someone walks the list.
            *it = nullptr;
            FHoles = true;
        } else {
            FItems.erase(it);
        }
    }

    bool Empty() const { return FItems.empty(); }

    template <class F>
    void Notify(F &&call)
    {
        if (FItems.empty())
            return;
        TWalk walk(*this);
        const std::size_t count = FItems.size();
        for (std::size_t i = 0; i < count; ++i)
            if (T *observer = FItems[i])
                call(observer);
    }

private:
    struct TWalk
    {
        explicit TWalk(TObserverList &list) : List(list) { ++List.FDepth; }
        ~TWalk()
        {
            if (--List.FDepth == 0 && List.FHoles) {
                std::erase(List.FItems, nullptr);
                List.FHoles = false;
            }
        }
        TWalk(const TWalk &) = delete;
        TWalk &operator=(const TWalk &) = delete;
        TObserverList &List;
    };

    std::vector<T *> FItems;
    int FDepth = 0;
    bool FHoles = false;
};

} // namespace vm20
