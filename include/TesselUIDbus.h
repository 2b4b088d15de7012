// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The program's own service on the system bus.
#pragma once

#include "CallQueue.h"
#include "Cookie.h"

#include <gio/gio.h>

#include <memory>

namespace TesselUI {

class CTesselUI;
class UIManager;

/// Owns the name "com.norvale.orbis.tessel.ui" and the object through which the setup daemon shows and hides
/// popups; path and interface come from the introspection file. Owned by CTesselUI, shares its UIManager.
/// Every call is answered "(i)" 0, in the order of arrival; one that is not served any more when the object
/// goes is refused. Main loop only; failures are logged, a failed registration is also reported through
/// CTesselUI::dbusServerStarted(false).
class CTesselUIDbus {
public:
    /// @param manager  shared
    /// @param app      borrowed, outlives this object
    CTesselUIDbus(std::shared_ptr<UIManager> manager, CTesselUI* app);
    ~CTesselUIDbus();
    CTesselUIDbus(const CTesselUIDbus&) = delete;
    CTesselUIDbus& operator=(const CTesselUIDbus&) = delete;

    /// Reads the introspection file and opens the system bus.
    void create();

    /// (Re)acquires the bus name; the object is registered once the bus is there.
    void connectDbus();

    /// Goes on with the name and the unserved calls of @p former, which this object replaces.
    void takeOver(CTesselUIDbus& former);

    /// Gives name, object and connection back; harmless a second time. @return true
    bool destroy();

    static void m_OnBusAcquired(GDBusConnection* connection, const char* name, void* user_data);
    static void m_OnNameAcquired(GDBusConnection* connection, const char* name, void* user_data);
    static void m_OnNameLost(GDBusConnection* connection, const char* name, void* user_data);
    static void m_OnMethodCall(GDBusConnection* connection, const char* sender, const char* object_path,
        const char* interface_name, const char* method_name, GVariant* parameters,
        GDBusMethodInvocation* invocation, void* user_data);

    /// Copies @p size bytes of the value's serialised form, or as many as there are, into @p out.
    static void getParams(GVariant* value, void* out, int size);

private:
    static const GDBusInterfaceVTable m_InterfaceVtable;

    static void on_nameNotGranted(GDBusConnection* connection, const char* name, void* user_data);
    static void on_closed(GDBusConnection* connection, gboolean vanished, GError* error, void* user_data);

    unsigned int registerObject();
    void setConnection(GDBusConnection* connection);
    void askForName();
    void giveNameBack();
    void serve(GDBusMethodInvocation* call);
    void callManager(const char* function, const char* method, GVariant* parameters);

    std::shared_ptr<UIManager> m_pUIManager;
    CTesselUI* m_app; ///< borrowed
    unsigned int m_ownerId = 0; ///< 0 when no name is asked for
    unsigned int m_registrationId = 0; ///< 0 when no object is registered
    GDBusNodeInfo* m_nodeInfo = nullptr; ///< owned; null when the file is missing or broken
    GDBusConnection* m_acquired = nullptr; ///< referenced: the name-owning machinery may let go first
    GDBusConnection* m_connection = nullptr; ///< owned
    GObject* m_reserved = nullptr; ///< owned, never set here
    bool m_holdsName = false; ///< asked for by this object, so it is the one to release it
    unsigned long m_closedHandler = 0; ///< on m_acquired; 0 for none
    CallQueue m_calls;
    Cookie<CTesselUIDbus> m_cookie;
};

} // namespace TesselUI
