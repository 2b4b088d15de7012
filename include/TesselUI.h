// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The application: one object a process, from the loop's start to its end.
#pragma once

#include "app.h"
#include "vconf.h"

#include <json/forwards.h>

#include <memory>
#include <string>

namespace TesselUI {

class BusReturn;
class CTesselUIDbus;
class TesselDbusClient;
class UIManager;

/// Settings key that carries a popup request as JSON.
extern const char* const TESSEL_VCONF;

/// Settings key that is 1 once the phone has taken ownership of the TV.
extern const char* const DEVICE_OWNED_VCONF;

/// Owns the two bus ends and shares the UIManager with the service. Callbacks without an object of their
/// own find it through getInstance(). Main loop only.
class CTesselUI {
public:
    /// Makes the one instance, or returns the one there is; null, and the loop ends, when memory is short.
    static CTesselUI* createInstance();

    /// @return the instance, borrowed; null, and the loop is asked to end, when there is none
    static CTesselUI* getInstance();

    static void destroyInstance();

    CTesselUI(const CTesselUI&) = delete;
    CTesselUI& operator=(const CTesselUI&) = delete;

    /// Makes the UIManager with its window, and the client of the setup daemon.
    void createWin();

    // Lifecycle of the platform's application loop.
    static bool OnCreate(void* user_data);
    static void OnTerminate(void* user_data);
    static void OnPause(void* user_data);
    static void OnResume(void* user_data);
    static void OnService(app_control_h request, void* user_data);
    static void OnLanguage(void* user_data);

    /// Watches the three settings keys; a failure is logged and nothing else.
    void m_RegisterTesselVconf();
    void m_DeRegisterTesselVconf();

    static void m_OnTesselVconfKeyChanged(keynode_t* node, void* user_data);
    static void m_OnDeviceOwned(keynode_t* node, void* user_data);

    /// Shows the popup that the JSON text in TESSEL_VCONF asks for.
    static void m_OnMethodPopup(keynode_t* node, void* user_data);

    /// Tells the daemon that the viewer stopped the set-up and marks it stopped in the settings store. The
    /// program goes on until the daemon ends it.
    /// @param first   true: the viewer closed a popup; false: a popup gave up
    /// @param second  accepted and not passed on: the daemon always gets false
    static void stopTesselRequest(bool first, bool second);

    /// The client has its proxy (@p created), or will not get one. With it the program's own service starts,
    /// in place of an earlier one.
    void dbusClientObjectCreated(bool created);

    /// The connection of the client was closed. Once the bus is back, a fresh client starts all over.
    void busClosed();

    /// The program's own service is on the bus, or could not get there; the daemon is told.
    void dbusServerStarted(bool started);

    /// @return the member @p key of the last request as a text; "" when there is none
    std::string GetJsonData(std::string key);

private:
    CTesselUI();
    ~CTesselUI();

    static void connectAhead();
    void makeClient();
    bool startAgain();
    void serveRequest(const char* function);

    TesselDbusClient* m_pDbusClient; ///< owned
    CTesselUIDbus* m_pUIDbus; ///< owned; null until the client is ready
    std::shared_ptr<UIManager> m_pUIManager;
    /// The last request; never null. Apart, so that who needs this class need not know JSON.
    std::unique_ptr<Json::Value> m_root;
    std::unique_ptr<BusReturn> m_busReturn; ///< while the bus is gone

    static CTesselUI* m_pInstance;
};

} // namespace TesselUI
