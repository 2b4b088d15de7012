// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What the PIN popup and its guide do beside what all popups do.
#include "PinPopup.h"
#include "Fixtures.h"
#include "vconf.h"

#include <algorithm>

namespace {

using APinPopup = ManagerTest;

TEST_F(APinPopup, AlignsATextOfSeveralLinesToItsLanguagesSide)
{
    const auto alignment = [this](Kind kind) {
        request(kind);
        const auto boxes = toolkit::shown<toolkit::TextboxRecord>(m_window);
        const auto filled =
            std::find_if(boxes.begin(), boxes.end(), [](auto* box) { return !box->text.empty(); });
        return filled == boxes.end() ? -1 : static_cast<int>((*filled)->align);
    };
    const std::pair<const char*, int> languages[] = {{"en_US", 10}, {"fa_IR", 11}, {"ar_EG", 11}};
    for (const auto& [language, side] : languages) {
        vconf_set_str("db/menu_widget/language", language);
        EXPECT_EQ(alignment(Kind::Terms), side) << language;
        EXPECT_EQ(alignment(Kind::Networks), 3) << "one line is centred in " << language;
    }
}

TEST_F(APinPopup, TellsItsContentOfHighContrast)
{
    struct OpenPinPopup : TesselUI::PinPopup {
        using PinPopup::m_content;
        using PinPopup::PinPopup;
    };
    for (int contrast : {0, 1}) {
        vconf_set_int("db/menu/system/accessibility/highcontrast", contrast);
        OpenPinPopup popup(
            m_window, TesselUI::TS_POPUP_GUIDE, m_manager.get(), static_cast<Elm_Flux_Popup_Style>(1));
        toolkit::settle(); // the widgets have told themselves when they were made
        journal::clear();
        const auto onSignal = [](void*, Evas_Object*, const char*, const char*) { journal::note("HC"); };
        elm_object_signal_callback_add(popup.m_content, "HC", "", onSignal, nullptr);
        popup.show();
        toolkit::settle();
        EXPECT_EQ(journal::count("T HC"), contrast);
    }
}

TEST_F(APinPopup, TakesTheGuidesHintAlongShownOrNot)
{
    toolkit::advance(1); // until the texts are there that keep the fonts
    const size_t before = toolkit::objects(m_window).size();
    for (bool shown : {true, false}) {
        request(Kind::Guide);
        if (shown)
            toolkit::advance(1, 0.1);
        toolkit::settle();
        EXPECT_EQ(toolkit::shownGroup(m_window, "elm/flux/tooltip/2") != nullptr, shown);
        request(Kind::Nothing);
        toolkit::settle();
        EXPECT_FALSE(toolkit::shownGroup(m_window, "elm/flux/tooltip/2"));
        EXPECT_EQ(toolkit::objects(m_window).size(), before) << "something of the popup is left";
        journal::clear();
        toolkit::advance(3);
        EXPECT_FALSE(journal::has("I ToolTimerCB")) << "the timer of the hint outlived its popup";
    }
}

TEST_F(APinPopup, PutsALostFocusBackWhileItCounts)
{
    request(Kind::Pin);
    toolkit::settle();
    Evas_Object* elsewhere = elm_button_add(m_window);
    evas_object_show(elsewhere);
    elm_object_focus_set(elsewhere, EINA_TRUE);
    toolkit::advance(2);
    EXPECT_EQ(focused(), top()->buttons[0]);
    EXPECT_EQ(journal::count("I [Focus is not in button Set Focus"), 1);
}

} // namespace
