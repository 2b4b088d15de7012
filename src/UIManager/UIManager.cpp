// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "UIManager.h"

#include "Log.h"
#include "NetworkTestPopup.h"
#include "OutsideNames.h"
#include "Paths.h"
#include "PinPopup.h"
#include "SSOLoginPopup.h"
#include "SettingScreenPopup.h"
#include "WidgetNumbers.h"
#include "aul.h"
#include "base/Handles.h"
#include "efl_assist.h"
#include "vconf.h"

#include <libintl.h>
#include <new>
#include <utility>

namespace TesselUI {

namespace {

constexpr int kShown = 0;
constexpr int kNotShown = -2;

constexpr const char* kNoMemory = "Fail allocate to new";

/// The backdrop of the progress popups, which the program's theme is there for.
constexpr const char* kDimGroup = "dim";

template <typename Popup>
void deletePopup(Popup*& popup)
{
    delete std::exchange(popup, nullptr);
}

} // namespace

UIManager::UIManager()
    : m_bInitialized(false)
    , m_pWin(nullptr)
    , m_pBg(nullptr)
    , m_pNetworkTestPopup(nullptr)
    , m_pSSOPopup(nullptr)
    , m_pPinPopup(nullptr)
    , m_pSettingScreenPopup(nullptr)
{
}

UIManager::~UIManager()
{
    LOGI("START");
    hideAllPopup(true);
    elm_flux_manager_fini();
    if (m_pWin)
        evas_object_del(std::exchange(m_pWin, nullptr));
    LOGI("END");
}

void UIManager::createWindow()
{
    LOGI("START");
    if (m_bInitialized) {
        LOGI("UI already Initialized");
        return;
    }
    m_bInitialized = true;
    m_pWin = createWin();
    bindtextdomain(kTextDomain, kLocaleFolder);
    bind_textdomain_codeset(kTextDomain, "UTF-8");
    LOGI("(TSPKGNAME = %s, TSLOCALEDIR = %s", kTextDomain, kLocaleFolder);
    elm_theme_extension_add(nullptr, kThemeFile);
    if (!edje_file_group_exists(kThemeFile, kDimGroup))
        LOGE("The program's theme cannot be used, the picture behind is dimmed less: %s", kThemeFile);
    int orientation = 0;
    vconf_get_int(kOrientationKey, &orientation); // for the line only: a screen that turns is the platform's
    LOGI("Portrait Mode = %d", orientation);
    LOGI("END");
}

Evas_Object* UIManager::createWin()
{
    LOGI("In CreateWin");
    Evas_Object* win = elm_win_add(nullptr, "Tessel", ELM_WIN_BASIC);
    if (!win) {
        LOGE("Window creation failed");
        return nullptr;
    }
    elm_win_alpha_set(win, EINA_TRUE);
    m_pBg = elm_bg_add(win);
    evas_object_size_hint_weight_set(m_pBg, EVAS_HINT_EXPAND, EVAS_HINT_EXPAND);
    elm_win_resize_object_add(win, m_pBg);
    evas_object_color_set(m_pBg, 0, 0, 0, 0);
    ea_init(0, 0);
    elm_flux_manager_rotation_disable(win);
    elm_flux_manager_init(win);
    elm_flux_bg_grid_show(EINA_FALSE);
    LOGI("END");
    return win;
}

void UIManager::hideAllPopup(bool lowerWindow)
{
    LOGI("START");
    if (lowerWindow && m_pWin)
        elm_win_lower(m_pWin);
    deletePopup(m_pPinPopup);
    deletePopup(m_pNetworkTestPopup);
    deletePopup(m_pSSOPopup);
    deletePopup(m_pSettingScreenPopup);
}

int UIManager::hidePopup()
{
    LOGI("START");
    hideAllPopup(true);
    return kShown;
}

/// How an operation places its popup, and what is logged of it in the operation's name; empty and null:
/// nothing.
struct UIManager::Placing {
    const char* function;
    bool lowersWindow; ///< before, while what was up goes
    std::string first {}; ///< once the window is empty
    const char* failed = kNoMemory;
    const char* made = nullptr;
    const char* shown = nullptr;
};

/// Puts the popup that @p make gives (null: memory is short) in the place of all that is up, lets @p fill
/// fill it, and shows it. It is owned before it is filled, because that may throw.
template <typename Popup, typename Make, typename Fill>
int UIManager::place(const Placing& placing, Popup*& slot, Make make, Fill fill)
{
    hideAllPopup(placing.lowersWindow);
    if (!placing.first.empty())
        LOGI_AS(placing.function, "%s", placing.first.c_str());
    slot = make();
    if (!slot) {
        LOGE_AS(placing.function, "%s", placing.failed);
        return kNotShown;
    }
    if (placing.made)
        LOGI_AS(placing.function, "%s", placing.made);
    fill(*slot);
    slot->show();
    if (placing.shown)
        LOGI_AS(placing.function, "%s", placing.shown);
    return kShown;
}

template <typename Popup, typename Make>
int UIManager::place(const Placing& placing, Popup*& slot, Make make)
{
    return place(placing, slot, make, [](Popup&) {});
}

int UIManager::showPinPopup(std::string& mobileName, std::string& pin)
{
    LOGI("Pin = %s", pin.c_str());
    return place(
        {__func__, false}, m_pPinPopup,
        [this] { return new (std::nothrow) PinPopup(m_pWin, TS_POPUP_PIN, this, kDefaultStyle); },
        [&](PinPopup& popup) { popup.setMesg(pin, mobileName); });
}

int UIManager::showTncPopup()
{
    LOGI("START");
    return place({__func__, true, "", kNoMemory, nullptr, "END"}, m_pPinPopup,
        [this] { return new (std::nothrow) PinPopup(m_pWin, TS_POPUP_TNC, this, kDefaultStyle); });
}

int UIManager::showApListPopup()
{
    LOGI("START");
    return place({__func__, false, "Show APList popup", kNoMemory, nullptr, "END"}, m_pPinPopup,
        [this] { return new (std::nothrow) PinPopup(m_pWin, TS_POPUP_AP_LIST, this, kDefaultStyle); });
}

int UIManager::showAfterPairingPopup()
{
    LOGI("START");
    return place({__func__, true}, m_pSettingScreenPopup,
        [this] { return new (std::nothrow) SettingScreenPopup(m_pWin, kDefaultStyle); });
}

int UIManager::showNetworkTestPopup(const std::string& mobileName, const std::string& apName)
{
    LOGI("START");
    return place({__func__, false, "Mobile Name = " + mobileName + " AP Name = " + apName,
                     "Could not create Network Test popup", "Network Test Popup Created, Now show it"},
        m_pNetworkTestPopup, [&] { return new (std::nothrow) CNetwokTestPopup(m_pWin, mobileName, apName); });
}

int UIManager::showSSOLoginPopup(const std::string& mobileName, const std::string& loginId)
{
    LOGI("START");
    return place({__func__, false, "Mobile Name = " + mobileName + ", Login ID  Name = " + loginId,
                     "Could not create SSO popup", "SSO Popup Created, Now show it"},
        m_pSSOPopup, [&] { return new (std::nothrow) CSSOPopup(m_pWin, mobileName, loginId); });
}

int UIManager::showFailedPopup(std::string& failedStep)
{
    LOGI("Failed step = %s", failedStep.c_str());
    const bool isSignIn = failedStep == "sso";
    if (!isSignIn)
        LOGI("Show wifi/normal fail popup");
    return place({__func__, isSignIn, isSignIn ? "Show sso fail popup" : ""}, m_pPinPopup, [&] {
        return new (std::nothrow)
            PinPopup(m_pWin, isSignIn ? TS_POPUP_SSO_FAILED : TS_POPUP_WIFI_FAILED, this, kDefaultStyle);
    });
}

/// What is up goes also when the guide may not be shown. Its allocation may throw, unlike the others'.
int UIManager::showGuidePopup(std::string& pin)
{
    LOGI("Pin = %s", pin.c_str());
    hideAllPopup(true);
    if (!IsWizardRunning()) {
        LOGI("Wizard app is not in foreground,Dont show tessel popup");
        return kNotShown;
    }
    m_pPinPopup = new PinPopup(m_pWin, TS_POPUP_GUIDE, this, kGuideStyle);
    m_pPinPopup->show();
    return kShown;
}

bool UIManager::IsWizardRunning()
{
    LOGI("START");
    const base::MallocStr value {vconf_get_str(kWizardModeKey)};
    if (!value)
        return false;
    const std::string mode = value.get();
    std::string package = "org.orbis.wizard";
    if (mode == "NETWORK_SETUP")
        package = "org.orbis.NetworkSetting-Orbis";
    else if (mode == "SSO_ALONE_SETUP")
        package = "org.orbis.sso";
    else
        return mode != "OFF"; // the first-run wizard is taken at its word
    const int running = aul_app_is_running(package.c_str());
    LOGI("StrPkg =>%s ,aul_app_is_running =>%d", package.c_str(), running);
    if (running == 1) {
        const int status = aul_app_get_status(package.c_str());
        LOGI("aul_app_get_status status =>%d", status);
        if (status == STATUS_FOCUS || status == STATUS_VISIBLE) {
            LOGD("IsWizardRunning => 1 , strPkg =>%s", package.c_str());
            return true;
        }
    }
    LOGD("IsWizardRunning =>0 ,strPkg =>%s", package.c_str());
    return false;
}

} // namespace TesselUI
