// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The application's two ends of the bus: their hand-shake, their return after the bus was gone, and the stop
/// that goes back to the daemon.

#include "BusReturn.h"
#include "Log.h"
#include "OutsideNames.h"
#include "TesselDbusClient.h"
#include "TesselUI.h"
#include "TesselUIDbus.h"
#include "base/GlibHandles.h"
#include "vconf.h"

#include <utility>

namespace TesselUI {

/// The bus library connects in a thread of its own while the window is made. Nothing is said of how that
/// ends: the client asks for the same connection, and waits for what is left.
void CTesselUI::connectAhead()
{
    const auto done = [](GObject*, GAsyncResult* result, gpointer) {
        const base::GObjectPtr<GDBusConnection> shared {g_bus_get_finish(result, nullptr)};
    };
    g_bus_get(G_BUS_TYPE_SYSTEM, nullptr, done, nullptr);
}

void CTesselUI::makeClient()
{
    delete std::exchange(m_pDbusClient, new TesselDbusClient(this));
}

void CTesselUI::busClosed()
{
    LOGE("The connection to the bus was closed");
    m_busReturn = std::make_unique<BusReturn>([this] { return startAgain(); });
}

/// Both ends go first: the bus library hands the closed connection out as long as anybody refers to it. So
/// does what is still under way on it, for a moment. @return whether there is a new one
bool CTesselUI::startAgain()
{
    delete std::exchange(m_pUIDbus, nullptr);
    delete std::exchange(m_pDbusClient, nullptr);
    const base::GObjectPtr<GDBusConnection> shared {g_bus_get_sync(G_BUS_TYPE_SYSTEM, nullptr, nullptr)};
    if (!shared || g_dbus_connection_is_closed(shared.get()))
        return false;
    LOGI("The bus is back");
    m_busReturn.reset();
    makeClient();
    return true;
}

void CTesselUI::stopTesselRequest(bool first, bool)
{
    LOGI("START");
    CTesselUI* instance = getInstance();
    if (instance && instance->m_pDbusClient)
        instance->m_pDbusClient->stopTessel(first, false);
    if (vconf_set_int(kStartModeKey, kStartModeStopped) == VCONF_OK)
        LOGI("Stopping Tessel");
    LOGI("END");
}

void CTesselUI::dbusClientObjectCreated(bool created)
{
    LOGI("START");
    // The new service is there before the old one goes, and goes on with its calls.
    if (created) {
        auto fresh = std::make_unique<CTesselUIDbus>(m_pUIManager, this);
        if (m_pUIDbus)
            fresh->takeOver(*m_pUIDbus);
        delete std::exchange(m_pUIDbus, fresh.release());
    }
    LOGI("END");
}

void CTesselUI::dbusServerStarted(bool started)
{
    LOGI("START");
    CTesselUI* instance = getInstance();
    if (instance && instance->m_pDbusClient)
        instance->m_pDbusClient->dbusServerStarted(started);
    LOGI("END");
}

} // namespace TesselUI
