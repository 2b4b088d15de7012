/// The UI as the daemon sees it: is it there, and what does it answer.
#ifndef DAEMON_SIM_UI_CLIENT_H
#define DAEMON_SIM_UI_CLIENT_H

#include "Commands.h"
#include "Handles.h"
#include "Timer.h"

#include <functional>

namespace DaemonSim {

class EventLog;

/// Watches the UI's bus name and calls its methods without ever blocking. One request at a time.
/// No function given to it is called any more once it is destroyed.
class UiClient {
public:
    UiClient(GDBusConnection* connection, EventLog& log, std::function<void(const Event&)> onPresence);
    ~UiClient();
    UiClient(const UiClient&) = delete;
    UiClient& operator=(const UiClient&) = delete;

    bool isPresent() const { return m_present; }

    /// Says that the UI has announced itself. It does so a moment before its bus name is there: a request
    /// made in between is kept until the name appears.
    void announce() { m_announced = true; }

    /// Sends a request; its answer or failure is printed.
    /// @param onDone  called from the main loop after the answer, never from inside this call
    void send(const RequestCommand& request, std::function<void()> onDone);

private:
    static void onAppeared(GDBusConnection* connection, const char* name, const char* owner, gpointer data);
    static void onVanished(GDBusConnection* connection, const char* name, gpointer data);
    static void onReply(GObject* source, GAsyncResult* result, gpointer data);

    void call();

    GDBusConnection* m_connection; ///< borrowed, outlives this
    EventLog& m_log;
    std::function<void(const Event&)> m_onPresence;
    std::function<void()> m_onDone;
    RequestCommand m_request; ///< the one under way
    CancellablePtr m_cancellable;
    Timer m_nameTimer; ///< runs while a request waits for the UI's name
    bool m_present = false;
    bool m_announced = false;
    guint m_watch;
};

} // namespace DaemonSim

#endif
