// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Life of the popup: construction, countdown, buttons, end.

#include "PinPopup.h"

#include "Guard.h"
#include "Log.h"
#include "OutsideNames.h"
#include "TesselUI.h"
#include "UIManager.h"
#include "vconf.h"

#include <utility>

namespace TesselUI {

namespace {

constexpr int kCountdown = 120;
constexpr int kFailureCountdown = 10;

} // namespace

PinPopup::PinPopup(Evas_Object* parent, TSPOPUP_TYPE type, UIManager* manager, Elm_Flux_Popup_Style style)
    : CNetworkPopup(parent, style)
    , m_window(parent)
    , m_type(type)
    , m_manager(manager)
{
    LOGI("START");
    if (m_type == TS_POPUP_PIN)
        m_addContentArea();
    else if (m_type == TS_POPUP_GUIDE)
        prepareGuide();
    if (m_type != TS_POPUP_GUIDE) {
        m_countdown = kCountdown;
        setPopUpExpirationTimer();
    }
}

PinPopup::~PinPopup()
{
    if (m_type == TS_POPUP_WIFI_FAILED || m_type == TS_POPUP_TNC || m_type == TS_POPUP_SSO_FAILED)
        elm_win_lower(m_window);
    if (m_tooltipTimer)
        ecore_timer_del(std::exchange(m_tooltipTimer, nullptr));
    m_pendingJob.reset();
}

void PinPopup::setMesg(std::string& message, std::string& mobileName)
{
    LOGI("Set Meassge [%s] Mobile Name =  [%s]", message.c_str(), mobileName.c_str());
    m_message = message;
    m_mobileName = mobileName;
}

void PinPopup::show()
{
    m_keepFocus = true;
    m_isAnswered = false;
    if (m_type == TS_POPUP_PIN)
        showPinText();
    else if (m_type == TS_POPUP_GUIDE)
        showGuideText();
    else if (const TextRow* row = rowOf(m_type))
        showText(*row);
    else
        m_keepFocus = false;
    evas_object_show(m_window);
    elm_win_raise(m_window);
    setFocusOnButton1(true);
    m_wholeCountdown = m_countdown;
    tellCountdown();
    CNetworkPopup::show();
}

void PinPopup::setPopUpExpirationTimer()
{
    LOGI("SetPopUpExpirationTimer");
    if (m_type == TS_POPUP_WIFI_FAILED || m_type == TS_POPUP_SSO_FAILED) {
        LOGI("SetPopUpExpirationTimer: set 10 seconds timer for WIFI FAILED or SSO Failed popups");
        m_countdown = kFailureCountdown;
    }
    addTimer(1);
}

Eina_Bool PinPopup::t_OnTimeout(void*)
{
    LOGI("++PBC Timer Entered [%d]", m_countdown);
    if (m_countdown == 0) {
        LOGI("PBC Timer expires");
        m_keepFocus = false;
        CTesselUI::stopTesselRequest(false, true);
        markReady(__func__);
        return ECORE_CALLBACK_CANCEL;
    }
    if (m_keepFocus && !elm_object_focus_get(m_popup)) {
        LOGI("[Focus is not in button Set Focus");
        bindFocusOnButton();
    }
    --m_countdown;
    tellCountdown();
    return ECORE_CALLBACK_RENEW;
}

/// The popup shows what is left where its platform can; the guide waits for as long as it takes.
void PinPopup::tellCountdown()
{
    if (!m_timer)
        return;
    const std::string signal =
        "countdown," + std::to_string(m_countdown) + "," + std::to_string(m_wholeCountdown);
    elm_object_signal_emit(m_popup, signal.c_str(), "");
}

/// Whoever waits for the key learns that the PIN is off the screen; the other contents leave it alone.
void PinPopup::markReady(const char* function)
{
    if (m_type == TS_POPUP_PIN && vconf_set_int(kReadyKey, 1) != VCONF_OK)
        LOGE_AS(function, "Failed to set %s", kReadyKey);
}

/// The exit is asked for before the stop, which blocks until the daemon answers: the loop ends right after.
void PinPopup::t_CenterButtonClicked()
{
    if (std::exchange(m_isAnswered, true))
        return;
    LOGI("Close Button Clicked");
    m_keepFocus = false;
    deleteTimer();
    hide();
    elm_win_lower(m_window);
    markReady(__func__);
    LOGI("Close Popups, stop Tessel, exit from App");
    elm_exit();
    CTesselUI::stopTesselRequest(true, false);
}

void PinPopup::t_Button2Clicked()
{
    if (std::exchange(m_isAnswered, true))
        return;
    LOGI("Close Button Clicked");
    m_keepFocus = false;
    hide();
    elm_win_lower(m_window);
    LOGI("Close Popups, stop Tessel, exit from App");
    elm_exit();
    CTesselUI::stopTesselRequest(true, false);
}

/// The next popup deletes this one, which must not happen under the button's own click.
void PinPopup::t_Button1Clicked()
{
    if (m_isAnswered && !m_pendingJob)
        return; // closed already
    m_isAnswered = true;
    LOGI("Clos Button Clicked");
    m_keepFocus = false;
    m_pendingJob.reset(ecore_job_add(m_OnIdleTimeout, this));
}

void PinPopup::m_OnIdleTimeout(void* data)
try {
    LOGI("START");
    auto* popup = static_cast<PinPopup*>(data);
    UIManager* manager = popup->m_manager;
    popup->destroy();
    // Deleting the job that runs is allowed; later the handle would be dead.
    popup->m_pendingJob.reset();
    if (manager)
        manager->showApListPopup();
    LOGI("END");
} catch (...) {
    logCaught(__func__);
}

void PinPopup::t_OnKeyDown(void*)
{
    LOGI("START");
}

Eina_Bool PinPopup::ToolTimerCB(void* data)
try {
    LOGI("ToolTimerCB");
    if (auto* popup = static_cast<PinPopup*>(data)) {
        popup->m_tooltipTimer = nullptr;
        popup->ShowToolTip();
    }
    return ECORE_CALLBACK_CANCEL;
} catch (...) {
    logCaught(__func__);
    return ECORE_CALLBACK_CANCEL;
}

} // namespace TesselUI
