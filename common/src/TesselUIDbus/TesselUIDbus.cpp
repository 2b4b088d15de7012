// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "TesselUIDbus.h"

#include "Bounded.h"
#include "Guard.h"
#include "Log.h"
#include "Paths.h"
#include "Requests.h"
#include "TesselUI.h"
#include "base/GlibHandles.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

namespace TesselUI {

namespace {

/// The arguments of a call: none, one text or two.
struct Arguments {
    std::string first;
    std::string second;
};

Arguments unpack(GVariant* parameters, const char* signature)
{
    Arguments arguments;
    if (!signature || !parameters || !g_variant_is_of_type(parameters, G_VARIANT_TYPE(signature)))
        return arguments;
    const char* first = nullptr;
    const char* second = nullptr;
    if (strcmp(signature, "(ss)") == 0)
        g_variant_get(parameters, "(&s&s)", &first, &second);
    else
        g_variant_get(parameters, "(&s)", &first);
    arguments.first = bounded(first);
    arguments.second = bounded(second);
    return arguments;
}

} // namespace

const GDBusInterfaceVTable CTesselUIDbus::m_InterfaceVtable = {m_OnMethodCall, nullptr, nullptr, {nullptr}};

CTesselUIDbus::CTesselUIDbus(std::shared_ptr<UIManager> manager, CTesselUI* app)
    : m_pUIManager(std::move(manager))
    , m_app(app)
    , m_calls([this](GDBusMethodInvocation* call) { serve(call); })
    , m_cookie(this)
{
    create();
    connectDbus();
}

CTesselUIDbus::~CTesselUIDbus()
{
    destroy();
}

void CTesselUIDbus::create()
{
    LOGI("Start CTesselUIDbus::Create");
    gchar* contents = nullptr;
    if (!g_file_get_contents(kIntrospectionFile, &contents, nullptr, nullptr)) {
        LOGE("g_file_get_contents error");
        return;
    }
    const base::GStr xml {contents};
    if (!xml) {
        LOGE("NULL XML");
        return;
    }
    m_nodeInfo = g_dbus_node_info_new_for_xml(xml.get(), nullptr);
    if (!m_nodeInfo) {
        LOGE("g_dbus_node_info_new_for_xml error");
        return;
    }
    GError* raw = nullptr;
    m_connection = g_bus_get_sync(G_BUS_TYPE_SYSTEM, nullptr, &raw);
    const base::ErrorPtr error {raw};
    if (!m_connection) {
        LOGE("Could not connect to system bus: Error code: %d  Error msg: %s", error ? error->code : 0,
            error ? error->message : "");
        return;
    }
    g_dbus_connection_set_exit_on_close(m_connection, FALSE);
    LOGI("End CTesselUIDbus::Create");
}

/// Calls get the object itself as their data, not its cookie: destroy() unregisters the object before its
/// memory goes. @return 0 when there is nothing to register, or nothing to register it on
unsigned int CTesselUIDbus::registerObject()
{
    const bool described = m_nodeInfo && m_nodeInfo->path && g_variant_is_object_path(m_nodeInfo->path)
        && m_nodeInfo->interfaces && m_nodeInfo->interfaces[0];
    if (!m_acquired || !described)
        return 0;
    return g_dbus_connection_register_object(
        m_acquired, m_nodeInfo->path, m_nodeInfo->interfaces[0], &m_InterfaceVtable, this, nullptr, nullptr);
}

void CTesselUIDbus::m_OnBusAcquired(GDBusConnection* connection, const char*, void* user_data)
try {
    LOGI("Start m_OnBusAcquired");
    CTesselUIDbus* self = Cookie<CTesselUIDbus>::find(user_data);
    if (!self) {
        LOGE("Could Not get Instance or deleted");
        return;
    }
    self->setConnection(connection);
    if (!connection)
        LOGE("Error -> pconnection is NULL");
    self->m_registrationId = self->registerObject();
    if (self->m_registrationId == 0)
        LOGE("Could not register Object ");
    else
        LOGI("Object registered Successfully");
    self->askForName();
    self->m_app->dbusServerStarted(self->m_registrationId != 0);
    LOGI("End m_OnBusAcquired");
} catch (...) {
    logCaught(__func__);
}

void CTesselUIDbus::m_OnMethodCall(GDBusConnection*, const char*, const char*, const char*,
    const char* method_name, GVariant*, GDBusMethodInvocation* invocation, void* user_data)
try {
    if (user_data) {
        static_cast<CTesselUIDbus*>(user_data)->m_calls.add(invocation);
        return;
    }
    LOGI("Call %s method", method_name);
    LOGE("Cult not get Instance");
    g_clear_object(&invocation); // without an answer; the caller's own time-out ends the wait
} catch (...) {
    logCaught(__func__);
}

void CTesselUIDbus::serve(GDBusMethodInvocation* call)
{
    try {
        callManager("m_OnMethodCall", g_dbus_method_invocation_get_method_name(call),
            g_dbus_method_invocation_get_parameters(call));
    } catch (...) {
        logCaught(__func__);
    }
    g_dbus_method_invocation_return_value(call, g_variant_new("(i)", 0));
}

/// @param function  whose lines these are
void CTesselUIDbus::callManager(const char* function, const char* method, GVariant* parameters)
{
    LOGI_AS(function, "Call %s method", method);
    const Request* request = requestOfMethod(method);
    if (!request) {
        LOGE_AS(function, "Method name did not match");
        return;
    }
    if (request->methodMatched)
        LOGI_AS(function, "%s", request->methodMatched);
    Arguments arguments = unpack(parameters, request->signature);
    if (m_pUIManager && request->call(*m_pUIManager, arguments.first, arguments.second) != 0)
        TESSEL_LOG_AS(function, request->methodPriority, "%s", request->methodLine);
}

void CTesselUIDbus::getParams(GVariant* value, void* out, int size)
{
    if (!value || !out || size <= 0)
        return;
    const gsize available = g_variant_get_size(value);
    if (available > 0)
        memcpy(out, g_variant_get_data(value), std::min<gsize>(available, static_cast<gsize>(size)));
}

} // namespace TesselUI
