// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What each request must show to a viewer who reads English.
#ifndef TESSEL_TESTS_CARDS_H
#define TESSEL_TESTS_CARDS_H

#include "TvBox.h"

namespace tv {

constexpr uint32_t kPinColour = 0x29C5FF; ///< of its digits
constexpr size_t kTimePasses =
    1500; ///< pixels of the line that shows the time left, for as long as a case takes
constexpr const char* kSetUp = "Phone set-up";

/// Names are between the marks that keep their direction apart from the sentence's, the catalogue's and the
/// program's.
inline const Card kNetworkTestCard {kSetUp,
    {"Wi-Fi details received from \u2068\u200EAnna's phone\u200F\u2069. Connecting to:",
        "Wi-Fi network: \u2068Attic & Garden\u2069"},
    {"Cancel"}, "Cancel"};
inline const Card kSignInCard {kSetUp,
    {"Account details received from \u2068\u202DAnna's phone\u2069. Signing in to:",
        "Norvale account: \u2068anna@example.com\u2069"},
    {"Cancel"}, "Cancel"};
inline const Card kOwnedCard {kSetUp, {"Set-up with your phone"}, {"Cancel"}, "Cancel"};
inline const Card kFailedCard {"Set-up didn’t finish",
    {"Your TV couldn’t be set up with your phone. Please set it up with your TV remote instead."}, {"OK"},
    "OK"};
inline const Card kTermsCard {kSetUp,
    {"Your TV is being set up with your phone. Please read and accept the terms and conditions on your phone "
     "to continue."},
    {"Cancel"}, "Cancel"};
inline const Card kAccessPointsCard {
    kSetUp, {"Choose your Wi-Fi network on your phone to continue."}, {"Cancel"}, "Cancel"};
inline Card pinCard(const std::string& phone, const std::string& pin)
{
    return {"PIN", {"Enter this PIN on your phone. Connected to \u2068\u200E" + phone + "\u200F\u2069", pin},
        {"Cancel"}, "Cancel"};
}
inline const Card kGuideCard {"Set-up with your phone",
    {"Your phone can connect this TV to your Wi-Fi and sign in to your Norvale account, so you don’t have to "
     "type with the remote.",
        "Works with phones that run Zephra."},
    {"Set up with phone", "Continue with TV remote"}, "Set up with phone"};

inline Card withFocusOn(const std::string& button, Card card)
{
    card.focus = button;
    return card;
}

constexpr const char* kQuestion =
    "If you cancel now, the information from your phone won’t be used. Cancel set-up?";

/// The confirmation of the progress popups, with the keys on @p focus.
inline Card confirmation(const std::string& focus)
{
    return {"Cancel", {kQuestion}, {"Yes", "No"}, focus};
}

/// A popup that lies under another one: it has no keys.
inline Card below(const Card& card)
{
    return withFocusOn("", card);
}

/// The popup over the settings screen with its question; No is the default.
inline const Card kOwnedQuestion {kSetUp, {kQuestion}, {"Yes", "No"}, "No"};

inline const ShownRequest kGuideRequest {"ShowMobileGuide", {"0042"}, kGuideCard};
inline const ShownRequest kPinRequest {
    "ShowPinPopup", {"Anna's phone", "0042"}, pinCard("Anna's phone", "0042")};
inline const ShownRequest kNetworkTestRequest {
    "ShowNetworkTest", {"Anna's phone", "Attic & Garden"}, kNetworkTestCard};
inline const ShownRequest kSignInRequest {
    "ShowSSOLoginPopup", {"Anna's phone", "anna@example.com"}, kSignInCard};

inline const ShownRequest kTermsRequest {"ShowTnCPopup", {}, kTermsCard};
inline const ShownRequest kAccessPointsRequest {"ShowApListPopup", {}, kAccessPointsCard};

/// Every request there is that shows something.
inline const ShownRequest kRequests[] = {
    kGuideRequest,
    kPinRequest,
    kNetworkTestRequest,
    kAccessPointsRequest,
    kSignInRequest,
    kTermsRequest,
    {"ShowFailedPopup", {"sso"}, kFailedCard},
    {"ShowFailedPopup", {"wifi"}, kFailedCard},
};

} // namespace tv

#endif
