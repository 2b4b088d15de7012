// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "States.h"

#include <algorithm>

namespace gallery {

using TesselUI::UIManager;

void showGuide(UIManager& manager, Names names)
{
    manager.showGuidePopup(names.pin);
}

void showPin(UIManager& manager, Names names)
{
    manager.showPinPopup(names.phone, names.pin);
}

void showNetworkTest(UIManager& manager, Names names)
{
    manager.showNetworkTestPopup(names.phone, names.network);
}

void showSignIn(UIManager& manager, Names names)
{
    manager.showSSOLoginPopup(names.phone, names.account);
}

namespace {

void showWifiFailed(UIManager& manager, Names)
{
    std::string step = "wifi";
    manager.showFailedPopup(step);
}

void showSignInFailed(UIManager& manager, Names)
{
    std::string step = "sso";
    manager.showFailedPopup(step);
}

void showTerms(UIManager& manager, Names)
{
    manager.showTncPopup();
}

void showApList(UIManager& manager, Names)
{
    manager.showApListPopup();
}

void showSettingsScreen(UIManager& manager, Names)
{
    manager.showAfterPairingPopup();
}

constexpr const char* kYes = "SID_YES";
constexpr const char* kNo = "SID_NO";
constexpr const char* kOk = "COM_SID_OK";
constexpr const char* kWithRemote = "TV_SID_TESSEL_CADEC_CONTINNE_WITH_TV_REMOTE";

} // namespace

std::vector<State> states(bool awkwardNames)
{
    std::vector<State> list {
        {"guide", Shows::Guide, Step::Show, showGuide, kWithPhoneId},
        {"guide-hint", Shows::GuideWithHint, Step::Wait, nullptr, kWithPhoneId},
        {"guide-remote", Shows::GuideWithHint, Step::Next, nullptr, kWithRemote},
        {"access-points", Shows::AccessPoints, Step::Show, showApList, kCancelId},
        {"pin", Shows::Pin, Step::Show, showPin, kCancelId},
        {"network-test", Shows::NetworkTest, Step::Show, showNetworkTest, kCancelId},
        {"network-test-confirm-yes", Shows::Confirmation, Step::Press, nullptr, kYes},
        {"network-test-confirm-no", Shows::Confirmation, Step::Next, nullptr, kNo},
        {"sign-in", Shows::SignIn, Step::Show, showSignIn, kCancelId},
        {"sign-in-confirm-yes", Shows::Confirmation, Step::Press, nullptr, kYes},
        {"sign-in-confirm-no", Shows::Confirmation, Step::Next, nullptr, kNo},
        {"terms", Shows::Terms, Step::Show, showTerms, kCancelId},
        {"network-failed", Shows::Failure, Step::Show, showWifiFailed, kOk},
        {"sign-in-failed", Shows::Failure, Step::Show, showSignInFailed, kOk},
        {"settings-screen", Shows::SettingsScreen, Step::Show, showSettingsScreen, kCancelId},
        {"settings-screen-confirm-no", Shows::SettingsScreenAsking, Step::Press, nullptr, kNo},
        {"settings-screen-confirm-yes", Shows::SettingsScreenAsking, Step::Previous, nullptr, kYes},
    };
    if (awkwardNames)
        addAwkwardStates(list);
    return list;
}

std::vector<Chosen> chosenStates(const Options& options)
{
    const std::vector<std::string>& names = options.states;
    const std::vector<State> all = states(options.awkwardNames || !names.empty());
    std::vector<Chosen> result;
    size_t begin = 0; // of the states that follow from one another
    size_t needed = 0; // up to here they are in the result
    for (size_t i = 0; i < all.size(); ++i) {
        if (all[i].step == Step::Show)
            begin = i;
        if (!names.empty() && std::find(names.begin(), names.end(), all[i].name) == names.end())
            continue;
        for (needed = std::max(needed, begin); needed <= i; ++needed)
            result.push_back({all[needed], needed == i});
    }
    return result;
}

} // namespace gallery
