// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The one window with its popups, through whatever a daemon, a viewer and a clock do in whatever order.
#include "Fuzz.h"
#include "Journal.h"
#include "Requests.h"
#include "TesselUI.h"
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

constexpr const char* kRequests[] = {"ShowPinPopup", "ShowNetworkTest", "ShowSSOLoginPopup", "ShowTnCPopup",
    "ShowApListPopup", "ShowFailedPopup", "ShowMobileGuide"};
/// Up to 6 requests, 7 hide, 8 the popup after pairing, 9 and 10 keys, 11 click, 12 ticks, 13 language, 14
/// contrast or a picture, 15 size. Half of them are a viewer's and a clock's, or no popup would live for
/// long.
constexpr unsigned int kActions[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 9, 9, 9, 9, 9, 9,
    9, 9, 11, 11, 11, 11, 12, 12, 12, 12};
constexpr const char* kKeys[] = {
    "Return", "KP_Enter", "Left", "Right", "Up", "Down", "Tab", "XF86Back", "XF86Close", "space"};
constexpr const char* kLanguages[] = {"en_US", "de_DE", "ar_SA", "he_IL", "zh_CN", "xx", ""};
/// Small: what is drawn costs more than all the rest.
constexpr int kSizes[][2] = {{480, 270}, {400, 300}, {270, 480}, {1, 1}};
constexpr const char* kContrast = "db/menu/system/accessibility/highcontrast";

/// One for all inputs: making a window takes longer than playing with it.
class Tv {
public:
    Tv()
    {
        // Or a picture is under way in another thread while the canvas is told that there is none.
        setenv("ECORE_EVAS_FORCE_SYNC_RENDER", "1", 1);
        fuzz::startToolkit();
        TesselUI::CTesselUI::createInstance();
        m_manager = std::make_unique<UIManager>();
        m_manager->createWindow();
        m_window = toolkit::windows().front();
        ecore_evas_manual_render_set(ecore_evas_ecore_evas_get(evas_object_evas_get(m_window)), EINA_TRUE);
        vconf_set_str("memory/wizard/wizard_mode", "INITIAL_SETUP");
        begin();
        toolkit::focusWindow(m_window);
        // What the first popup of its kind makes may stay.
        for (const int contrast : {0, 1}) {
            vconf_set_int(kContrast, contrast);
            m_isChanged = true;
            Input nothing(nullptr, 0);
            for (const char* method : kRequests)
                request(method, nothing);
        }
        hide();
        m_widgets = countWidgets();
    }
    ~Tv()
    {
        m_manager.reset();
        TesselUI::CTesselUI::destroyInstance();
        toolkit::settle();
        fuzz::demand(toolkit::windows().empty(), "no window is left");
    }

    void play(Input& input)
    {
        constexpr int kLongestSequence = 60;
        begin();
        for (int i = 0; i < kLongestSequence && !input.empty(); ++i) {
            act(kActions[input.number(std::size(kActions))], input);
            settle();
            check();
        }
        hide();
        check();
        toolkit::advance(200, 20); // a timer that is left finds that its popup is gone
    }

private:
    /// To write a setting takes as long as many a step; most inputs change none.
    void begin()
    {
        if (!m_isChanged)
            return;
        vconf_unset(kContrast);
        setLanguage("en_US");
        evas_object_resize(m_window, kSizes[0][0], kSizes[0][1]);
        m_isChanged = false;
    }

    /// As the platform does, which keeps its count of popups to itself: not while there is one.
    void setLanguage(const char* language)
    {
        vconf_set_str("db/menu_widget/language", language);
        if (popups().empty())
            orbis::app::applyLanguage();
    }

    void request(const char* method, Input& input)
    {
        std::string first = input.text();
        std::string second = input.text();
        m_isUp = TesselUI::requestOfMethod(method)->call(*m_manager, first, second) == 0;
        settle();
        if (m_isUp)
            fuzz::demand(popups().size() == 1 && evas_object_visible_get(popups()[0]->object),
                "the popup that was asked for takes the place of all others");
    }

    void hide()
    {
        m_manager->hidePopup();
        settle();
        m_isUp = false;
    }

    /// Jobs, layouts and what follows from them, as toolkit::settle() has it, but without a picture each
    /// time: to draw takes longer than all the rest.
    void settle() const
    {
        constexpr int kRounds = 6;
        for (int round = 0; round < kRounds; ++round) {
            ecore_main_loop_iterate_may_block(0);
            evas_norender(evas_object_evas_get(m_window));
        }
    }

    void press(const char* key) const
    {
        toolkit::keyDown(m_window, key);
        toolkit::keyUp(m_window, key);
    }

    void act(unsigned int action, Input& input)
    {
        if (action < std::size(kRequests)) {
            request(kRequests[action], input);
        } else if (action == 7) {
            hide();
        } else if (action == 8) {
            m_isUp = m_manager->showAfterPairingPopup() == 0;
        } else if (action <= 10) {
            press(kKeys[input.number(std::size(kKeys))]);
        } else if (action == 11) {
            const PopupRecord* top = toolkit::topPopup(m_window);
            Evas_Object* button = top ? top->buttons[input.number(ELM_FLUX_POPUP_BUTTONS)] : nullptr;
            if (button)
                toolkit::click(button);
        } else if (action == 12) {
            toolkit::advance(1 + input.number(70));
        } else {
            change(action, input);
        }
    }

    /// What is the same again when the next input begins; and a picture.
    void change(unsigned int action, Input& input)
    {
        const unsigned int contrast = action == 14 ? input.number(3) : 0;
        if (contrast == 2) {
            toolkit::settle();
            return;
        }
        m_isChanged = true;
        if (action == 13) {
            setLanguage(kLanguages[input.number(std::size(kLanguages))]);
        } else if (action == 14) {
            vconf_set_int(kContrast, static_cast<int>(contrast));
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

    /// The toolkit's own marks, like the one around what has the focus, come and go as it likes.
    size_t countWidgets() const
    {
        const auto objects = toolkit::objects(m_window);
        const auto isWidget = [](const Evas_Object* object) {
            return std::string_view(evas_object_type_get(object)).substr(0, 4) == "elm_";
        };
        return static_cast<size_t>(std::count_if(objects.begin(), objects.end(), isWidget));
    }

    void check() const
    {
        if (!m_isUp)
            fuzz::demand(countWidgets() == m_widgets, "popups leave no widgets");
        const auto shown = toolkit::shown<PopupRecord>(m_window);
        fuzz::demand(shown.size() <= 2, "one popup, and its confirmation");
        fuzz::demand(evas_object_visible_get(m_window) == !shown.empty(), "the window is up with its popup");
        if (shown.empty())
            return;
        const auto& buttons = shown.back()->buttons;
        const Evas_Object* focused = elm_object_focused_object_get(m_window);
        fuzz::demand(focused && std::count(buttons.begin(), buttons.end(), focused) == 1,
            "the focus is on a button of the uppermost popup");
        for (const Evas_Object* button : buttons)
            fuzz::demand(!button || elm_object_focus_get(button) == (button == focused), "one has the focus");
    }

    std::unique_ptr<UIManager> m_manager;
    Evas_Object* m_window = nullptr; ///< borrowed from the manager
    size_t m_widgets = 0; ///< without a popup
    bool m_isChanged = true; ///< language, contrast or size
    bool m_isUp = false; ///< a request was followed by no hide; an answer may have closed it
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
