#include "UIManager.h"

#include "Log.h"
#include "Paths.h"
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

constexpr const char* kOrientationKey =
    "db/menu/onscreendisplay/display_orientation/onscreen_menu_orientation";

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
    vconf_get_int(kOrientationKey, &orientation);
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

/// Makes the popup of @p type on the empty window, without showing it.
int UIManager::showInformation(TSPOPUP_TYPE type)
{
    m_pPinPopup = new (std::nothrow) PinPopup(m_pWin, type, this, kDefaultStyle);
    if (!m_pPinPopup) {
        LOGE("Fail allocate to new");
        return kNotShown;
    }
    m_pPinPopup->show();
    return kShown;
}

int UIManager::showPinPopup(std::string& mobileName, std::string& pin)
{
    LOGI("Pin = %s", pin.c_str());
    hideAllPopup(false);
    m_pPinPopup = new (std::nothrow) PinPopup(m_pWin, TS_POPUP_PIN, this, kDefaultStyle);
    if (!m_pPinPopup) {
        LOGE("Fail allocate to new");
        return kNotShown;
    }
    m_pPinPopup->setMesg(pin, mobileName);
    m_pPinPopup->show();
    return kShown;
}

int UIManager::showTncPopup()
{
    LOGI("START");
    hideAllPopup(true);
    const int result = showInformation(TS_POPUP_TNC);
    if (result == kShown)
        LOGI("END");
    return result;
}

int UIManager::showApListPopup()
{
    LOGI("START");
    hideAllPopup(false);
    LOGI("Show APList popup");
    const int result = showInformation(TS_POPUP_AP_LIST);
    if (result == kShown)
        LOGI("END");
    return result;
}

int UIManager::showAfterPairingPopup()
{
    LOGI("START");
    hideAllPopup(true);
    m_pSettingScreenPopup = new (std::nothrow) SettingScreenPopup(m_pWin, kDefaultStyle);
    if (!m_pSettingScreenPopup) {
        LOGE("Fail allocate to new");
        return kNotShown;
    }
    m_pSettingScreenPopup->show();
    return kShown;
}

int UIManager::showNetworkTestPopup(const std::string& mobileName, const std::string& apName)
{
    LOGI("START");
    hideAllPopup(false);
    LOGI("Mobile Name = %s AP Name = %s", mobileName.c_str(), apName.c_str());
    m_pNetworkTestPopup = new (std::nothrow) CNetwokTestPopup(m_pWin, mobileName, apName);
    if (!m_pNetworkTestPopup) {
        LOGE("Could not create Network Test popup");
        return kNotShown;
    }
    LOGI("Network Test Popup Created, Now show it");
    m_pNetworkTestPopup->show();
    return kShown;
}

int UIManager::showSSOLoginPopup(const std::string& mobileName, const std::string& loginId)
{
    LOGI("START");
    hideAllPopup(false);
    LOGI("Mobile Name = %s, Login ID  Name = %s", mobileName.c_str(), loginId.c_str());
    m_pSSOPopup = new (std::nothrow) CSSOPopup(m_pWin, mobileName, loginId);
    if (!m_pSSOPopup) {
        LOGE("Could not create SSO popup");
        return kNotShown;
    }
    LOGI("SSO Popup Created, Now show it");
    m_pSSOPopup->show();
    return kShown;
}

int UIManager::showFailedPopup(std::string& failedStep)
{
    LOGI("Failed step = %s", failedStep.c_str());
    if (failedStep == "sso") {
        hideAllPopup(true);
        LOGI("Show sso fail popup");
        return showInformation(TS_POPUP_SSO_FAILED);
    }
    LOGI("Show wifi/normal fail popup");
    hideAllPopup(false);
    return showInformation(TS_POPUP_WIFI_FAILED);
}

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
    const base::MallocStr value {vconf_get_str("memory/wizard/wizard_mode")};
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
