// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The service's name on the bus: asked for before the daemon is told, and given back without waiting long.

#include "Log.h"
#include "OutsideNames.h"
#include "TesselUIDbus.h"
#include "base/GlibHandles.h"

#include <utility>

namespace TesselUI {

namespace {

constexpr int kBusLimitMs = 1000; ///< a bus that does not answer is not waited for any longer

// Numbers of the bus's own interface.
constexpr guint32 kDoNotQueue = 4;
constexpr guint32 kPrimaryOwner = 1;
constexpr guint32 kAlreadyOwner = 4;

struct BusAnswer {
    bool came; ///< in time; an error is an answer, too
    guint32 value; ///< 0 for an error
};

/// Asks the bus itself. @param parameters  floating
BusAnswer askBus(GDBusConnection* connection, const char* method, GVariant* parameters)
{
    GError* raw = nullptr;
    const base::VariantPtr reply {g_dbus_connection_call_sync(connection, "org.freedesktop.DBus",
        "/org/freedesktop/DBus", "org.freedesktop.DBus", method, parameters, nullptr, G_DBUS_CALL_FLAGS_NONE,
        kBusLimitMs, nullptr, &raw)};
    const base::ErrorPtr error {raw};
    BusAnswer answer {!g_error_matches(raw, G_IO_ERROR, G_IO_ERROR_TIMED_OUT), 0};
    if (reply && g_variant_is_of_type(reply.get(), G_VARIANT_TYPE("(u)")))
        g_variant_get(reply.get(), "(u)", &answer.value);
    return answer;
}

} // namespace

void CTesselUIDbus::connectDbus()
{
    LOGI("Start ReconnectDbus");
    if (m_ownerId != 0)
        giveNameBack();
    if (m_acquired && m_registrationId != 0)
        g_dbus_connection_unregister_object(m_acquired, std::exchange(m_registrationId, 0));
    m_ownerId = g_bus_own_name(G_BUS_TYPE_SYSTEM, kServiceName, G_BUS_NAME_OWNER_FLAGS_NONE, m_OnBusAcquired,
        m_OnNameAcquired, on_nameNotGranted, m_cookie.userData(), nullptr);
    if (m_ownerId == 0)
        LOGE("g_bus_own_name failed");
    else
        LOGI("End ReconnectDbus");
}

bool CTesselUIDbus::destroy()
{
    LOGI("");
    giveNameBack();
    // Cleared as well, because a second call must not release it again.
    g_clear_pointer(&m_nodeInfo, g_dbus_node_info_unref);
    g_clear_object(&m_connection);
    g_clear_object(&m_reserved);
    if (m_acquired && m_registrationId != 0)
        g_dbus_connection_unregister_object(m_acquired, std::exchange(m_registrationId, 0));
    m_calls.refuseAll();
    setConnection(nullptr);
    return true;
}

/// The name belongs to the connection, not to who asked: whatever the former service gave back would be gone
/// for this one, too. So the library's own request of the former stays, and ends with the connection.
void CTesselUIDbus::takeOver(CTesselUIDbus& former)
{
    if (former.m_acquired && !g_dbus_connection_is_closed(former.m_acquired)) {
        setConnection(former.m_acquired);
        m_holdsName = std::exchange(former.m_holdsName, false);
        former.m_ownerId = 0;
    }
    m_calls.takeOver(former.m_calls);
}

/// @param connection  nullable; a reference is taken
void CTesselUIDbus::setConnection(GDBusConnection* connection)
{
    if (connection == m_acquired)
        return;
    if (m_closedHandler != 0)
        g_signal_handler_disconnect(m_acquired, std::exchange(m_closedHandler, 0));
    g_set_object(&m_acquired, connection);
    if (!connection)
        return;
    g_dbus_connection_set_exit_on_close(connection, FALSE);
    m_closedHandler =
        g_signal_connect_after(connection, "closed", G_CALLBACK(on_closed), m_cookie.userData());
}

/// The bus library asks for the name only after the bus was acquired, and a daemon that was told by then
/// calls a name that is nobody's. So it is asked for here, before the daemon is told. A name that another
/// program has is left to the library, which queues for it.
void CTesselUIDbus::askForName()
{
    if (!m_acquired)
        return;
    const guint32 answer =
        askBus(m_acquired, "RequestName", g_variant_new("(su)", kServiceName, kDoNotQueue)).value;
    m_holdsName = answer == kPrimaryOwner || answer == kAlreadyOwner;
}

/// The library gives back what it was granted itself, and waits for the bus as long as it takes: so it only
/// gets to it when the bus answers at all. A bus that does not will see the connection go.
void CTesselUIDbus::giveNameBack()
{
    if (m_ownerId == 0)
        return;
    bool answers = true;
    if (m_acquired && !g_dbus_connection_is_closed(m_acquired))
        answers = m_holdsName ? askBus(m_acquired, "ReleaseName", g_variant_new("(s)", kServiceName)).came
                              : askBus(m_acquired, "GetId", nullptr).came;
    m_holdsName = false;
    if (answers)
        g_bus_unown_name(m_ownerId);
    m_ownerId = 0;
}

void CTesselUIDbus::m_OnNameAcquired(GDBusConnection*, const char*, void*)
{
    LOGI("");
}

void CTesselUIDbus::m_OnNameLost(GDBusConnection*, const char*, void*)
{
    LOGI("");
}

/// The library takes the bus's "it is yours already" for a refusal.
void CTesselUIDbus::on_nameNotGranted(GDBusConnection* connection, const char* name, void* user_data)
{
    const CTesselUIDbus* self = Cookie<CTesselUIDbus>::find(user_data);
    if (self && self->m_holdsName)
        m_OnNameAcquired(connection, name, user_data);
    else
        m_OnNameLost(connection, name, user_data);
}

/// After the library's own part. It tells the loss only of a name that it was granted itself; and a request
/// of its that the end of the connection overtakes is called off, because its answer would look for that
/// connection.
void CTesselUIDbus::on_closed(GDBusConnection* connection, gboolean, GError*, void* user_data)
{
    CTesselUIDbus* self = Cookie<CTesselUIDbus>::find(user_data);
    if (!self)
        return;
    if (std::exchange(self->m_holdsName, false))
        m_OnNameLost(connection, kServiceName, user_data);
    if (self->m_ownerId != 0)
        g_bus_unown_name(std::exchange(self->m_ownerId, 0));
}

} // namespace TesselUI
