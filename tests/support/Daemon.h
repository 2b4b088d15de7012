/// A setup daemon that records what the user interface tells it and sends it requests.
#ifndef TESSEL_TESTS_DAEMON_H
#define TESSEL_TESTS_DAEMON_H

#include "Handles.h"
#include "Wait.h"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace tv {

/// How a call of the user interface is answered.
enum class Answer {
    Zero, ///< (i) 0, as it should be
    Held, ///< the same, when release() is called
    Refusal, ///< a bus error
    WrongType, ///< a text in the place of the number
    Vanish, ///< never: the daemon leaves the bus
};

/// What the user interface answered to a request.
struct Reply {
    std::string value; ///< with its types, such as "(0,)" for (i) 0; empty for an error
    std::string error; ///< empty for a value
};

constexpr const char* kDaemonName = "com.norvale.orbis.tessel.daemon";
constexpr const char* kUiName = "com.norvale.orbis.tessel.ui";

class Daemon {
public:
    /// Joins the bus and owns @p name there. @throws std::runtime_error when that fails
    explicit Daemon(const std::string& busAddress, const char* name = kDaemonName);
    ~Daemon();
    Daemon(const Daemon&) = delete;
    Daemon& operator=(const Daemon&) = delete;

    /// @return what arrived, in order, such as "StopTessel(true, false)"
    const std::vector<std::string>& calls() const { return m_calls; }
    bool received(const std::string& call) const
    {
        return std::find(m_calls.begin(), m_calls.end(), call) != m_calls.end();
    }
    /// Empties calls(), for a program that is started again.
    void forget() { m_calls.clear(); }
    const std::string& busAddress() const { return m_busAddress; }
    /// Sets how every later call of @p method is answered.
    void answer(const std::string& method, Answer how) { m_answers[method] = how; }
    /// Sends @p count calls, without waiting, whenever @p method arrives and before it is answered.
    void callBackAt(const std::string& method, size_t count)
    {
        m_calledBackAt = method;
        m_callsBack = count;
    }
    /// Answers what was held.
    void release();

    /// @return whether the process @p pid owns the user interface's name
    bool findsUi(int pid) const;
    /// Sends a request and waits for the answer.
    Reply request(const std::string& method, const std::vector<std::string>& texts = {});
    /// Sends a request and goes on; its answer, or the error when @p limit is over, is added to replies().
    void send(
        const std::string& method, const std::vector<std::string>& texts = {}, Milliseconds limit = kLimit);
    const std::vector<Reply>& replies() const { return m_replies; }

private:
    static void on_call(GDBusConnection* connection, const gchar* sender, const gchar* path,
        const gchar* interface, const gchar* method, GVariant* parameters, GDBusMethodInvocation* invocation,
        gpointer self);
    static void on_reply(GObject* source, GAsyncResult* result, gpointer self);
    void answerCall(Answer how, GDBusMethodInvocation* invocation);
    GVariant* busCall(const char* method, GVariant* parameters) const;

    std::string m_busAddress;
    base::GObjectPtr<GDBusConnection> m_connection;
    base::NodeInfoPtr m_description;
    guint m_registration = 0;
    std::vector<std::string> m_calls;
    std::map<std::string, Answer> m_answers;
    std::vector<GDBusMethodInvocation*> m_held; ///< each owned until it is answered
    std::vector<Reply> m_replies;
    std::string m_calledBackAt;
    size_t m_callsBack = 0;
    size_t m_pending = 0; ///< requests without an answer yet
};

} // namespace tv

#endif
