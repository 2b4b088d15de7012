/// A child process whose output is collected by GLib's main context.
#ifndef TESSEL_TESTS_PROCESS_H
#define TESSEL_TESTS_PROCESS_H

#include "Handles.h"
#include "Wait.h"

#include <optional>
#include <string>
#include <vector>

namespace tv {

/// Collects the lines that arrive on a pipe or socket; owns its descriptor.
class LineReader {
public:
    LineReader() = default;
    ~LineReader() { close(); }
    LineReader(const LineReader&) = delete;
    LineReader& operator=(const LineReader&) = delete;

    void open(int descriptor);
    /// Whether lines are taken when they come. What nobody takes makes whoever writes wait.
    void listen(bool on);
    /// Takes in whatever has arrived, without waiting.
    void drain();
    bool isAtEnd() const { return m_descriptor < 0; }
    const std::vector<std::string>& lines() const { return m_lines; }

private:
    static gboolean on_readable(gint descriptor, GIOCondition condition, gpointer self);
    void take(const char* bytes, size_t count);
    void close();

    std::vector<std::string> m_lines;
    int m_descriptor = -1;
    std::string m_rest; ///< the line that has not ended yet
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
    const std::vector<std::string>& output() const { return m_output.lines(); }
    const std::vector<std::string>& errors() const { return m_errors.lines(); }
    /// Whether somebody reads the program's standard error, as from the start.
    void listenToErrors(bool on) { m_errors.listen(on); }

    void signal(int number) const;
    /// Writes a line to the program's standard input, which stays open as long as this object.
    void tell(const std::string& line) const;
    /// @return the exit status, or nothing when it still runs after @p limit
    std::optional<int> waitForExit(Milliseconds limit = kLimit) const;

private:
    static void on_exit(GPid pid, gint waitStatus, gpointer self);

    GPid m_pid = 0;
    int m_input = -1;
    std::optional<int> m_status;
    LineReader m_output;
    LineReader m_errors;
    Source m_watch;
};

/// Runs a helper program to its end. @return its output, nothing when it failed or took too long
std::optional<std::string> outputOf(
    const std::vector<std::string>& arguments, const std::vector<std::string>& environment);

} // namespace tv

#endif
