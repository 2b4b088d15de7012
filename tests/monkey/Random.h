/// Chance that is the same everywhere: what a seed brings must not depend on a library's distributions.
#ifndef TESSEL_TESTS_RANDOM_H
#define TESSEL_TESTS_RANDOM_H

#include <cstddef>
#include <cstdint>
#include <string>

namespace monkey {

class Random {
public:
    explicit Random(uint64_t seed)
        : m_state(seed)
    {
    }

    /// @return 0 to @p end - 1; @p end is at least 1
    size_t below(size_t end) { return static_cast<size_t>(next() % end); }
    bool chance(size_t percent) { return below(100) < percent; }
    template <typename List>
    auto& pick(const List& list)
    {
        return list[below(std::size(list))];
    }
    std::string numberBelow(size_t end) { return std::to_string(below(end)); }

private:
    /// splitmix64
    uint64_t next()
    {
        uint64_t mixed = m_state += 0x9e3779b97f4a7c15U;
        mixed = (mixed ^ (mixed >> 30U)) * 0xbf58476d1ce4e5b9U;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94d049bb133111ebU;
        return mixed ^ (mixed >> 31U);
    }

    uint64_t m_state;
};

} // namespace monkey

#endif
