// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Chance that is the same everywhere: what a seed brings must not depend on a library's distributions.
#ifndef TESSEL_TESTS_RANDOM_H
#define TESSEL_TESTS_RANDOM_H

#include <random>
#include <string>

namespace monkey {

class Random {
public:
    explicit Random(uint64_t seed)
        : m_numbers(seed)
    {
    }

    /// @return 0 to @p end - 1; @p end is at least 1
    size_t below(size_t end) { return m_numbers() % end; }
    bool chance(size_t percent) { return below(100) < percent; }
    template <typename List>
    auto& pick(const List& list)
    {
        return list[below(std::size(list))];
    }
    std::string numberBelow(size_t end) { return std::to_string(below(end)); }

private:
    std::mt19937_64 m_numbers;
};

} // namespace monkey

#endif
