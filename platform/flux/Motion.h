// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// How often the toolkit asks what moves whether it has moved.
#pragma once

namespace orbis::flux {

/// Something turns as long as this lives, a step each kStep. Nothing needs to be looked at more often than
/// that, and each look wakes two threads. Main loop only.
class Turning {
public:
    static constexpr double kStep = 1.0 / 12; ///< seconds

    Turning();
    ~Turning();
    Turning(const Turning&) = delete;
    Turning& operator=(const Turning&) = delete;
};

/// Something moves from here on for as long as a motion lasts, and is to move smoothly.
void moveSmoothly();

} // namespace orbis::flux
