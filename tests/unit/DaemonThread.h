/// The recorded setup daemon on a thread of its own: the program's calls to it block the main loop, so that a
/// daemon on the same loop could never answer them.
#ifndef TESTS_DAEMON_THREAD_H
#define TESTS_DAEMON_THREAD_H

#include "Daemon.h"

#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

class DaemonThread {
public:
    explicit DaemonThread(const std::string& busAddress);
    ~DaemonThread();
    DaemonThread(const DaemonThread&) = delete;
    DaemonThread& operator=(const DaemonThread&) = delete;

    std::vector<std::string> calls();

private:
    /// Runs @p action on the daemon's thread and waits for it.
    void run(const std::function<void(tv::Daemon&)>& action);

    GMainContext* m_context;
    GMainLoop* m_loop;
    std::unique_ptr<tv::Daemon> m_daemon; ///< used on the thread only
    std::thread m_thread;
};

#endif
