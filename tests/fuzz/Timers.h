/// The timers that the program and its platform have running, the toolkit's own left out.
#ifndef TESTS_FUZZ_TIMERS_H
#define TESTS_FUZZ_TIMERS_H

#include <cstddef>

namespace fuzz {

std::size_t runningTimers();

} // namespace fuzz

#endif
