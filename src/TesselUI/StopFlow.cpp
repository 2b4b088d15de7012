/// The application's reactions to settings keys, the stop that goes back to the daemon, and the hand-shake of
/// the two bus ends.

#include "Guard.h"
#include "Log.h"
#include "TesselDbusClient.h"
#include "TesselUI.h"
#include "TesselUIDbus.h"
#include "UIManager.h"

#include <Elementary.h>

#include <utility>

namespace TesselUI {

const char* const TESSEL_VCONF = "db/tessel/mobile_oobe";
const char* const DEVICE_OWNED_VCONF = "memory/menu/network/tessel_ocf_device_owned";

namespace {

constexpr const char* kStartModeKey = "db/menu/network/tessel_startmode";

constexpr int kStartModeExit = 100; ///< written by the daemon: the program ends
constexpr int kStartModeStopped = 5; ///< written here: the viewer stopped the set-up

constexpr int kOwned = 1; ///< the phone has taken ownership of the TV

/// One watched key, and what is logged of it. That ending a watch reports success with the words of the
/// registration is how these logs have always read.
struct Watch {
    const char* key;
    vconf_callback_fn callback;
    const char* registered;
    const char* notRegistered;
    const char* ignored;
    const char* notIgnored;
};

constexpr int kWatches = 3;

const Watch& watchAt(int index)
{
    static const Watch s_watches[kWatches] = {
        {TESSEL_VCONF, CTesselUI::m_OnMethodPopup, "Success to register VCONF_KEY_MOBILEOOBE callback",
            "Failed to register VCONF_KEY_MOBILEOOBE callback",
            "Success to register VCONF_KEY_MOBILEOOBE ignore",
            "Failed to register VCONF_KEY_MOBILEOOBE ignore"},
        {DEVICE_OWNED_VCONF, CTesselUI::m_OnDeviceOwned, "Success to register DEVICE_OWNED_VCONF callback",
            "Failed to register DEVICE_OWNED_VCONF callback",
            "Success to register DEVICE_OWNED_VCONF callback",
            "Failed to register DEVICE_OWNED_VCONF callback"},
        {kStartModeKey, CTesselUI::m_OnTesselVconfKeyChanged, "Success to register VCONFKEY_TESSEL_STARTMODE",
            "Failed to register VCONFKEY_TESSEL_STARTMODE callback",
            "Success to Deregister VCONFKEY_TESSEL_STARTMODE callback",
            "Failed to Deregister VCONFKEY_TESSEL_STARTMODE callback"},
    };
    return s_watches[index];
}

} // namespace

void CTesselUI::m_RegisterTesselVconf()
{
    LOGI("Inside registerTesselVconf");
    for (int i = 0; i < kWatches; ++i) {
        const Watch& watch = watchAt(i);
        if (vconf_notify_key_changed(watch.key, watch.callback, this) == VCONF_OK)
            LOGI("%s", watch.registered);
        else
            LOGE("%s", watch.notRegistered);
    }
}

void CTesselUI::m_DeRegisterTesselVconf()
{
    LOGI("Inside deRegisterTesselVconf");
    for (int i = 0; i < kWatches; ++i) {
        const Watch& watch = watchAt(i);
        if (vconf_ignore_key_changed(watch.key, watch.callback) == VCONF_OK)
            LOGI("%s", watch.ignored);
        else
            LOGE("%s", watch.notIgnored);
    }
}

void CTesselUI::m_OnTesselVconfKeyChanged(keynode_t*, void*)
try {
    LOGI("START");
    int mode = 0;
    vconf_get_int(kStartModeKey, &mode);
    if (mode == kStartModeExit) {
        LOGI("Exiting APP");
        elm_exit();
    }
    LOGI("END");
} catch (...) {
    logCaught(__func__);
}

void CTesselUI::m_OnDeviceOwned(keynode_t*, void*)
try {
    LOGI("");
    int owned = -1;
    vconf_get_int(DEVICE_OWNED_VCONF, &owned);
    LOGI("DEVICE_OWNED_VCONF == %d", owned);
    if (owned != kOwned)
        return;
    CTesselUI* instance = getInstance();
    if (instance && instance->m_pUIManager && instance->m_pUIManager->showAfterPairingPopup() != 0)
        LOGI("AfterPairingPopup Shown");
} catch (...) {
    logCaught(__func__);
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
    // The new service is there before the old one goes, so that the name is never without an owner.
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
