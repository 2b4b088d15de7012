// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Util.h"

#include "Bounded.h"
#include "Log.h"
#include "OutsideNames.h"
#include "base/Handles.h"
#include "vconf.h"

#include <algorithm>
#include <string_view>

namespace TesselUI {

std::string TSUtil::m_vconfTesselStartVconf = kStartModeKey;
std::string TSUtil::m_vconfOOBEStatus = kOobStatusKey;
Ecore_Timer* TSUtil::m_StopTesselTimer = nullptr;

TSUtil* instance = nullptr;

namespace {

/// @param function  whose line it is
void setAndLog(const char* function, const std::string& key, int value)
{
    if (vconf_set_int(key.c_str(), value) == VCONF_OK)
        LOGI_AS(function, "Success to Set Vocnf Stop Tessel");
    else
        LOGE_AS(function, "Failed to set Vocnf Stop Tessel");
}

} // namespace

TSUtil::TSUtil()
{
    instance = this;
}

void TSUtil::StopTessel(bool setOobStatus)
{
    LOGD("Stop tessel");
    if (setOobStatus)
        setAndLog(__func__, m_vconfOOBEStatus, kOobStatusStopped);
    setAndLog(__func__, m_vconfTesselStartVconf, kStartModeStopped);
}

void TSUtil::SetStopTesselTimer(int seconds)
{
    LOGI("START");
    LOGI("Set OCF Mode as false");
    if (m_StopTesselTimer) {
        LOGI("Stop Tessel Timer Already running.");
        return;
    }
    m_StopTesselTimer = ecore_timer_add(static_cast<double>(seconds), StopTesselTimerFunc, nullptr);
}

Eina_Bool TSUtil::StopTesselTimerFunc(void*)
{
    LOGI("START");
    setAndLog(__func__, m_vconfTesselStartVconf, kStartModeStopped);
    m_StopTesselTimer = nullptr;
    return ECORE_CALLBACK_CANCEL;
}

void TSUtil::SetOOBStatus(int status)
{
    LOGI("START");
    LOGD("Set OOb val = %d", status);
    setAndLog(__func__, m_vconfOOBEStatus, status);
}

bool TSUtil::IsPageDisplayed(WIZRD_PAGE page)
{
    LOGI("START");
    const base::MallocStr current {vconf_get_str(kWizardPageKey)};
    if (!current) {
        LOGE("Failed to check wizard page  vconf");
        return false;
    }
    std::string_view wanted;
    switch (page) {
    case WIZRD_PAGE_NETWORK:
        wanted = "NetworkWireless";
        break;
    case WIZRD_PAGE_TERMS:
        wanted = "wizard-terms";
        break;
    case WIZRD_PAGE_SSO:
        wanted = "ug-sso-entry";
        break;
    default:
        LOGE("Not a valid page request");
        break;
    }
    return wanted == current.get();
}

bool TSUtil::IsAppRunning(MENU_APP_INDEX app)
{
    LOGI("START");
    const base::MallocStr mode {vconf_get_str(kWizardModeKey)};
    if (!mode) {
        LOGE("Failed to check IsAppRunning  vconf");
        return false;
    }
    std::string_view wanted;
    if (app == MENU_APP_NETWORK_SETUP)
        wanted = "NETWORK_SETUP";
    else if (app == MENU_APP_SSO_ALONE_SETUP)
        wanted = "SSO_ALONE_SETUP";
    return wanted == mode.get();
}

bool TSUtil::IsWizardMode()
{
    LOGI("START");
    const base::MallocStr mode {vconf_get_str(kWizardModeKey)};
    if (!mode) {
        LOGE("Failed to check wizard mode vconf");
        return false;
    }
    LOGD("Wizard Mode [%s]", std::string(bounded(mode.get())).c_str());
    constexpr std::string_view kOutsideWizard[] = {"OFF", "TERMS_SETUP", "HOTPLUG_SETUP"};
    return std::find(std::begin(kOutsideWizard), std::end(kOutsideWizard), mode.get())
        == std::end(kOutsideWizard);
}

std::string TSUtil::GetBLETVName()
{
    const base::MallocStr name {vconf_get_str(kTvNameKey)};
    std::string kept(bounded(name.get()));
    LOGI("mobile name %s", name ? kept.c_str() : "(null)");
    return kept;
}

} // namespace TesselUI
