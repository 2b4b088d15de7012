// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Process.h"

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
    m_channel.reset(g_io_channel_unix_new(descriptor));
    g_io_channel_set_close_on_unref(m_channel.get(), TRUE);
    g_io_channel_set_encoding(m_channel.get(), nullptr, nullptr);
    g_io_channel_set_flags(m_channel.get(), G_IO_FLAG_NONBLOCK, nullptr);
    g_io_channel_set_line_term(m_channel.get(), "\n", 1);
    listen(true);
}

void LineReader::listen(bool on)
{
    constexpr auto kAnything = static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR);
    m_source =
        on && m_channel ? Source(g_io_add_watch(m_channel.get(), kAnything, on_readable, this)) : Source();
}

gboolean LineReader::on_readable(GIOChannel* /*channel*/, GIOCondition /*condition*/, gpointer self)
{
    static_cast<LineReader*>(self)->drain();
    return G_SOURCE_CONTINUE;
}

void LineReader::drain()
{
    GIOStatus status = G_IO_STATUS_NORMAL;
    while (m_channel && status == G_IO_STATUS_NORMAL) {
        gchar* line = nullptr;
        gsize end = 0;
        status = g_io_channel_read_line(m_channel.get(), &line, nullptr, &end, nullptr);
        if (const base::GStr owner {line})
            m_lines.emplace_back(line, end);
    }
    if (status == G_IO_STATUS_AGAIN)
        return;
    m_source = Source();
    m_channel.reset();
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
    process->m_watch = Source(); // it has come, and goes by itself
    process->m_output.drain();
    process->m_errors.drain();
    process->m_status = WIFEXITED(waitStatus) ? WEXITSTATUS(waitStatus) : 128 + WTERMSIG(waitStatus);
}

void Process::signal(int number) const
{
    if (running())
        kill(m_pid, number);
}

void Process::type(const std::string& text) const
{
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
