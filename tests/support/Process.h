// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A child process whose output is collected by GLib's main context.
#ifndef TESSEL_TESTS_PROCESS_H
#define TESSEL_TESTS_PROCESS_H

#include "Handles.h"
#include "Wait.h"

#include <optional>
#include <string>
#include <vector>

namespace tv {

/// Collects the lines that arrive on a pipe; owns its descriptor.
class LineReader {
public:
    void open(int descriptor);
    /// Whether lines are taken when they come. What nobody takes makes whoever writes wait.
    void listen(bool on);
    /// Takes in whatever has arrived, without waiting.
    void drain();
    const std::vector<std::string>& lines() const { return m_lines; }

private:
    static gboolean on_readable(GIOChannel* channel, GIOCondition condition, gpointer self);

    std::vector<std::string> m_lines;
    base::CHandle<GIOChannel, g_io_channel_unref> m_channel; ///< null when nothing can come any more
    Source m_source; // declared last: no callback outlives what it fills
};

/// Starts at construction; killed, and waited for, at the latest by the destructor. It also dies with the
/// test's process, so that a test that is stopped leaves nothing behind.
class Process {
public:
    /// @param arguments    the program (looked for in the caller's path) and its arguments
    /// @param environment  all of it, each "NAME=value"
    /// @throws std::runtime_error when it cannot be started
    Process(const std::vector<std::string>& arguments, const std::vector<std::string>& environment);
    virtual ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    int pid() const { return m_pid; }
    bool running() const { return !m_status; }
    /// @return the exit status, 128 + N when signal N ended it, nothing while it runs
    std::optional<int> status() const { return m_status; }
    /// @return its lines so far, those that have just arrived, too
    const std::vector<std::string>& output() const
    {
        m_output.drain();
        return m_output.lines();
    }
    const std::vector<std::string>& errors() const { return m_errors.lines(); }
    /// Whether somebody reads the program's standard error, as from the start.
    void listenToErrors(bool on) { m_errors.listen(on); }

    void signal(int number) const;
    /// Writes to the program's standard input, which stays open as long as this object.
    void type(const std::string& text) const;
    void tell(const std::string& line) const { type(line + "\n"); }
    /// @return the exit status, or nothing when it still runs after @p limit
    std::optional<int> waitForExit(Milliseconds limit = kLimit) const;

private:
    static void on_exit(GPid pid, gint waitStatus, gpointer self);

    GPid m_pid = 0;
    int m_input = -1;
    std::optional<int> m_status;
    mutable LineReader m_output;
    LineReader m_errors;
    Source m_watch;
};

/// Runs a helper program to its end. @return its output, nothing when it failed or took too long
std::optional<std::string> outputOf(
    const std::vector<std::string>& arguments, const std::vector<std::string>& environment);

} // namespace tv

#endif
