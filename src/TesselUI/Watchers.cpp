// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The settings keys that the application watches, and what it does when they change.

#include "Guard.h"
#include "Log.h"
#include "OutsideNames.h"
#include "TesselUI.h"
#include "UIManager.h"

#include <Elementary.h>

namespace TesselUI {

const char* const TESSEL_VCONF = kRequestKey;
const char* const DEVICE_OWNED_VCONF = kDeviceOwnedKey;

namespace {

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

} // namespace TesselUI
