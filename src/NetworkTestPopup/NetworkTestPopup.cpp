// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkTestPopup.h"

#include "LaunchMarker.h"
#include "Log.h"
#include "Paths.h"
#include "PopupParts.h"
#include "Tessel_Conn_Comm_Func.h"
#include "ToolkitObjects.h"
#include "Translated.h"
#include "WidgetNumbers.h"
#include "base/Handles.h"
#include "combinate.h"

#include <elm_flux.h>

#include <cstdio>
#include <utility>

namespace TesselUI {

namespace {

constexpr double kFocusInterval = 0.1; ///< seconds

} // namespace

CNetwokTestPopup::CNetwokTestPopup(
    Evas_Object* window, const std::string& mobileName, const std::string& apName)
    : m_mobileName(mobileName)
    , m_apName(apName)
    , m_window(window)
{
    LOGI("START");
    create();
    LOGI("END");
}

CNetwokTestPopup::~CNetwokTestPopup()
{
    LOGI("START");
    destroy();
    LOGI("END");
}

void CNetwokTestPopup::create()
{
    if (!m_window) {
        LOGE("Invalid input argument");
        return;
    }
    elm_theme_extension_add(nullptr, kThemeFile);
    elm_object_signal_emit(m_window, "SetDim", "");
    createDimBase();
    m_box = addProgressBox(m_window);
    if (m_box) {
        m_popup = elm_flux_popup_add(m_box);
        if (!m_popup) {
            LOGE("Could not add popup");
            deleteObject(m_dimBase);
            return;
        }
        elm_flux_popup_style_set(m_popup, kDefaultStyle);
        buildLayouts();
    }
    markAppearance("TesselUI :[UI]=>Network Test Popup Appear");
    LOGI("END");
}

void CNetwokTestPopup::buildLayouts()
{
    const ProgressLayouts layouts = addProgressLayouts(m_popup);
    m_mainLayout = layouts.main;
    m_contentLayout = layouts.content;
    if (!createPopup()) {
        discardPopup();
        return;
    }
    setProgressContent(m_popup, m_mainLayout);
    m_focusTicks = 0;
    m_focusTimer = ecore_timer_add(kFocusInterval, focusTimerExpired, this);
}

void CNetwokTestPopup::discardPopup()
{
    deleteObject(m_dimBase);
    deleteObject(m_contentLayout);
    LOGE_AS("create", "Tessel Connection Popup Failed to create");
    m_progressBar = nullptr; // went with its layout
    deleteObject(m_mainLayout);
    deleteObject(m_popup);
    deleteObject(m_box);
}

void CNetwokTestPopup::createDimBase()
{
    m_dimBase = elm_layout_add(m_window);
    if (!m_dimBase)
        return;
    elm_layout_file_set(m_dimBase, kThemeFile, "dim");
    // The window is dimmed already; its backdrop is there for a theme that shows more than that.
    elm_layout_signal_emit(m_dimBase, "window,dimmed", "");
    coverWindow(m_window, m_dimBase);
    evas_object_show(m_dimBase);
}

bool CNetwokTestPopup::createPopup()
{
    const std::string title = translated("COM_TV_SID_TESSEL");
    elm_flux_popup_title_set(m_popup, title.c_str());
    createProgressBar();
    if (IsHighContrastMode())
        elm_object_signal_emit(m_mainLayout, "HC", "");
    std::string speech = title;
    if (!addTexts(speech))
        return false;
    const std::string label = translated("SID_CANCEL");
    attachReadOut(addPopupButton(m_popup, label, 0, cancelBtnCB, this), speech, label);
    LOGI("END");
    return true;
}

/// Both lines; they are appended to @p speech as they stand.
bool CNetwokTestPopup::addTexts(std::string& speech)
{
    const base::MallocStr phone {addLTRMarker(m_mobileName.data())};
    char firstLine[kCombinedTextSize] = {};
    combinate_string(translated("TV_SID_TESSEL_MIX_INFORMATION_BELOW_RECEIVED_SETTING_UP").c_str(),
        phone ? phone.get() : "Norvale Device", nullptr, firstLine);
    addFirstLine(m_contentLayout, firstLine);
    LOGI_AS("createPopup", "AP Name :: %s\n", m_apName.c_str());
    const base::MallocStr network {func(m_apName.data())};
    if (!network) {
        LOGE_AS("createPopup", "cAPName_mod failed");
        return false;
    }
    char marked[kMarkedTextSize] = {};
    snprintf(marked, sizeof marked, "%s%s%s", "<font=Kivo400 color=#2eb0c8 >", network.get(), "</font>");
    char networkLine[kCombinedTextSize] = {};
    combinate_string(translated("TV_SID_MIX_WIRLESS_NETWORK").c_str(), marked, nullptr, networkLine);
    addSecondLine(m_mainLayout, networkLine);
    speech += firstLine;
    speech += networkLine;
    return true;
}

void CNetwokTestPopup::createProgressBar()
{
    if (!m_mainLayout)
        return;
    destroyProgressBar();
    m_progressBar = addProgressIndicator(m_contentLayout);
}

void CNetwokTestPopup::destroyProgressBar()
{
    deleteObject(m_progressBar);
}

void CNetwokTestPopup::show()
{
    if (!m_window)
        return;
    evas_object_show(m_window);
    elm_win_raise(m_window);
    for (Evas_Object* object : {m_dimBase, m_popup, m_mainLayout, m_progressBar, m_focusTarget}) {
        if (object)
            evas_object_show(object);
    }
    if (m_focusTarget)
        elm_object_focus_set(m_focusTarget, EINA_TRUE);
}

void CNetwokTestPopup::destroy()
{
    if (m_window)
        elm_object_signal_emit(m_window, "SetNormal", "");
    // Or the toolkit looks for the next focus among widgets that are going, and complains in the log.
    if (m_popup)
        elm_object_tree_focus_allow_set(m_popup, EINA_FALSE);
    destroyProgressBar();
    deleteObject(m_focusTarget);
    if (m_focusTimer)
        ecore_timer_del(std::exchange(m_focusTimer, nullptr));
    deleteObject(m_dimBase);
    deleteObject(m_contentLayout);
    deleteObject(m_mainLayout);
    deleteObject(m_popup);
    deleteObject(m_box);
    m_question.deleteOpen();
    LOGD("Deleted NW_Test_Popup\n");
}

} // namespace TesselUI
