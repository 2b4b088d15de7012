// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Whether the main loop is about to end.
#pragma once

namespace orbis::flux {

/// Notes that the end of the main loop was asked for, by the application or by a signal: the events that were
/// read before are delivered all the same. One at a time; made after the toolkit's start. Main loop only.
class LoopEnd {
public:
    LoopEnd();
    LoopEnd(const LoopEnd&) = delete;
    LoopEnd& operator=(const LoopEnd&) = delete;

    bool isAskedFor() const;
};

} // namespace orbis::flux
