/// Lets allocations through new fail.
#pragma once

#include <cstddef>

namespace memory {

/// What happens to the allocations of one thread.
struct Plan {
    std::size_t least = 0; ///< bytes; smaller ones succeed
    int left = -1; ///< how many succeed before one fails; negative: all
    bool goesOn = false; ///< whether all that follow fail, too
    int failures = 0; ///< so far
};

/// The calling thread's own.
Plan& plan();

} // namespace memory
