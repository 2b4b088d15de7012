/// What the simulator tells its user: one line an event on standard output, errors on standard error.
#pragma once

#include <glib.h>

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

    /// Shows the prompt, and again below every later line, until hidePrompt().
    void showPrompt();
    void hidePrompt() { m_prompt = false; }

    /// @return the text between double quotes, with quotes and backslashes in it escaped.
    static std::string quoted(std::string_view text);

private:
    gint64 m_start;
    bool m_timestamps;
    bool m_prompt = false;
};

} // namespace DaemonSim
