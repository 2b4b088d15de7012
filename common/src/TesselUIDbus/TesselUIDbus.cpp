#include "TesselUIDbus.h"

#include "Handles.h"
#include "Log.h"
#include "Paths.h"
#include "TesselUI.h"
#include "UIManager.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

namespace TesselUI {

namespace {

constexpr const char* kServiceName = "com.norvale.orbis.tessel.ui";

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
    gchar* first = nullptr;
    gchar* second = nullptr;
    if (strcmp(signature, "(ss)") == 0)
        g_variant_get(parameters, "(ss)", &first, &second);
    else
        g_variant_get(parameters, "(s)", &first);
    const GStr firstOwner {first};
    const GStr secondOwner {second};
    arguments.first = first ? first : "";
    arguments.second = second ? second : "";
    return arguments;
}

} // namespace

const GDBusInterfaceVTable CTesselUIDbus::m_InterfaceVtable = {m_OnMethodCall, nullptr, nullptr, {nullptr}};

CTesselUIDbus::CTesselUIDbus(std::shared_ptr<UIManager> manager, CTesselUI* app)
    : m_pUIManager(std::move(manager))
    , m_app(app)
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
    const GStr xml {contents};
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
    const ErrorPtr error {raw};
    if (!m_connection) {
        LOGE("Could not connect to system bus: Error code: %d  Error msg: %s", error ? error->code : 0,
            error ? error->message : "");
        return;
    }
    g_dbus_connection_set_exit_on_close(m_connection, FALSE);
    LOGI("End CTesselUIDbus::Create");
}

void CTesselUIDbus::connectDbus()
{
    LOGI("Start ReconnectDbus");
    if (m_ownerId != 0)
        g_bus_unown_name(m_ownerId);
    if (m_acquired && m_registrationId != 0)
        g_dbus_connection_unregister_object(m_acquired, m_registrationId);
    m_ownerId = g_bus_own_name(G_BUS_TYPE_SYSTEM, kServiceName, G_BUS_NAME_OWNER_FLAGS_NONE, m_OnBusAcquired,
        m_OnNameAcquired, m_OnNameLost, m_cookie.userData(), nullptr);
    if (m_ownerId == 0)
        LOGE("g_bus_own_name failed");
    else
        LOGI("End ReconnectDbus");
}

bool CTesselUIDbus::destroy()
{
    LOGI("");
    if (m_ownerId != 0)
        g_bus_unown_name(std::exchange(m_ownerId, 0));
    // Cleared as well, because a second call must not release it again.
    g_clear_pointer(&m_nodeInfo, g_dbus_node_info_unref);
    g_clear_object(&m_connection);
    g_clear_object(&m_reserved);
    if (m_acquired && m_registrationId != 0)
        g_dbus_connection_unregister_object(m_acquired, std::exchange(m_registrationId, 0));
    g_clear_object(&m_acquired);
    return true;
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
{
    LOGI("Start m_OnBusAcquired");
    CTesselUIDbus* self = Cookie<CTesselUIDbus>::find(user_data);
    if (!self) {
        LOGE("Could Not get Instance or deleted");
        return;
    }
    g_set_object(&self->m_acquired, connection);
    if (connection)
        g_dbus_connection_set_exit_on_close(connection, FALSE);
    else
        LOGE("Error -> pconnection is NULL");
    self->m_registrationId = self->registerObject();
    if (self->m_registrationId == 0)
        LOGE("Could not register Object ");
    else
        LOGI("Object registered Successfully");
    self->m_app->dbusServerStarted(self->m_registrationId != 0);
    LOGI("End m_OnBusAcquired");
}

void CTesselUIDbus::m_OnNameAcquired(GDBusConnection*, const char*, void*)
{
    LOGI("");
}

void CTesselUIDbus::m_OnNameLost(GDBusConnection*, const char*, void*)
{
    LOGI("");
}

void CTesselUIDbus::m_OnMethodCall(GDBusConnection*, const char*, const char*, const char*,
    const char* method_name, GVariant* parameters, GDBusMethodInvocation* invocation, void* user_data)
{
    LOGI("Call %s method", method_name);
    auto* self = static_cast<CTesselUIDbus*>(user_data);
    if (!self) {
        LOGE("Cult not get Instance");
        g_clear_object(&invocation); // without an answer; the caller's own time-out ends the wait
        return;
    }
    const auto* row = std::find_if(std::begin(kMethods), std::end(kMethods),
        [method_name](const MethodRow& candidate) { return g_strcmp0(method_name, candidate.name) == 0; });
    if (row == std::end(kMethods)) {
        LOGE("Method name did not match");
    } else {
        if (row == kMethods)
            LOGI("Method name matched to ShowMobileGuide");
        Arguments arguments = unpack(parameters, row->signature);
        if (self->m_pUIManager && row->call(*self->m_pUIManager, arguments) != 0)
            TESSEL_LOG(row->priority, "%s", row->line);
    }
    g_dbus_method_invocation_return_value(invocation, g_variant_new("(i)", 0));
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
