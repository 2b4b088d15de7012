// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What the toolkit calls, and the text helpers.

#include "NetworkTestPopup.h"

#include "Guard.h"
#include "Log.h"
#include "PopupParts.h"
#include "TesselUI.h"
#include "ToolkitObjects.h"
#include "Util.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace TesselUI {

namespace {

constexpr int kFocusTicks = 20;

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
    lockFocus(obj);
    elm_object_focus_set(obj, EINA_TRUE);
}

void CNetwokTestPopup::leaveScreen()
{
    m_question.hide();
    TesselUI::leaveScreen(m_window, {m_popup, m_dimBase});
}

void CNetwokTestPopup::cancelBtnCB(void* data, Evas_Object*, void*)
try {
    LOGI("clicked on cancelBtnCB");
    auto* popup = static_cast<CNetwokTestPopup*>(data);
    if (!popup) {
        LOGE("User Data is NULL, can not proceed");
        return;
    }
    popup->m_question.ask(popup->m_box, yesBtnCB, noBtnCb, popup);
} catch (...) {
    logCaught(__func__);
}

/// The stop blocks until the daemon answers, so the screen is given back and the exit asked for before it.
/// The popups themselves go with the application.
void CNetwokTestPopup::yesBtnCB(void* data, Evas_Object*, void*)
try {
    auto* popup = static_cast<CNetwokTestPopup*>(data);
    if (popup && !popup->m_question.answer())
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
    popup->m_question.takeBack();
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
    return enclosed("&#x200e;", text, "&#x200f;");
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
