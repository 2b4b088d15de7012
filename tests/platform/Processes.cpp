#include "Processes.h"

#include <csignal>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

Child::Child(const std::function<int()>& action)
    : m_process(fork())
{
    if (m_process == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL); // nothing outlives a test that was killed
        _exit(action());
    }
}

Child::~Child()
{
    kill();
    wait();
}

void Child::kill() const
{
    if (m_process > 0 && !m_status)
        ::kill(m_process, SIGKILL);
}

std::optional<int> Child::collect(int options)
{
    int status = 0;
    if (!m_status && m_process > 0 && waitpid(m_process, &status, options) == m_process)
        m_status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return m_status;
}

std::optional<int> Child::poll()
{
    return collect(WNOHANG);
}

int Child::wait()
{
    return collect(0).value_or(-1);
}
