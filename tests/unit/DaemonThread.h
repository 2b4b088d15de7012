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

    /// Sets how later calls of @p method are answered.
    void answer(const std::string& method, tv::Answer how);
    /// Lets the next call of @p method wait this long for its answer.
    void answerAfter(const std::string& method, double seconds);
    std::vector<std::string> calls();
    /// Sends a request to the program and runs the main loop until it is answered. @return "(0,)" for (i) 0,
    /// or the error
    std::string request(const std::string& method, const std::vector<std::string>& texts = {});

private:
    /// Runs @p action on the daemon's thread and waits for it.
    void run(const std::function<void(tv::Daemon&)>& action);

    GMainContext* m_context;
    GMainLoop* m_loop;
    std::unique_ptr<tv::Daemon> m_daemon; ///< used on the thread only
    std::thread m_thread;
};

#endif
