#include "Processes.h"

#include "StoreFixture.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int kReadable = S_IRUSR | S_IWUSR;

pid_t forkFor(const std::function<int()>& action)
{
    const pid_t process = fork();
    if (process == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL); // nothing outlives a test that was killed
        _exit(action());
    }
    return process;
}

pid_t spawnTool(Words arguments, posix_spawn_file_actions_t& actions)
{
    arguments.insert(arguments.begin(), ORBIS_SETTINGS_TOOL);
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    pid_t process = -1;
    if (posix_spawn(&process, ORBIS_SETTINGS_TOOL, &actions, nullptr, pointers.data(), environ) != 0)
        process = -1;
    posix_spawn_file_actions_destroy(&actions);
    return process;
}

pid_t spawnToolInto(const Words& arguments, int& reader)
{
    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC) != 0)
        return -1;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    const pid_t process = spawnTool(arguments, actions);
    close(ends[1]);
    reader = ends[0];
    return process;
}

} // namespace

Child::Child(const std::function<int()>& action)
    : m_process(forkFor(action))
{
}

Child::~Child()
{
    signal(SIGKILL);
    wait();
}

void Child::signal(int number) const
{
    if (m_process > 0 && !m_status)
        kill(m_process, number);
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

ToolResult runTool(const Words& arguments, const std::string& folder)
{
    const std::string output = folder + "/output";
    const std::string errors = folder + "/errors";
    constexpr int kFlags = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(), kFlags, kReadable);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors.c_str(), kFlags, kReadable);
    Child child(spawnTool(arguments, actions));
    const int status = child.wait();
    return {status, contentsOf(output), contentsOf(errors)};
}

ToolWatch::ToolWatch(Words keys)
    : m_child((keys.insert(keys.begin(), "watch"), spawnToolInto(keys, m_reader)))
{
}

std::optional<std::string> ToolWatch::readLine(int milliseconds)
{
    while (m_buffer.find('\n') == std::string::npos) {
        pollfd reader = {m_reader, POLLIN, 0};
        char bytes[4096];
        ssize_t count = -1;
        if (::poll(&reader, 1, milliseconds) > 0)
            count = read(m_reader, bytes, sizeof bytes);
        if (count <= 0)
            return std::nullopt;
        m_buffer.append(bytes, static_cast<size_t>(count));
    }
    const size_t end = m_buffer.find('\n');
    std::string line = m_buffer.substr(0, end);
    m_buffer.erase(0, end + 1);
    return line;
}

void ToolWatch::closeReader()
{
    if (m_reader >= 0)
        close(m_reader);
    m_reader = -1;
}

StandardErrorTo::StandardErrorTo(int descriptor)
    : m_saved(fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3))
{
    fflush(stderr);
    dup2(descriptor, STDERR_FILENO);
}

StandardErrorTo::~StandardErrorTo()
{
    fflush(stderr);
    dup2(m_saved, STDERR_FILENO);
    close(m_saved);
}
