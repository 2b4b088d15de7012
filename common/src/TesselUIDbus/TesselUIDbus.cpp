#include "TesselUIDbus.h"

#include "Bounded.h"
#include "Guard.h"
#include "Log.h"
#include "Paths.h"
#include "TesselUI.h"
#include "UIManager.h"
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

/// One method of the interface. The line is logged when the manager showed nothing; people who read these
/// logs are used to it.
struct MethodRow {
    const char* name;
    const char* signature; ///< null: no arguments are read
    int (*call)(UIManager& manager, Arguments& arguments);
    log_priority priority;
    const char* line;
};

constexpr MethodRow kMethods[] = {
    {"ShowMobileGuide", "(s)", [](UIManager& m, Arguments& a) { return m.showGuidePopup(a.first); },
        DLOG_INFO, "Mobile Guide PopupShown successfully"},
    {"ShowNetworkTest", "(ss)",
        [](UIManager& m, Arguments& a) { return m.showNetworkTestPopup(a.first, a.second); }, DLOG_INFO,
        "Network Test Popup Shown"},
    {"ShowSSOLoginPopup", "(ss)",
        [](UIManager& m, Arguments& a) { return m.showSSOLoginPopup(a.first, a.second); }, DLOG_INFO,
        "SSO login Popup Shown"},
    {"ShowPinPopup", "(ss)", [](UIManager& m, Arguments& a) { return m.showPinPopup(a.first, a.second); },
        DLOG_INFO, "Pin Popup Shown"},
    {"ShowFailedPopup", "(s)", [](UIManager& m, Arguments& a) { return m.showFailedPopup(a.first); },
        DLOG_DEBUG, "Failed Popup Shown"},
    {"ShowTnCPopup", nullptr, [](UIManager& m, Arguments&) { return m.showTncPopup(); }, DLOG_DEBUG,
        "Tnc  Popup Shown"},
    {"ShowApListPopup", nullptr, [](UIManager& m, Arguments&) { return m.showApListPopup(); }, DLOG_DEBUG,
        "AP List Popup Shown"},
    {"HidePopup", nullptr, [](UIManager& m, Arguments&) { return m.hidePopup(); }, DLOG_DEBUG, "Popup Hide"},
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
        callManager(
            g_dbus_method_invocation_get_method_name(call), g_dbus_method_invocation_get_parameters(call));
    } catch (...) {
        logCaught(__func__);
    }
    g_dbus_method_invocation_return_value(call, g_variant_new("(i)", 0));
}

void CTesselUIDbus::callManager(const char* method, GVariant* parameters)
{
    LOGI("Call %s method", method);
    const auto* row = std::find_if(std::begin(kMethods), std::end(kMethods),
        [method](const MethodRow& candidate) { return g_strcmp0(method, candidate.name) == 0; });
    if (row == std::end(kMethods)) {
        LOGE("Method name did not match");
        return;
    }
    if (row == kMethods)
        LOGI("Method name matched to ShowMobileGuide");
    Arguments arguments = unpack(parameters, row->signature);
    if (m_pUIManager && row->call(*m_pUIManager, arguments) != 0)
        TESSEL_LOG(row->priority, "%s", row->line);
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
