// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "SSOLoginPopup.h"

#include "Guard.h"
#include "Log.h"
#include "PopupParts.h"
#include "TesselUI.h"
#include "Tessel_Conn_Comm_Func.h"
#include "ToolkitObjects.h"
#include "Translated.h"
#include "Util.h"
#include "WidgetNumbers.h"
#include "base/Handles.h"
#include "combinate.h"

#include <elm_flux.h>

#include <cstdio>

namespace TesselUI {

namespace {

/// Values of the shared popup type.
constexpr int kSignInShown = 3;
constexpr int kNoneShown = -1;

} // namespace

CSSOPopup::CSSOPopup(Evas_Object* window, const std::string& mobileName, const std::string& loginId)
    : m_window(window)
    , m_mobileName(mobileName)
    , m_loginId(loginId)
{
    LOGD("SSO Popup create new");
    create();
}

/// destroy() leaves the box; it would stay in the window for each popup that was shown.
CSSOPopup::~CSSOPopup()
{
    destroy();
    deleteObject(m_box);
}

void CSSOPopup::create()
{
    if (!m_window) {
        LOGE("Failed to Allocate Memory");
        return;
    }
    elm_object_signal_emit(m_window, "SetDim", "");
    createDimBase();
    if (createPopup())
        set_tessel_popup_type(kSignInShown);
    else
        LOGE("[Fail to Create Popup");
}

bool CSSOPopup::createDimBase()
{
    m_dimBase = elm_layout_add(m_window);
    return !m_dimBase;
}

bool CSSOPopup::createPopup()
{
    m_box = addProgressBox(m_window);
    m_popup = elm_flux_popup_add(m_box);
    if (!m_popup) {
        deleteObject(m_dimBase);
        return false;
    }
    elm_flux_popup_style_set(m_popup, kDefaultStyle);
    const std::string title = translated("COM_TV_SID_TESSEL");
    elm_flux_popup_title_set(m_popup, title.c_str());
    const ProgressLayouts layouts = addProgressLayouts(m_popup);
    m_mainLayout = layouts.main;
    m_contentLayout = layouts.content;
    m_speechText = title;
    createProgressBar();
    setTextMobileName();
    setTextNorvaleAccount();
    createCancelButton();
    LOGD("m_mainLayout = %p", static_cast<void*>(m_mainLayout));
    setProgressContent(m_popup, m_mainLayout);
    return true;
}

void CSSOPopup::createProgressBar()
{
    destroyProgressBar();
    m_progressBar = addProgressIndicator(m_contentLayout);
}

void CSSOPopup::destroyProgressBar()
{
    deleteObject(m_progressBar);
}

void CSSOPopup::setTextMobileName()
{
    char line[kCombinedTextSize] = {};
    LOGI("__SetTextMobileName pcMobileName[%s]", m_mobileName.c_str());
    if (!m_mobileName.empty()) {
        if (const base::MallocStr phone {addLTRMarker(m_mobileName.data())})
            combinate_string(translated("TV_SID_TESSEL_MIX_INFORMATION_BELOW_RECEIVED_SIGNING_IN").c_str(),
                phone.get(), nullptr, line);
    }
    addFirstLine(m_contentLayout, line);
    m_speechText.append(", ").append(line);
}

void CSSOPopup::setTextNorvaleAccount()
{
    char line[kCombinedTextSize] = {};
    combinate_string(translated("TV_SID_MIX_NORVALE_ACCOUNT").c_str(), m_loginId.c_str(), nullptr, line);
    char marked[kMarkedTextSize] = {};
    snprintf(marked, sizeof marked, "%s%s%s", "<font=NorvaleSans-500 color=#29C5FF>", line, "</font>");
    m_speechText.append(", ").append(line);
    addSecondLine(m_mainLayout, marked);
}

void CSSOPopup::createCancelButton()
{
    const std::string label = translated("SID_CANCEL");
    Evas_Object* button = addPopupButton(m_popup, label, 0, cancelBtnCB, this);
    LOGI("TTS Text = %s", m_speechText.c_str());
    attachReadOut(button, m_speechText, label);
    if (button)
        elm_object_focus_set(button, EINA_TRUE);
}

void CSSOPopup::show()
{
    if (!m_window)
        return;
    evas_object_show(m_window);
    elm_win_raise(m_window);
    for (Evas_Object* object : {m_dimBase, m_popup, m_mainLayout, m_progressBar}) {
        if (object)
            evas_object_show(object);
    }
}

void CSSOPopup::destroy()
{
    LOGI("Focus has been set set lower app.");
    if (m_window)
        elm_win_lower(m_window);
    // Or the toolkit looks for the next focus among widgets that are going, and complains in the log.
    if (m_popup)
        elm_object_tree_focus_allow_set(m_popup, EINA_FALSE);
    destroyProgressBar();
    deleteObject(m_contentLayout);
    deleteObject(m_dimBase);
    m_question.deleteOpen();
    deleteObject(m_mainLayout);
    deleteObject(m_popup);
    set_tessel_popup_type(kNoneShown);
}

void CSSOPopup::bindFocusToOneObject(Evas_Object* obj)
{
    if (!obj)
        return;
    lockFocus(obj);
}

char* CSSOPopup::addLTRMarker(char* text)
{
    return enclosed("&#x202d;", text, "");
}

void CSSOPopup::leaveScreen()
{
    m_question.hide();
    TesselUI::leaveScreen(m_window, {m_popup, m_dimBase});
}

void CSSOPopup::cancelBtnCB(void* data, Evas_Object*, void*)
try {
    LOGI("clicked on cancelBtnCB");
    auto* popup = static_cast<CSSOPopup*>(data);
    if (!popup)
        return;
    if (popup->m_popup)
        elm_object_signal_emit(popup->m_popup, "theme,dimmed,percent,50", "");
    popup->m_question.ask(popup->m_box, yesBtnCB, noBtnCb, popup);
} catch (...) {
    logCaught(__func__);
}

/// The stop blocks until the daemon answers, so the screen is given back and the exit asked for before it.
/// The popups themselves go with the application.
void CSSOPopup::yesBtnCB(void* data, Evas_Object*, void*)
try {
    auto* popup = static_cast<CSSOPopup*>(data);
    if (popup && !popup->m_question.answer())
        return;
    LOGI("clicked on CloseBtnCB ");
    LOGI("Close Popups, stop Tessel, exit from App");
    if (popup)
        popup->leaveScreen();
    elm_exit();
    CTesselUI::stopTesselRequest(true, false);
} catch (...) {
    logCaught(__func__);
}

void CSSOPopup::noBtnCb(void* data, Evas_Object*, void*)
try {
    LOGI("clicked on NoBtnCB");
    auto* popup = static_cast<CSSOPopup*>(data);
    if (!popup)
        return;
    if (popup->m_popup)
        elm_object_signal_emit(popup->m_popup, "theme,undim", "");
    popup->m_question.takeBack();
} catch (...) {
    logCaught(__func__);
}

} // namespace TesselUI
