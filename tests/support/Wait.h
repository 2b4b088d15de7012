// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Waiting for conditions while GLib's default main context runs.
#ifndef TESSEL_TESTS_WAIT_H
#define TESSEL_TESTS_WAIT_H

#include <chrono>
#include <functional>

namespace tv {

using Milliseconds = std::chrono::milliseconds;

/// How long anything may take before a test gives up on it, on a machine that has more to do; less than the
/// 25 s after which a call over the bus fails by itself.
constexpr Milliseconds kLimit {20000};

/// Runs the main context until @p condition holds. @return false when @p limit passed first
bool waitUntil(const std::function<bool()>& condition, Milliseconds limit = kLimit);

/// Runs the main context for @p duration. @return false as soon as @p condition does not hold
bool stays(const std::function<bool()>& condition, Milliseconds duration);
/// Runs the main context for @p duration.
inline void pass(Milliseconds duration)
{
    stays([] { return true; }, duration);
}

} // namespace tv

#endif
