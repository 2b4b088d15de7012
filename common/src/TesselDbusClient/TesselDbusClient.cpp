// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "TesselDbusClient.h"

#include "Guard.h"
#include "Log.h"
#include "OutsideNames.h"
#include "TesselUI.h"
#include "base/GlibHandles.h"

namespace TesselUI {

TesselDbusClient::TesselDbusClient(CTesselUI* app)
    : m_app(app)
    , m_cookie(this)
{
    LOGI("Entry");
    GError* raw = nullptr;
    m_connection = g_bus_get_sync(G_BUS_TYPE_SYSTEM, nullptr, &raw);
    if (const base::ErrorPtr error {raw}) {
        LOGE("Failed to open connection to bus: %s\n\n", error->message);
        return;
    }
    // A bus that dies must not take the program along: it can still be driven through the settings store.
    g_dbus_connection_set_exit_on_close(m_connection, FALSE);
    m_closedHandler = g_signal_connect(m_connection, "closed", G_CALLBACK(on_closed), m_cookie.userData());
    g_dbus_proxy_new(m_connection, G_DBUS_PROXY_FLAGS_NONE, nullptr, kDaemonName, kDaemonPath,
        kDaemonInterface, nullptr, proxyNewCallback, m_cookie.userData());
}

TesselDbusClient::~TesselDbusClient()
{
    LOGI("Entry");
    if (m_closedHandler != 0)
        g_signal_handler_disconnect(m_connection, m_closedHandler);
    g_clear_object(&m_proxy);
    g_clear_object(&m_connection);
}

void TesselDbusClient::on_closed(GDBusConnection*, gboolean, GError*, void* user_data)
try {
    if (TesselDbusClient* self = Cookie<TesselDbusClient>::find(user_data))
        self->m_app->busClosed();
} catch (...) {
    logCaught(__func__);
}

void TesselDbusClient::proxyNewCallback(GObject*, GAsyncResult* result, void* user_data)
try {
    LOGI("ENTRY");
    TesselDbusClient* self = Cookie<TesselDbusClient>::find(user_data);
    if (!self) {
        LOGI("Object ALreay Deleted");
        return;
    }
    GError* raw = nullptr;
    GDBusProxy* proxy = g_dbus_proxy_new_finish(result, &raw);
    const base::ErrorPtr error {raw};
    if (!proxy) {
        LOGE("Failed to create proxy object: %s, name:%s  path:%s  iface:%s", error ? error->message : "",
            kDaemonName, kDaemonPath, kDaemonInterface);
        self->m_app->dbusClientObjectCreated(false);
        return;
    }
    self->m_proxy = proxy;
    self->m_app->dbusClientObjectCreated(true);
} catch (...) {
    logCaught(__func__);
}

void TesselDbusClient::dbusServerStarted(bool started)
{
    LOGI("DBus server started = [%s]", started ? "true" : "false");
    std::string method = "ServerStarted";
    sendMessageonDbus(method, g_variant_new("(b)", started));
}

void TesselDbusClient::stopTessel(bool first, bool second)
{
    LOGI("Stop Tessel");
    std::string method = "StopTessel";
    sendMessageonDbus(method, g_variant_new("(bb)", first, second));
}

void TesselDbusClient::sendMessageonDbus(std::string& method, GVariant* parameters)
{
    const base::VariantPtr arguments {parameters ? g_variant_ref_sink(parameters) : nullptr};
    LOGI("Entry");
    if (!m_proxy) {
        LOGE("No Proxy Object found");
        return;
    }
    LOGI("Proxy Not NUll");
    GError* raw = nullptr;
    const base::VariantPtr reply {g_dbus_proxy_call_sync(
        m_proxy, method.c_str(), arguments.get(), G_DBUS_CALL_FLAGS_NONE, -1, nullptr, &raw)};
    if (const base::ErrorPtr error {raw}) {
        LOGE("DBUS call failed: %s", error->message);
        return;
    }
    gint32 value = 0;
    // The daemon may answer anything; only what has the agreed form is read.
    if (reply && g_variant_is_of_type(reply.get(), G_VARIANT_TYPE("(i)")))
        g_variant_get(reply.get(), "(i)", &value);
    LOGI("result:%d", value);
}

} // namespace TesselUI
