// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What the toolkit calls, and the base's own answers to it.

#include "NetworkPopup.h"

#include "Guard.h"
#include "Log.h"

#include <string>

namespace TesselUI {

Eina_Bool CNetworkPopup::t_OnTimeout(void*)
{
    return ECORE_CALLBACK_RENEW;
}

void CNetworkPopup::t_Button1Clicked() { }

void CNetworkPopup::t_Button2Clicked() { }

void CNetworkPopup::t_CenterButtonClicked() { }

void CNetworkPopup::t_CentreButtonFocussed() { }

void CNetworkPopup::t_OnKeyDown(void* event_info)
{
    LOGI("START");
    const auto* event = static_cast<Evas_Event_Key_Down*>(event_info);
    const std::string key = event && event->keyname ? event->keyname : "";
    // Neither closes anything: a popup that wants a key to act overrides this.
    if (key == "Escape" || key == "r" || key == "XF86Back")
        LOGI("Escape/r/Back key pressed \n\n");
    else if (key == "Menu" || key == "XF86SysMenu")
        LOGI("Menu key pressed. Exit Application\n\n");
    LOGI("END");
}

void CNetworkPopup::on_Button1Clicked(void* data, Evas_Object*, void*)
try {
    if (data)
        static_cast<CNetworkPopup*>(data)->t_Button1Clicked();
} catch (...) {
    logCaught(__func__);
}

void CNetworkPopup::on_Button2Clicked(void* data, Evas_Object*, void*)
try {
    if (!data)
        return;
    LOGI("on_Button2Clicked");
    static_cast<CNetworkPopup*>(data)->t_Button2Clicked();
} catch (...) {
    logCaught(__func__);
}

void CNetworkPopup::on_CentreButtonClicked(void* data, Evas_Object*, void*)
try {
    if (data)
        static_cast<CNetworkPopup*>(data)->t_CenterButtonClicked();
} catch (...) {
    logCaught(__func__);
}

void CNetworkPopup::on_CentreButtonFocussed(void* data, Evas_Object*, void*)
try {
    if (data)
        static_cast<CNetworkPopup*>(data)->t_CentreButtonFocussed();
} catch (...) {
    logCaught(__func__);
}

void CNetworkPopup::onKeyDown(void* data, Evas*, Evas_Object*, void* event_info)
try {
    if (data)
        static_cast<CNetworkPopup*>(data)->t_OnKeyDown(event_info);
} catch (...) {
    logCaught(__func__);
}

void CNetworkPopup::on_MouseInFocuscb(void*, Evas*, Evas_Object* obj, void*)
{
    LOGD("ENTRY");
    LOGD("ENTRY");
    elm_object_focus_set(obj, EINA_TRUE);
}

/// Runs after all other handlers of the key, also when one of them deleted the popup, so it gets no popup.
void CNetworkPopup::handleReturnExitKey(void*, Evas*, Evas_Object*, void* event_info)
try {
    const auto* event = static_cast<Evas_Event_Key_Down*>(event_info);
    const std::string key = event && event->keyname ? event->keyname : "";
    if (key == "XF86Back")
        LOGD("Exit Key is Pressed,Exiting...");
    else if (key == "XF86Close")
        LOGD("Return Key is Pressed,Exiting...");
} catch (...) {
    logCaught(__func__);
}

Eina_Bool CNetworkPopup::m_TimerCB(void* data)
{
    auto* popup = static_cast<CNetworkPopup*>(data);
    if (!popup)
        return ECORE_CALLBACK_CANCEL;
    const std::weak_ptr<char> alive = popup->m_alive;
    Ecore_Timer* const before = popup->m_timer;
    Eina_Bool goesOn = ECORE_CALLBACK_RENEW;
    try {
        goesOn = popup->t_OnTimeout(data);
    } catch (...) {
        logCaught(__func__); // one tick is lost, not the countdown
    }
    if (alive.expired())
        return ECORE_CALLBACK_CANCEL;
    // The toolkit frees a timer that ends, and may give its handle to another one. A timer that the tick
    // itself started stays.
    if (!goesOn && popup->m_timer == before)
        popup->deleteTimer();
    return goesOn;
}

} // namespace TesselUI
