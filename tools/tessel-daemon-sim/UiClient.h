// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The UI as the daemon sees it: is it there, and what does it answer.
#pragma once

#include "Commands.h"
#include "Timer.h"
#include "base/GlibHandles.h"

#include <functional>

namespace DaemonSim {

class EventLog;

/// Watches the UI's bus name and calls its methods without ever blocking. One request at a time.
/// No function given to it is called any more once it is destroyed.
class UiClient {
public:
    /// What is known of the UI, for the next of these objects.
    struct Knowledge {
        bool present = false; ///< its bus name is there
        bool announced = false; ///< it has called ServerStarted with true
    };

    /// @param knowledge  from an earlier connection: a UI that has gone since then is told of as gone
    UiClient(GDBusConnection* connection, EventLog& log, const Knowledge& knowledge,
        std::function<void(const Event&)> onPresence);
    ~UiClient();
    UiClient(const UiClient&) = delete;
    UiClient& operator=(const UiClient&) = delete;

    bool isPresent() const { return m_ui.present; }
    const Knowledge& knowledge() const { return m_ui; }

    /// Says that the UI has announced itself. It does so a moment before its bus name is there: a request
    /// made in between is kept until the name appears.
    void announce() { m_ui.announced = true; }

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
    base::GObjectPtr<GCancellable> m_cancellable;
    Timer m_nameTimer; ///< runs while a request waits for the UI's name
    Knowledge m_ui;
    guint m_watch;
};

} // namespace DaemonSim
