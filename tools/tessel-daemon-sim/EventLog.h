// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What the simulator tells its user: one line an event on standard output, errors on standard error.
#pragma once

#include <glib.h>

#include <functional>
#include <string>
#include <string_view>

namespace DaemonSim {

class EventLog {
public:
    /// @param timestamps  puts the seconds since now in front of every line
    explicit EventLog(bool timestamps);

    /// Prints one event and flushes it. Line ends and other control characters are escaped, so that an
    /// event is always exactly one line.
    void event(std::string_view text);

    /// Prints a problem on standard error.
    void error(std::string_view text);

    /// Has the prompt make way for each line and come back below it. Empty functions where there is none.
    void setPrompt(std::function<void()> erase, std::function<void()> show);

    /// @return the text between double quotes, with quotes and backslashes in it escaped.
    static std::string quoted(std::string_view text);

private:
    gint64 m_start;
    bool m_timestamps;
    std::function<void()> m_erasePrompt;
    std::function<void()> m_showPrompt;
};

} // namespace DaemonSim
