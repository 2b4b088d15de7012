#include "DaemonThread.h"

#include <future>

namespace {

struct Task {
    const std::function<void()>* action;
    std::promise<void> done;
};

gboolean on_task(gpointer data)
{
    auto* task = static_cast<Task*>(data);
    (*task->action)();
    task->done.set_value();
    return G_SOURCE_REMOVE;
}

} // namespace

DaemonThread::DaemonThread(const std::string& busAddress)
    : m_context(g_main_context_new())
    , m_loop(g_main_loop_new(m_context, FALSE))
    , m_thread([this, busAddress] {
        g_main_context_push_thread_default(m_context);
        m_daemon = std::make_unique<tv::Daemon>(busAddress);
        g_main_loop_run(m_loop);
        m_daemon.reset();
        g_main_context_pop_thread_default(m_context);
    })
{
    run([](tv::Daemon&) {});
}

DaemonThread::~DaemonThread()
{
    run([this](tv::Daemon&) { g_main_loop_quit(m_loop); });
    m_thread.join();
    g_main_loop_unref(m_loop);
    g_main_context_unref(m_context);
}

void DaemonThread::run(const std::function<void(tv::Daemon&)>& action)
{
    const std::function<void()> bound = [&] { action(*m_daemon); };
    Task task {&bound, {}};
    auto done = task.done.get_future();
    GSource* source = g_idle_source_new();
    g_source_set_callback(source, on_task, &task, nullptr);
    g_source_attach(source, m_context);
    g_source_unref(source);
    done.wait();
}

std::vector<std::string> DaemonThread::calls()
{
    std::vector<std::string> result;
    run([&](tv::Daemon& daemon) { result = daemon.calls(); });
    return result;
}
