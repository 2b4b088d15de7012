// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Child processes that run a part of the test itself.
#ifndef TESTS_PROCESSES_H
#define TESTS_PROCESSES_H

#include <csignal>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

/// A forked child that ends with the action's result; killed and reaped with its owner.
class Child {
public:
    explicit Child(const std::function<int()>& action)
        : m_process(fork())
    {
        if (m_process == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL); // nothing outlives a test that was killed
            _exit(action());
        }
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child()
    {
        if (!m_status)
            kill(m_process, SIGKILL);
        wait();
    }

    pid_t process() const { return m_process; }
    /// @param options  WNOHANG does not wait
    /// @return the exit status, 128 + N for signal N, or nothing while it runs
    std::optional<int> wait(int options = 0)
    {
        int status = 0;
        if (!m_status && waitpid(m_process, &status, options) == m_process)
            m_status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
        return m_status;
    }

private:
    pid_t m_process;
    std::optional<int> m_status;
};

/// Runs a part of a test that must not touch this process, or may hang; its failures are the test's.
inline void apart(const std::function<void()>& part)
{
    const auto run = [&] {
        signal(SIGALRM, SIG_DFL); // which the main loop ignores
        alarm(30);
        part();
        return testing::Test::HasFailure() ? 1 : 0;
    };
    EXPECT_EQ(Child(run).wait(), 0);
}

#endif
