// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "BusReturn.h"

#include "Guard.h"
#include "base/GlibHandles.h"

#include <string>
#include <string_view>
#include <utility>

namespace TesselUI {

namespace {

/// A bus makes its socket before it listens, and a starting machine is slow.
constexpr guint kRetryMs = 200;
constexpr int kTries = 25;

std::string busAddress()
{
    const base::GStr address {g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, nullptr, nullptr)};
    return address ? address.get() : "";
}

/// @return the file of the bus's socket, "" when the address names none
std::string socketPath(std::string_view address)
{
    constexpr std::string_view kMark = "unix:path=";
    const std::size_t mark = address.find(kMark);
    if (mark == std::string_view::npos)
        return {};
    const std::string_view rest = address.substr(mark + kMark.size());
    const std::string escaped(rest.substr(0, rest.find_first_of(",;")));
    const base::GStr path {g_uri_unescape_string(escaped.c_str(), nullptr)};
    return path ? path.get() : "";
}

} // namespace

BusReturn::BusReturn(std::function<bool()> onBack)
    : m_onBack(std::move(onBack))
    , m_cancellable(g_cancellable_new())
    , m_triesLeft(kTries)
    , m_cookie(this)
{
    watchSocket();
    tryToConnect();
}

BusReturn::~BusReturn()
{
    g_cancellable_cancel(m_cancellable);
    g_clear_object(&m_cancellable);
    if (m_monitor)
        g_file_monitor_cancel(m_monitor);
    g_clear_object(&m_monitor);
    if (m_retry != 0)
        g_source_remove(m_retry);
}

void BusReturn::watchSocket()
{
    const std::string path = socketPath(busAddress());
    if (path.empty())
        return;
    const base::GObjectPtr<GFile> file {g_file_new_for_path(path.c_str())};
    m_monitor = g_file_monitor_file(file.get(), G_FILE_MONITOR_NONE, nullptr, nullptr);
    if (m_monitor)
        g_signal_connect(m_monitor, "changed", G_CALLBACK(on_socketChanged), m_cookie.userData());
}

void BusReturn::on_socketChanged(GFileMonitor*, GFile*, GFile*, GFileMonitorEvent event, gpointer id)
{
    BusReturn* self = Cookie<BusReturn>::find(id);
    if (!self || event == G_FILE_MONITOR_EVENT_DELETED)
        return;
    self->m_triesLeft = kTries;
    self->tryToConnect();
}

/// With a connection of its own: the shared one is the closed one as long as anybody refers to it.
void BusReturn::tryToConnect()
{
    if (m_isTrying || m_retry != 0)
        return;
    m_isTrying = true;
    constexpr auto kAsOnABus = static_cast<GDBusConnectionFlags>(
        G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    g_dbus_connection_new_for_address(
        busAddress().c_str(), kAsOnABus, nullptr, m_cancellable, on_probed, m_cookie.userData());
}

void BusReturn::on_probed(GObject*, GAsyncResult* result, gpointer id)
try {
    const base::GObjectPtr<GDBusConnection> probe {g_dbus_connection_new_for_address_finish(result, nullptr)};
    if (probe)
        g_dbus_connection_close(probe.get(), nullptr, nullptr, nullptr);
    BusReturn* self = Cookie<BusReturn>::find(id);
    if (!self)
        return;
    self->m_isTrying = false;
    const auto onBack = self->m_onBack; // outlives its owner
    if (!probe || !onBack())
        self->retryLater();
} catch (...) {
    logCaught(__func__);
}

void BusReturn::retryLater()
{
    if (m_triesLeft-- > 0)
        m_retry = g_timeout_add(kRetryMs, on_retry, this);
}

gboolean BusReturn::on_retry(gpointer data)
{
    auto* self = static_cast<BusReturn*>(data);
    self->m_retry = 0;
    self->tryToConnect();
    return G_SOURCE_REMOVE;
}

} // namespace TesselUI
