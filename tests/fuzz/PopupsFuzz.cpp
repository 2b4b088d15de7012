/// The one window with its popups, through whatever a daemon, a viewer and a clock do in whatever order.
#include "Fuzz.h"
#include "Journal.h"
#include "TesselUI.h"
#include "Toolkit.h"
#include "UIManager.h"
#include "app/Language.h"
#include "elm_flux.h"
#include "vconf.h"

#include <algorithm>
#include <memory>

void journal::note(const std::string&) { }

namespace {

using toolkit::PopupRecord;

constexpr unsigned int kActions = 16;
constexpr int kLongestSequence = 40;

class Session {
public:
    explicit Session(fuzz::Input& input)
        : m_input(input)
    {
        TesselUI::CTesselUI::createInstance();
        m_manager = std::make_unique<TesselUI::UIManager>();
        m_manager->createWindow();
        m_window = toolkit::windows().front();
        evas_object_show(m_window);
        toolkit::focusWindow(m_window);
    }
    ~Session()
    {
        m_manager.reset();
        TesselUI::CTesselUI::destroyInstance();
        toolkit::settle();
        fuzz::demand(toolkit::windows().empty(), "no window is left");
    }

    void run()
    {
        for (int i = 0; i < kLongestSequence && !m_input.empty(); ++i) {
            act(m_input.number(kActions));
            toolkit::settle();
            check();
        }
    }

private:
    void act(unsigned int action)
    {
        std::string first;
        std::string second;
        if (action < 3) {
            first = m_input.text();
            second = m_input.text();
        }
        switch (action) {
        case 0:
            return shown(m_manager->showPinPopup(first, second), false);
        case 1:
            return shown(m_manager->showNetworkTestPopup(first, second), true);
        case 2:
            return shown(m_manager->showSSOLoginPopup(first, second), true);
        case 3:
            return shown(m_manager->showTncPopup(), false);
        case 4:
            return shown(m_manager->showApListPopup(), false);
        case 5:
            return shown(m_manager->showAfterPairingPopup(), false);
        case 6:
            first = m_input.number(2) ? "sso" : "wifi";
            return shown(m_manager->showFailedPopup(first), false);
        case 7:
            vconf_set_str("memory/wizard/wizard_mode", m_input.number(2) ? "OFF" : "INITIAL_SETUP");
            vconf_set_str("memory/tessel/ble_tvname", m_input.text().c_str());
            return shown(m_manager->showGuidePopup(first), false);
        case 8:
            m_manager->hidePopup();
            m_isUp = false;
            return;
        case 9:
        case 10:
            return press();
        case 11:
            return click();
        case 12:
            return toolkit::advance(1 + m_input.number(70));
        default:
            return change(action);
        }
    }

    void shown(int result, bool mayAsk)
    {
        m_isUp = result == 0;
        m_mayAsk = mayAsk;
        evas_object_geometry_get(m_window, nullptr, nullptr, nullptr, nullptr);
    }

    void press()
    {
        constexpr const char* kKeys[] = {
            "Return", "KP_Enter", "Left", "Right", "Up", "Down", "Tab", "XF86Back", "XF86Close", "space"};
        toolkit::press(m_window, kKeys[m_input.number(std::size(kKeys))]);
        m_isUnsure = true;
    }

    void click()
    {
        const PopupRecord* top = toolkit::topPopup(m_window);
        const unsigned int slot = m_input.number(ELM_FLUX_POPUP_BUTTONS);
        if (top && top->buttons[slot])
            toolkit::click(top->buttons[slot]);
        m_isUnsure = true;
    }

    void change(unsigned int what)
    {
        constexpr const char* kLanguages[] = {"en_US", "de_DE", "ar_SA", "he_IL", "zh_CN", "xx", ""};
        constexpr int kSizes[][2] = {{1920, 1080}, {800, 600}, {3840, 2160}, {1, 1}};
        if (what == 13) {
            vconf_set_str("db/menu_widget/language", kLanguages[m_input.number(std::size(kLanguages))]);
            orbis::app::applyLanguage();
        } else if (what == 14) {
            const int contrast = static_cast<int>(m_input.number(2));
            vconf_set_int("db/menu/system/accessibility/highcontrast", contrast);
            if (const PopupRecord* top = contrast ? toolkit::topPopup(m_window) : nullptr)
                elm_object_signal_emit(top->object, "HC", "");
        } else {
            const auto& size = kSizes[m_input.number(std::size(kSizes))];
            evas_object_resize(m_window, size[0], size[1]);
        }
    }

    /// A press or a click may have closed what was up, opened the question above it or the next popup, or let
    /// the clock do so; from then on only what holds for every state is asked for, until the next request.
    void check()
    {
        const auto popups = toolkit::shown<PopupRecord>(m_window);
        if (!m_isUnsure) {
            fuzz::demand(m_isUp || popups.empty(), "nothing is left after a hide");
            fuzz::demand(m_mayAsk || popups.size() <= 1, "one popup at a time");
        }
        if (popups.empty() || !evas_object_visible_get(m_window))
            return;
        const Evas_Object* focused = elm_object_focused_object_get(m_window);
        const PopupRecord& top = *popups.back();
        fuzz::demand(std::count(top.buttons.begin(), top.buttons.end(), focused) == 1 && focused,
            "the focus is on a button of the uppermost popup");
        for (const Evas_Object* button : top.buttons)
            fuzz::demand(!button || elm_object_focus_get(button) == (button == focused), "one has the focus");
    }

    fuzz::Input& m_input;
    std::unique_ptr<TesselUI::UIManager> m_manager;
    Evas_Object* m_window = nullptr; ///< borrowed from the manager
    bool m_isUp = false;
    bool m_mayAsk = false;
    bool m_isUnsure = false;
};

} // namespace

int LLVMFuzzerInitialize(int*, char***)
{
    fuzz::silenceOutput();
    fuzz::useOwnStore();
    fuzz::startToolkit();
    return 0;
}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzz::Input input(data, size);
    vconf_unset("db/menu/system/accessibility/highcontrast");
    vconf_set_str("db/menu_widget/language", "en_US");
    orbis::app::applyLanguage();
    Session(input).run();
    return 0;
}
