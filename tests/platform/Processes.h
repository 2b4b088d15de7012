/// Child processes that run a part of the test itself.
#ifndef TESTS_PROCESSES_H
#define TESTS_PROCESSES_H

#include <functional>
#include <optional>
#include <sys/types.h>

/// A forked child that ends with the action's result; killed and reaped with its owner.
class Child {
public:
    explicit Child(const std::function<int()>& action);
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child();

    pid_t process() const { return m_process; }
    void kill() const;
    /// @return the exit status, 128 + N for signal N, or nothing while it runs
    std::optional<int> poll();
    int wait();

private:
    std::optional<int> collect(int options);
    pid_t m_process;
    std::optional<int> m_status;
};

#endif
