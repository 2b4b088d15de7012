// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Tessel_Conn_Comm_Func.h"

#include "Bounded.h"
#include "Log.h"
#include "OutsideNames.h"
#include "base/Handles.h"
#include "vconf.h"

#include <string>
#include <string_view>

namespace {

/// Shown when the store has no PIN, so that the caller has a number in every case.
constexpr int kFallbackPin = 5831;

int s_applicationMode = 0;
int s_popupType = -1;

struct ModePrefix {
    std::string_view prefix;
    int result;
};

/// Compared in this order.
constexpr ModePrefix kWizardModes[] = {
    {"OFF", 0},
    {"PNP_SETUP", 1},
    {"INITIAL_SETUP", 2},
    {"VELLUM_SETUP", 3},
};

} // namespace

int get_app_mode()
{
    return s_applicationMode;
}

void set_app_mode(int mode)
{
    s_applicationMode = mode;
    LOGI("application_mode = %d ", mode);
}

int Get_Random_PIN()
{
    int pin = kFallbackPin;
    if (vconf_get_int(TesselUI::kAudioPinKey, &pin) == VCONF_OK && pin > 0) {
        LOGI("Success to Read BLE PIN %d", pin);
        return pin;
    }
    LOGE("Failed to Get BLE Audio Pin %d", pin);
    return pin;
}

int Get_Security_Key(int* key)
{
    if (!key)
        return 0;
    if (vconf_get_int(TesselUI::kSecurityKeyKey, key) == VCONF_OK && *key > 0) {
        LOGI("Success to Read BLE PIN %d", *key);
        return 1;
    }
    LOGE("Failed to Get BLE Audio Pin ");
    return 0;
}

int get_tessel_popup_type()
{
    LOGI("Returned Pop Type %d", s_popupType);
    return s_popupType;
}

void set_tessel_popup_type(int type)
{
    s_popupType = type;
    LOGI(" tessel popup type = %d ", type);
}

void ExitFromTS() { }

int IGetWizardMode()
{
    const base::MallocStr value {vconf_get_str(TesselUI::kWizardModeKey)};
    if (!value)
        return 0;
    const std::string_view mode = value.get();
    int result = 0;
    for (const ModePrefix& row : kWizardModes) {
        if (mode.substr(0, row.prefix.size()) == row.prefix) {
            result = row.result;
            break;
        }
    }
    LOGI("IGetWizardMode %s %d", std::string(TesselUI::bounded(mode)).c_str(), result);
    return result;
}

bool IsHighContrastMode()
{
    int value = 0;
    if (vconf_get_int(TesselUI::kContrastKey, &value) != VCONF_OK) {
        LOGI("vconf_get_int %s error", TesselUI::kContrastKey);
        return false;
    }
    if (value == 1) {
        LOGI("Is high contrast mode");
        return true;
    }
    LOGI("Not high contrast mode");
    return false;
}
