// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The daemon's own end on the bus: what the UI calls.
#pragma once

#include "Timer.h"
#include "Vocabulary.h"
#include "base/GlibHandles.h"

#include <functional>
#include <list>
#include <optional>

namespace DaemonSim {

class EventLog;

/// Owns the daemon's bus name and answers ServerStarted and StopTessel as the present behaviour says.
/// No function given to it is called any more once it is destroyed.
class DaemonService {
public:
    struct Callbacks {
        std::function<void()> onReady; ///< the bus name is owned
        std::function<void()> onNameLost; ///< another program owns the name, or the bus is gone
        std::function<void(const Event&)> onReceived; ///< a call came; it is not answered yet
        std::function<void()> onIdle; ///< nothing is outstanding any more
        std::function<void()> onVanished; ///< the connection is closed; the program is to end
    };

    /// @param endAfterStop  seconds from an answered stop to the order to leave; nothing means never
    DaemonService(
        GDBusConnection* connection, EventLog& log, std::optional<double> endAfterStop, Callbacks callbacks);
    ~DaemonService();
    DaemonService(const DaemonService&) = delete;
    DaemonService& operator=(const DaemonService&) = delete;

    /// Exports the object and asks for the bus name. @return false when the object cannot be exported.
    bool start();

    /// Holds for the calls received from now on, and for those that a silent daemon has not answered.
    void setBehaviour(const Behaviour& behaviour);

    /// @return whether every call is answered, but for those left in silence, and no order to leave is due.
    bool isIdle() const { return m_answers.empty() && !m_endTimer.isRunning(); }

private:
    /// A call whose answer is delayed.
    struct Answer {
        base::GObjectPtr<GDBusMethodInvocation> invocation;
        bool isStop;
        Timer timer;
    };

    static void onMethodCall(GDBusConnection* connection, const char* sender, const char* path,
        const char* interfaceName, const char* method, GVariant* parameters,
        GDBusMethodInvocation* invocation, gpointer data);
    static void onNameAcquired(GDBusConnection* connection, const char* name, gpointer data);
    static void onNameLost(GDBusConnection* connection, const char* name, gpointer data);

    void receive(const Event& event, base::GObjectPtr<GDBusMethodInvocation> invocation);
    void answerAs(
        const Behaviour& behaviour, base::GObjectPtr<GDBusMethodInvocation> invocation, bool isStop);
    void answerLater(base::GObjectPtr<GDBusMethodInvocation> invocation, bool isStop, double seconds);
    void answerWithWrongType(GDBusMethodInvocation* invocation);
    void vanish();
    void planEnd(bool isStop);

    GDBusConnection* m_connection; ///< borrowed, outlives this
    EventLog& m_log;
    std::optional<double> m_endAfterStop;
    Callbacks m_callbacks;
    Behaviour m_behaviour;
    base::NodeInfoPtr m_interface;
    Timer m_endTimer;
    std::list<Answer> m_answers;
    std::list<Answer> m_unanswered; ///< in silence
    guint m_registration = 0;
    guint m_nameOwner = 0;
};

} // namespace DaemonSim
