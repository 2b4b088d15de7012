// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Daemon.h"

#include "EventLog.h"
#include "Names.h"
#include "Options.h"
#include "base/GlibHandles.h"

#include <utility>

namespace DaemonSim {

namespace {

/// A connection of our own: one shared with the rest of the process would be handed out again although it
/// is closed.
base::GObjectPtr<GDBusConnection> openSystemBus(std::string& problem)
{
    constexpr auto kFlags = static_cast<GDBusConnectionFlags>(
        G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    GError* rawError = nullptr;
    base::GObjectPtr<GDBusConnection> connection;
    const base::GStr address(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, nullptr, &rawError));
    if (address)
        connection.reset(
            g_dbus_connection_new_for_address_sync(address.get(), kFlags, nullptr, nullptr, &rawError));
    const base::ErrorPtr error(rawError);
    if (error)
        problem = std::string("no system bus: ") + error->message;
    return connection;
}

} // namespace

Daemon::Daemon(EventLog& log, const Options& options, Callbacks callbacks)
    : m_log(log)
    , m_endAfterStop(options.endAfterStop)
    , m_behaviour(options.behaviour)
    , m_callbacks(std::move(callbacks))
{
}

Daemon::~Daemon()
{
    forgetConnection();
}

void Daemon::start()
{
    std::string problem;
    m_connection = openSystemBus(problem);
    if (!m_connection) {
        fail(problem);
        return;
    }
    m_closedHandler = g_signal_connect(m_connection.get(), "closed", G_CALLBACK(onClosed), this);
    m_service.emplace(m_connection.get(), m_log, m_endAfterStop, serviceCallbacks());
    m_service->setBehaviour(m_behaviour);
    m_ui.emplace(m_connection.get(), m_log, std::exchange(m_knowledge, {}),
        [this](const Event& event) { m_callbacks.onEvent(event); });
    if (!m_service->start())
        fail("cannot export the daemon's object");
}

DaemonService::Callbacks Daemon::serviceCallbacks()
{
    DaemonService::Callbacks callbacks;
    callbacks.onReady = [this] { onReady(); };
    callbacks.onNameLost = [this] { fail(std::string("cannot own the bus name ") + kDaemonName); };
    callbacks.onReceived = [this](const Event& event) { onReceived(event); };
    callbacks.onIdle = [this] { m_callbacks.onIdle(); };
    callbacks.onVanished = [this] {
        m_over = true;
        m_callbacks.onVanished();
    };
    return callbacks;
}

void Daemon::onReady()
{
    m_log.event("ready");
    const auto onRestarted = std::exchange(m_onRestarted, {});
    if (onRestarted)
        onRestarted();
    else
        m_callbacks.onReady();
}

void Daemon::onReceived(const Event& event)
{
    if (event.kind == EventKind::ServerStarted && event.flags == std::vector<bool> {true})
        m_ui->announce();
    m_callbacks.onEvent(event);
}

void Daemon::onClosed(GDBusConnection*, gboolean, GError*, gpointer data)
{
    static_cast<Daemon*>(data)->fail("the bus is gone");
}

void Daemon::fail(const std::string& problem)
{
    if (std::exchange(m_over, true))
        return; // a consequence of what is known already
    m_log.error(problem);
    m_callbacks.onFailed();
}

void Daemon::send(const RequestCommand& request, std::function<void()> onDone)
{
    m_ui->send(request, std::move(onDone));
}

void Daemon::setBehaviour(const Behaviour& behaviour)
{
    m_behaviour = behaviour;
    if (m_service)
        m_service->setBehaviour(behaviour);
}

void Daemon::restart(double seconds, std::function<void()> onDone)
{
    m_onRestarted = std::move(onDone);
    // Not from inside the caller, which may be a callback of the objects that go now.
    m_restartTimer.start(0, [this, seconds] {
        leave();
        m_restartTimer.start(seconds, [this] { start(); });
    });
}

void Daemon::leave()
{
    m_log.event("restart");
    m_knowledge = m_ui->knowledge();
    forgetConnection();
}

/// The bus gives the name away once the connection is closed.
void Daemon::forgetConnection()
{
    if (m_closedHandler != 0)
        g_signal_handler_disconnect(m_connection.get(), std::exchange(m_closedHandler, 0));
    m_ui.reset();
    m_service.reset();
    if (m_connection && !g_dbus_connection_is_closed(m_connection.get())) {
        g_dbus_connection_flush_sync(m_connection.get(), nullptr, nullptr); // answers that were given
        g_dbus_connection_close_sync(m_connection.get(), nullptr, nullptr);
    }
    m_connection.reset();
}

} // namespace DaemonSim
