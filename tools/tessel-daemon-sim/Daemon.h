// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The daemon's life on the bus, which a restart begins anew.
#pragma once

#include "DaemonService.h"
#include "Timer.h"
#include "UiClient.h"
#include "base/GlibHandles.h"

#include <functional>
#include <optional>
#include <string>

namespace DaemonSim {

class EventLog;
struct Options;

/// Owns the connection and, on it, the daemon's own end and its view of the UI.
/// No function given to it is called any more once it is destroyed.
class Daemon {
public:
    struct Callbacks {
        std::function<void()> onReady; ///< the bus name is owned for the first time
        std::function<void(const Event&)> onEvent; ///< a call came, or the UI came or went
        std::function<void()> onIdle; ///< nothing is outstanding any more
        std::function<void()> onVanished; ///< left the bus for good, as it was told to
        std::function<void()> onFailed; ///< has no bus or no name; that is reported already
    };

    Daemon(EventLog& log, const Options& options, Callbacks callbacks);
    ~Daemon();
    Daemon(const Daemon&) = delete;
    Daemon& operator=(const Daemon&) = delete;

    /// Joins the bus. Calls onFailed, perhaps from inside, when that cannot be done.
    void start();

    /// Leaves the bus, with every answer and order that is still due, and comes back after a while.
    /// @param onDone  called from the main loop once the bus name is owned again
    void restart(double seconds, std::function<void()> onDone);

    /// As UiClient::send(). Not while a restart is under way.
    void send(const RequestCommand& request, std::function<void()> onDone);
    bool isUiPresent() const { return m_ui && m_ui->isPresent(); }

    /// Holds for the calls received from now on, also after a restart.
    void setBehaviour(const Behaviour& behaviour);

    /// @return whether every call is answered and no order to leave is due.
    bool isIdle() const { return !m_service || m_service->isIdle(); }

private:
    static void onClosed(GDBusConnection* connection, gboolean vanished, GError* error, gpointer data);

    DaemonService::Callbacks serviceCallbacks();
    void onReady();
    void onReceived(const Event& event);
    void fail(const std::string& problem);
    void leave();
    void forgetConnection();

    EventLog& m_log;
    std::optional<double> m_endAfterStop;
    Behaviour m_behaviour;
    Callbacks m_callbacks;
    bool m_over = false; ///< left or lost the bus for good
    std::function<void()> m_onRestarted; ///< set while a restart is under way
    Timer m_restartTimer;
    UiClient::Knowledge m_knowledge; ///< of the UI, from the last life
    base::GObjectPtr<GDBusConnection> m_connection;
    gulong m_closedHandler = 0;
    std::optional<DaemonService> m_service;
    std::optional<UiClient> m_ui;
};

} // namespace DaemonSim
