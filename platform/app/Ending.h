// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// How the process ends when something outside asks for it, or takes its ground away.
///
/// SIGTERM, SIGINT, SIGHUP and SIGQUIT end the loop the orderly way. A callback that blocks would keep them
/// waiting, so each also starts a clock: when the end has not come by then, the process is ended on the spot,
/// with its traces removed. The same clock bounds what comes after the loop.
#pragma once

#include <string>

namespace orbis::app {

/// Holds the signals while it lives. One at a time; main loop only.
class Ending {
public:
    /// Until the loop can serve a signal, one removes the traces and ends the process by itself, as it does
    /// with any program that has not begun.
    /// @param application  whom the last message names
    explicit Ending(const std::string& application);
    ~Ending();
    Ending(const Ending&) = delete;
    Ending& operator=(const Ending&) = delete;

    /// From here on the loop is told first. To be called after ecore_init(), which takes the signals over.
    void letLoopServe();

    /// The loop has ended: the rest may take about a second.
    /// @param status  with which the process ends when it takes longer
    void limitTheRest(int status);

    /// @return whether one of the signals has come
    static bool isAskedFor();

    /// Ends the process at once: one line on standard error, the traces removed, nothing else of it run. May
    /// be called from a signal handler, and without an Ending.
    [[noreturn]] static void now(int status, const char* reason) noexcept;
};

} // namespace orbis::app
