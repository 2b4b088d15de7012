/// The one window with its popups, through whatever a daemon, a viewer and a clock do in whatever order.
#include "Fuzz.h"
#include "Journal.h"
#include "TesselUI.h"
#include "Timers.h"
#include "Toolkit.h"
#include "UIManager.h"
#include "app/Language.h"
#include "vconf.h"

#include <Ecore_Evas.h>
#include <algorithm>
#include <memory>

void journal::note(const std::string&) { }

namespace {

using fuzz::Input;
using TesselUI::UIManager;
using toolkit::PopupRecord;

constexpr unsigned int kActions = 16;
constexpr int kLongestSequence = 60;
/// Small: what is drawn costs more than all the rest.
constexpr int kSizes[][2] = {{480, 270}, {400, 300}, {270, 480}, {1, 1}};
constexpr const char* kContrast = "db/menu/system/accessibility/highcontrast";

struct Request {
    bool mayAsk; ///< a confirmation may come above it
    int (*show)(UIManager& manager, Input& input);
};

constexpr Request kRequests[] = {
    {false,
        [](UIManager& manager, Input& input) {
            std::string name = input.text();
            std::string pin = input.text();
            return manager.showPinPopup(name, pin);
        }},
    {true,
        [](UIManager& manager, Input& input) {
            const std::string name = input.text();
            return manager.showNetworkTestPopup(name, input.text());
        }},
    {true,
        [](UIManager& manager, Input& input) {
            const std::string name = input.text();
            return manager.showSSOLoginPopup(name, input.text());
        }},
    {false, [](UIManager& manager, Input&) { return manager.showTncPopup(); }},
    {false, [](UIManager& manager, Input&) { return manager.showApListPopup(); }},
    {false, [](UIManager& manager, Input&) { return manager.showAfterPairingPopup(); }},
    {false,
        [](UIManager& manager, Input& input) {
            std::string step = input.number(2) ? "sso" : "wifi";
            return manager.showFailedPopup(step);
        }},
    {false,
        [](UIManager& manager, Input& input) {
            vconf_set_str("memory/wizard/wizard_mode", input.number(2) ? "OFF" : "INITIAL_SETUP");
            std::string name = input.text();
            vconf_set_str("memory/tessel/ble_tvname", name.c_str());
            return manager.showGuidePopup(name);
        }},
};

/// One for all inputs: making a window takes longer than playing with it.
class Tv {
public:
    Tv()
    {
        fuzz::startToolkit();
        TesselUI::CTesselUI::createInstance();
        m_manager = std::make_unique<UIManager>();
        m_manager->createWindow();
        m_window = toolkit::windows().front();
        begin();
        toolkit::focusWindow(m_window);
        // What the first popup of its kind makes may stay.
        for (const int contrast : {0, 1}) {
            vconf_set_int(kContrast, contrast);
            Input nothing(nullptr, 0);
            for (const Request& request : kRequests) {
                request.show(*m_manager, nothing);
                serve();
            }
        }
        m_manager->hidePopup();
        serve();
        m_widgets = countWidgets();
        m_timers = fuzz::runningTimers();
    }
    ~Tv()
    {
        m_manager.reset();
        TesselUI::CTesselUI::destroyInstance();
        serve();
        fuzz::demand(toolkit::windows().empty(), "no window is left");
        fuzz::demand(fuzz::runningTimers() == 0, "no timer is left");
    }

    void play(Input& input)
    {
        begin();
        for (int i = 0; i < kLongestSequence && !input.empty(); ++i) {
            act(input.number(kActions), input);
            serve();
            check();
        }
        hide();
        serve();
        check();
    }

private:
    void begin()
    {
        vconf_unset(kContrast);
        setLanguage("en_US");
        evas_object_resize(m_window, kSizes[0][0], kSizes[0][1]);
    }

    /// As the platform does, which keeps its count of popups to itself: not while there is one.
    void setLanguage(const char* language)
    {
        vconf_set_str("db/menu_widget/language", language);
        if (popups().empty())
            orbis::app::applyLanguage();
    }

    /// What is due now, with the picture that lets deleted objects go.
    void serve()
    {
        for (int round = 0; round < 3; ++round) {
            ecore_main_loop_iterate_may_block(0);
            if (m_manager)
                ecore_evas_manual_render(ecore_evas_ecore_evas_get(evas_object_evas_get(m_window)));
        }
    }

    void act(unsigned int action, Input& input)
    {
        m_isNew = action < std::size(kRequests);
        if (m_isNew) {
            m_mayAsk = kRequests[action].mayAsk;
            m_isUp = kRequests[action].show(*m_manager, input) == 0;
        } else if (action == 8) {
            hide();
        } else if (action <= 10) {
            press(input);
        } else if (action == 11) {
            click(input.number(ELM_FLUX_POPUP_BUTTONS));
        } else if (action == 12) {
            toolkit::advance(1 + input.number(70));
        } else {
            change(action, input);
        }
    }

    void hide()
    {
        m_manager->hidePopup();
        m_isUp = false;
    }

    void press(Input& input)
    {
        constexpr const char* kKeys[] = {
            "Return", "KP_Enter", "Left", "Right", "Up", "Down", "Tab", "XF86Back", "XF86Close", "space"};
        const char* key = kKeys[input.number(std::size(kKeys))];
        toolkit::keyDown(m_window, key);
        toolkit::keyUp(m_window, key);
    }

    void click(unsigned int slot)
    {
        const PopupRecord* top = toolkit::topPopup(m_window);
        if (top && top->buttons[slot])
            toolkit::click(top->buttons[slot]);
    }

    void change(unsigned int what, Input& input)
    {
        constexpr const char* kLanguages[] = {"en_US", "de_DE", "ar_SA", "he_IL", "zh_CN", "xx", ""};
        if (what == 13) {
            setLanguage(kLanguages[input.number(std::size(kLanguages))]);
        } else if (what == 14) {
            vconf_set_int(kContrast, static_cast<int>(input.number(2)));
        } else {
            const auto& size = kSizes[input.number(std::size(kSizes))];
            evas_object_resize(m_window, size[0], size[1]);
        }
    }

    /// @return all, hidden ones too, lowest first
    std::vector<const PopupRecord*> popups() const
    {
        std::vector<const PopupRecord*> all;
        for (const Evas_Object* object : toolkit::objects(m_window)) {
            if (const auto* record = orbis::flux::recordOf<PopupRecord>(object))
                all.push_back(record);
        }
        return all;
    }

    void check() const
    {
        std::vector<const PopupRecord*> all = popups();
        if (m_isNew && m_isUp)
            fuzz::demand(all.size() == 1 && evas_object_visible_get(all[0]->object),
                "the popup that was asked for takes the place of all others");
        if (!m_isUp)
            checkNothingIsLeft();
        const auto isHidden = [](const PopupRecord* popup) {
            return !evas_object_visible_get(popup->object);
        };
        all.erase(std::remove_if(all.begin(), all.end(), isHidden), all.end());
        fuzz::demand(all.size() <= (m_mayAsk ? 2 : 1), "one popup, and its confirmation");
        fuzz::demand(evas_object_visible_get(m_window) == !all.empty(), "the window is up with its popup");
        if (!all.empty())
            checkFocus(*all.back());
    }

    /// The toolkit's own marks, like the one around what has the focus, come and go as it likes.
    size_t countWidgets() const
    {
        const auto objects = toolkit::objects(m_window);
        const auto isWidget = [](const Evas_Object* object) {
            return std::string_view(evas_object_type_get(object)).substr(0, 4) == "elm_";
        };
        return static_cast<size_t>(std::count_if(objects.begin(), objects.end(), isWidget));
    }

    void checkNothingIsLeft() const
    {
        const size_t widgets = countWidgets();
        const auto told = [](size_t now, size_t before) {
            return std::to_string(now) + " and not " + std::to_string(before);
        };
        fuzz::demand(widgets == m_widgets, "popups leave no widgets", told(widgets, m_widgets));
        const size_t timers = fuzz::runningTimers();
        fuzz::demand(timers == m_timers, "popups leave no timers", told(timers, m_timers));
    }

    void checkFocus(const PopupRecord& top) const
    {
        const Evas_Object* focused = elm_object_focused_object_get(m_window);
        fuzz::demand(std::count(top.buttons.begin(), top.buttons.end(), focused) == 1 && focused,
            "the focus is on a button of the uppermost popup");
        for (const Evas_Object* button : top.buttons)
            fuzz::demand(!button || elm_object_focus_get(button) == (button == focused), "one has the focus");
    }

    std::unique_ptr<UIManager> m_manager;
    Evas_Object* m_window = nullptr; ///< borrowed from the manager
    size_t m_widgets = 0; ///< without a popup, as the timers
    size_t m_timers = 0;
    bool m_isUp = false; ///< a request was followed by no hide; an answer may have closed it
    bool m_isNew = false; ///< the last action was a request
    bool m_mayAsk = false;
};

} // namespace

void fuzz::tryInput(Input& input)
{
    static std::unique_ptr<Tv> s_tv;
    if (!s_tv) {
        s_tv = std::make_unique<Tv>();
        atexit([] { s_tv.reset(); }); // before the toolkit's end
    }
    s_tv->play(input);
}
