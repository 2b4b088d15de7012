// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The states of the popups that are pictured, in the order in which they follow from one another.
#pragma once

#include "Options.h"
#include "UIManager.h"

#include <string>
#include <vector>

namespace gallery {

/// How a state comes about, from the one before it in the list.
enum class Step {
    Show, ///< by showing a popup
    Wait, ///< by itself, after a while
    Press, ///< the focused button is pressed
    Next, ///< the key that points at the next button in reading direction
    Previous, ///< and the opposite one
};

/// What the viewer has before him then.
enum class Shows {
    Guide,
    GuideWithHint,
    AccessPoints,
    Pin,
    NetworkTest,
    SignIn,
    Confirmation, ///< over one of the two
    Terms,
    Failure,
    SettingsScreen,
    SettingsScreenAsking,
};

/// Names that the daemon would give.
struct Names {
    std::string phone = "Anna’s phone";
    std::string pin = "042719";
    std::string network = "Lakeside (5 GHz)";
    std::string account = "anna.lake@example.com";
    std::string tv = "Norvale TV (Living room)";
};

struct State {
    std::string name; ///< of the picture's file
    Shows shows = Shows::Guide;
    Step step = Step::Show;
    void (*show)(TesselUI::UIManager& manager, Names names) = nullptr; ///< for Step::Show
    const char* focusedId = nullptr; ///< text id of the button that has the keys then
    Names names {};
    Names shownNames {}; ///< what a viewer is to read of them
    bool hasAwkwardNames = false; ///< with characters that no font need have
    bool isTooLong = false; ///< a name is longer than there is room for
    bool hasOwnDirection = false; ///< a name says itself in which direction it runs
};

/// @param awkwardNames  also those with names and PINs that people should not have
std::vector<State> states(bool awkwardNames);

struct Chosen {
    State state;
    bool isPictured = true; ///< otherwise one that is wanted follows from it
};

/// The states that the options ask for, and those before them that they follow from.
std::vector<Chosen> chosenStates(const Options& options);

/// Ways to show a popup.
void showGuide(TesselUI::UIManager& manager, Names names);
void showPin(TesselUI::UIManager& manager, Names names);
void showNetworkTest(TesselUI::UIManager& manager, Names names);
void showSignIn(TesselUI::UIManager& manager, Names names);

/// Appends the popups that hold names, with awkward ones.
void addAwkwardStates(std::vector<State>& list);

/// The buttons that have the focus first.
inline constexpr const char* kCancelId = "SID_CANCEL";
inline constexpr const char* kWithPhoneId = "TV_SID_TESSEL_SETUP_IVA_PHONE";

} // namespace gallery
