#pragma once
// A small bit set over an enumeration with at most 64 members, for the
// library's sets of field types, SQL options, operator groups and link types.
#include <cstdint>
#include <initializer_list>

namespace vm20 {

template <typename E>
class TSet
{
public:
    constexpr TSet() = default;
    constexpr TSet(std::initializer_list<E> members)
    {
        for (E m : members)
            include(m);
    }
    static constexpr TSet fromMask(std::uint64_t mask)
    {
        TSet s;
        s.FMask = mask;
        return s;
    }

    constexpr bool contains(E m) const { return inRange(m) && (FMask >> bit(m)) & 1u; }
    constexpr void include(E m)
    {
        if (inRange(m))
            FMask |= std::uint64_t(1) << bit(m);
    }
    constexpr void exclude(E m)
    {
        if (inRange(m))
            FMask &= ~(std::uint64_t(1) << bit(m));
    }
    constexpr TSet &operator+=(const TSet &o) { FMask |= o.FMask; return *this; }
    constexpr TSet &operator-=(const TSet &o) { FMask &= ~o.FMask; return *this; }
    constexpr TSet operator+(const TSet &o) const { return fromMask(FMask | o.FMask); }
    constexpr TSet operator-(const TSet &o) const { return fromMask(FMask & ~o.FMask); }
    constexpr TSet operator*(const TSet &o) const { return fromMask(FMask & o.FMask); }
    constexpr bool operator==(const TSet &o) const = default;
    constexpr bool empty() const { return FMask == 0; }
    constexpr std::uint64_t mask() const { return FMask; }

private:
    static constexpr int bit(E m) { return static_cast<int>(m); }
    static constexpr bool inRange(E m) { return bit(m) >= 0 && bit(m) < 64; }
    std::uint64_t FMask = 0;
};

} // namespace vm20
