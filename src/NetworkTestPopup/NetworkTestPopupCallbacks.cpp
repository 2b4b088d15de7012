/// What the toolkit calls, and the text helpers.

#include "NetworkTestPopup.h"

#include "Guard.h"
#include "Log.h"
#include "ProgressParts.h"
#include "TesselUI.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <utility>

namespace TesselUI {

namespace {

constexpr int kFocusTicks = 20;

constexpr std::size_t kMarkedNameSize = 255;

} // namespace

Eina_Bool CNetwokTestPopup::focusTimerExpired(void* data)
{
    auto* popup = static_cast<CNetwokTestPopup*>(data);
    if (!popup)
        return ECORE_CALLBACK_RENEW;
    ++popup->m_focusTicks;
    if (!popup->m_focusTarget || !elm_object_focus_get(popup->m_focusTarget)) {
        LOGI("[Focus is not in Close Button],Set Focus");
        popup->bindFocusToOneObject(popup->m_focusTarget);
    }
    if (popup->m_focusTicks < kFocusTicks)
        return ECORE_CALLBACK_RENEW;
    popup->m_focusTimer = nullptr; // the toolkit frees a timer that ends
    return ECORE_CALLBACK_CANCEL;
}

void CNetwokTestPopup::bindFocusToOneObject(Evas_Object* obj)
{
    if (!obj)
        return;
    for (Elm_Focus_Direction direction : {ELM_FOCUS_UP, ELM_FOCUS_DOWN, ELM_FOCUS_LEFT, ELM_FOCUS_RIGHT})
        elm_object_focus_next_object_set(obj, obj, direction);
    elm_object_focus_set(obj, EINA_TRUE);
}

void CNetwokTestPopup::leaveScreen()
{
    m_superseded.hide();
    TesselUI::leaveScreen(m_window, {m_cancelPopup, m_popup, m_dimBase});
}

void CNetwokTestPopup::cancelBtnCB(void* data, Evas_Object*, void*)
try {
    LOGI("clicked on cancelBtnCB");
    auto* popup = static_cast<CNetwokTestPopup*>(data);
    if (!popup) {
        LOGE("User Data is NULL, can not proceed");
        return;
    }
    if (popup->m_isAnswered)
        return;
    popup->m_superseded.push(
        std::exchange(popup->m_cancelPopup, addCancelConfirmation(popup->m_box, yesBtnCB, noBtnCb, popup)));
} catch (...) {
    logCaught(__func__);
}

/// The stop blocks until the daemon answers, so the screen is given back and the exit asked for before it.
/// The popups themselves go with the application.
void CNetwokTestPopup::yesBtnCB(void* data, Evas_Object*, void*)
try {
    auto* popup = static_cast<CNetwokTestPopup*>(data);
    if (popup && std::exchange(popup->m_isAnswered, true))
        return;
    LOGI("clicked on CloseBtnCB");
    LOGI("Close Popups, stop Tessel, exit from App");
    if (popup)
        popup->leaveScreen();
    elm_exit();
    CTesselUI::stopTesselRequest(true, false);
} catch (...) {
    logCaught(__func__);
}

void CNetwokTestPopup::noBtnCb(void* data, Evas_Object*, void*)
try {
    LOGI("clicked on NoBtnCB");
    auto* popup = static_cast<CNetwokTestPopup*>(data);
    if (!popup) {
        LOGE("User Data is NULL, can not delete cancel PopUp");
        return;
    }
    if (popup->m_isAnswered)
        return;
    if (Evas_Object* answered = std::exchange(popup->m_cancelPopup, popup->m_superseded.pop()))
        evas_object_del(answered);
} catch (...) {
    logCaught(__func__);
}

char* CNetwokTestPopup::func(char* text)
{
    if (!text)
        return nullptr;
    constexpr std::string_view kEscaped = "&amp;";
    const std::string_view source = text;
    const auto ampersands = static_cast<std::size_t>(std::count(source.begin(), source.end(), '&'));
    char* escaped = static_cast<char*>(malloc(source.size() + 1 + ampersands * (kEscaped.size() - 1)));
    if (!escaped)
        return nullptr;
    char* out = escaped;
    for (char c : source) {
        if (c == '&')
            out += kEscaped.copy(out, kEscaped.size());
        else
            *out++ = c;
    }
    *out = '\0';
    return escaped;
}

char* CNetwokTestPopup::addLTRMarker(char* text)
{
    if (!text)
        return nullptr;
    char marked[kMarkedNameSize] = {};
    snprintf(marked, sizeof marked, "%s%s%s", "&#x200e;", text, "&#x200f;");
    return strdup(marked);
}

int CNetwokTestPopup::power(int base, int exponent)
{
    // Unsigned, so that a product too large wraps instead of being undefined.
    unsigned int result = 1;
    for (int i = 0; i < exponent; ++i)
        result *= static_cast<unsigned int>(base);
    return static_cast<int>(result);
}

} // namespace TesselUI
