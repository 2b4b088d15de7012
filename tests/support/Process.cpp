#include "Process.h"

#include <glib-unix.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <stdexcept>

#include <sys/prctl.h>
#include <sys/wait.h>

namespace tv {

namespace {

std::vector<char*> pointers(const std::vector<std::string>& texts)
{
    std::vector<char*> result;
    for (const std::string& text : texts)
        result.push_back(const_cast<char*>(text.c_str()));
    result.push_back(nullptr);
    return result;
}

void dieWithParent(gpointer /*data*/)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}

} // namespace

void LineReader::open(int descriptor)
{
    m_descriptor = descriptor;
    g_unix_set_fd_nonblocking(descriptor, TRUE, nullptr);
    listen(true);
}

void LineReader::listen(bool on)
{
    constexpr auto kAnything = static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR);
    m_source =
        on && !isAtEnd() ? Source(g_unix_fd_add(m_descriptor, kAnything, on_readable, this)) : Source();
}

gboolean LineReader::on_readable(gint /*descriptor*/, GIOCondition /*condition*/, gpointer self)
{
    auto* reader = static_cast<LineReader*>(self);
    reader->drain();
    if (reader->m_descriptor >= 0)
        return G_SOURCE_CONTINUE;
    reader->m_source.forget();
    return G_SOURCE_REMOVE;
}

void LineReader::drain()
{
    std::array<char, 65536> bytes;
    while (m_descriptor >= 0) {
        const ssize_t count = read(m_descriptor, bytes.data(), bytes.size());
        if (count > 0)
            take(bytes.data(), static_cast<size_t>(count));
        else if (count < 0 && errno == EINTR)
            continue;
        else if (count < 0 && errno == EAGAIN)
            return;
        else
            close();
    }
}

void LineReader::take(const char* bytes, size_t count)
{
    m_rest.append(bytes, count);
    size_t begin = 0;
    for (size_t end; (end = m_rest.find('\n', begin)) != std::string::npos; begin = end + 1)
        m_lines.push_back(m_rest.substr(begin, end - begin));
    m_rest.erase(0, begin);
}

void LineReader::close()
{
    if (m_descriptor < 0)
        return;
    ::close(m_descriptor);
    m_descriptor = -1;
    if (!m_rest.empty())
        m_lines.push_back(std::exchange(m_rest, {}));
}

Process::Process(const std::vector<std::string>& arguments, const std::vector<std::string>& environment)
{
    GError* raw = nullptr;
    int output = -1;
    int errors = -1;
    const auto flags = static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_DO_NOT_REAP_CHILD);
    const bool started =
        g_spawn_async_with_pipes(nullptr, pointers(arguments).data(), pointers(environment).data(), flags,
            dieWithParent, nullptr, &m_pid, &m_input, &output, &errors, &raw);
    const base::ErrorPtr error(raw);
    if (!started)
        throw std::runtime_error(error->message);
    m_output.open(output);
    m_errors.open(errors);
    m_watch = Source(g_child_watch_add(m_pid, on_exit, this));
}

Process::~Process()
{
    ::close(m_input);
    signal(SIGKILL);
    waitForExit();
}

void Process::on_exit(GPid /*pid*/, gint waitStatus, gpointer self)
{
    auto* process = static_cast<Process*>(self);
    process->m_watch.forget();
    process->m_output.drain();
    process->m_errors.drain();
    process->m_status = WIFEXITED(waitStatus) ? WEXITSTATUS(waitStatus) : 128 + WTERMSIG(waitStatus);
}

void Process::signal(int number) const
{
    if (running())
        kill(m_pid, number);
}

void Process::tell(const std::string& line) const
{
    const std::string text = line + "\n";
    // A program that has ended is found out by whoever waits for its answer.
    std::signal(SIGPIPE, SIG_IGN);
    if (write(m_input, text.data(), text.size()) < 0 && errno != EPIPE)
        throw std::runtime_error("a program does not take its input");
}

std::optional<int> Process::waitForExit(Milliseconds limit) const
{
    waitUntil([this] { return !running(); }, limit);
    return m_status;
}

std::optional<std::string> outputOf(
    const std::vector<std::string>& arguments, const std::vector<std::string>& environment)
{
    const Process process(arguments, environment);
    if (process.waitForExit() != 0)
        return std::nullopt;
    std::string text;
    for (const std::string& line : process.output())
        text += line + "\n";
    return text;
}

} // namespace tv
