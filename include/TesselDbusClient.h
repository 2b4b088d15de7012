// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The program's client of the setup daemon.
#pragma once

#include "Cookie.h"

#include <gio/gio.h>

#include <string>

namespace TesselUI {

class CTesselUI;

/// Tells the setup daemon that the program's own service is up, and that the viewer stopped the set-up.
/// Owned by CTesselUI; main loop only. Its calls are synchronous and block the loop until the daemon answers
/// or the bus library's time-out (25 seconds) is over. Failures are logged and end there; a connection that
/// is closed later is reported through CTesselUI::busClosed(), and this object stays without one.
class TesselDbusClient {
public:
    /// Opens the system bus and asks for a proxy of the daemon; the outcome reaches
    /// CTesselUI::dbusClientObjectCreated() later, from the loop, unless the bus cannot be opened.
    /// @param app  borrowed, outlives this object
    explicit TesselDbusClient(CTesselUI* app);
    ~TesselDbusClient();
    TesselDbusClient(const TesselDbusClient&) = delete;
    TesselDbusClient& operator=(const TesselDbusClient&) = delete;

    /// @param started  whether the program's own object is registered on the bus
    void dbusServerStarted(bool started);

    /// @param first   true: the viewer closed a popup; false: a popup gave up
    /// @param second  passed on as it is
    void stopTessel(bool first, bool second);

    /// @param parameters  a floating tuple, taken over in every case
    void sendMessageonDbus(std::string& method, GVariant* parameters);

private:
    static void proxyNewCallback(GObject* source, GAsyncResult* result, void* user_data);

    static void on_closed(GDBusConnection* connection, gboolean vanished, GError* error, void* user_data);

    GDBusConnection* m_connection = nullptr; ///< owned
    GDBusProxy* m_proxy = nullptr; ///< owned; null until the proxy is ready
    CTesselUI* m_app; ///< borrowed
    int m_reserved = 0;
    unsigned long m_closedHandler = 0; ///< on the connection
    Cookie<TesselDbusClient> m_cookie;
};

} // namespace TesselUI
