// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A Wayland compositor without hardware.
#ifndef TESSEL_TESTS_WESTON_H
#define TESSEL_TESTS_WESTON_H

#include "TvBox.h"

namespace tv {

class Weston {
public:
    /// Programs that @p box starts from now on are shown by the compositor, which begins with its screen on.
    /// @param idleSeconds  after so long without a key its screen goes off; 0: never
    /// @param inAWindow    on the X display of the tests, which sends it keys
    /// @throws std::runtime_error when it does not start
    Weston(TvBox& box, int idleSeconds, bool inAWindow = false);
    /// Takes the socket away, too: whoever starts the next one waits for it.
    ~Weston() { std::filesystem::remove(m_socket); }
    Weston(const Weston&) = delete;
    Weston& operator=(const Weston&) = delete;

    const Process& process() const { return *m_process; }

private:
    std::filesystem::path m_socket;
    std::unique_ptr<Process> m_process;
};

} // namespace tv

#endif
