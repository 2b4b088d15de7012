/// Child processes of the tests.
#ifndef TESTS_PROCESSES_H
#define TESTS_PROCESSES_H

#include <functional>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

using Words = std::vector<std::string>;

/// A forked child that ends with the action's result; killed and reaped with its owner.
class Child {
public:
    explicit Child(const std::function<int()>& action);
    explicit Child(pid_t process)
        : m_process(process)
    {
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child();

    pid_t process() const { return m_process; }
    void signal(int number) const;
    /// @return the exit status, 128 + N for signal N, or nothing while it runs
    std::optional<int> poll();
    int wait();

private:
    std::optional<int> collect(int options);
    pid_t m_process;
    std::optional<int> m_status;
};

struct ToolResult {
    int status = -1;
    std::string output;
    std::string errors;
};

/// Runs orbis-settings to its end. @param folder  for the captured outputs
ToolResult runTool(const Words& arguments, const std::string& folder);

/// A running "orbis-settings watch" and the reading end of its output.
class ToolWatch {
public:
    explicit ToolWatch(Words keys);
    ToolWatch(const ToolWatch&) = delete;
    ToolWatch& operator=(const ToolWatch&) = delete;
    ~ToolWatch() { closeReader(); }

    /// @return the next line, or nothing when none comes in time
    std::optional<std::string> readLine(int milliseconds = 10000);
    void closeReader();
    Child& child() { return m_child; }

private:
    int m_reader = -1;
    std::string m_buffer;
    Child m_child;
};

/// Standard error goes to another descriptor while this lives.
class StandardErrorTo {
public:
    explicit StandardErrorTo(int descriptor);
    StandardErrorTo(const StandardErrorTo&) = delete;
    StandardErrorTo& operator=(const StandardErrorTo&) = delete;
    ~StandardErrorTo();

private:
    int m_saved;
};

#endif
