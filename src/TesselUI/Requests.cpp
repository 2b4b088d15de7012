// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Requests.h"

#include "UIManager.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace TesselUI {

namespace {

using Text = std::string;

constexpr Request kRequests[] = {
    {"ShowMobileGuide", "(s)", "Method name matched to ShowMobileGuide", "mobileDetection", {"pin", nullptr},
        "Method Name matched to MobileDetection",
        [](UIManager& m, Text& pin, Text&) { return m.showGuidePopup(pin); }, DLOG_INFO,
        "Mobile Guide PopupShown successfully", "Mobile Guide PopupShown successfully"},
    {"ShowPinPopup", "(ss)", nullptr, "pin", {"mobilename", "pin"}, "Method Name matched to Pin Popup",
        [](UIManager& m, Text& phone, Text& pin) { return m.showPinPopup(phone, pin); }, DLOG_INFO,
        "Pin Popup Shown", "Pin Popup Shown"},
    {"ShowNetworkTest", "(ss)", nullptr, "wifi", {"mobilename", "ssid"}, "Method Name matched to Wifi Popup",
        [](UIManager& m, Text& phone, Text& ssid) { return m.showNetworkTestPopup(phone, ssid); }, DLOG_INFO,
        "Network Test Popup Shown", "Network Test Popup Shown"},
    {"ShowSSOLoginPopup", "(ss)", nullptr, "sso", {"mobilename", "account"},
        "Method Name matched to SSO Popup",
        [](UIManager& m, Text& phone, Text& account) { return m.showSSOLoginPopup(phone, account); },
        DLOG_INFO, "SSO login Popup Shown", "SSO login Popup Shown"},
    {"ShowTnCPopup", nullptr, nullptr, "tnc", {nullptr, nullptr}, "Method Name matched to TnC Popup",
        [](UIManager& m, Text&, Text&) { return m.showTncPopup(); }, DLOG_DEBUG, "Tnc  Popup Shown",
        "TnC login Popup Shown"},
    {"ShowFailedPopup", "(s)", nullptr, "disconnect", {nullptr, nullptr},
        "Method Name matched to Failed Popup",
        [](UIManager& m, Text& step, Text&) { return m.showFailedPopup(step); }, DLOG_DEBUG,
        "Failed Popup Shown", "Failed Popup Shown"},
    {"ShowApListPopup", nullptr, nullptr, nullptr, {nullptr, nullptr}, nullptr,
        [](UIManager& m, Text&, Text&) { return m.showApListPopup(); }, DLOG_DEBUG, "AP List Popup Shown",
        nullptr},
    {"HidePopup", nullptr, nullptr, "success", {nullptr, nullptr}, "Method Name matched to Hide Popup",
        [](UIManager& m, Text&, Text&) { return m.hidePopup(); }, DLOG_DEBUG, "Popup Hide", "Popup Hide"},
};

template <typename Matches>
const Request* find(Matches matches)
{
    const auto* row = std::find_if(std::begin(kRequests), std::end(kRequests), matches);
    return row == std::end(kRequests) ? nullptr : row;
}

} // namespace

const Request* requestOfMethod(const char* method)
{
    return find([method](const Request& row) { return method && std::string_view {row.method} == method; });
}

const Request* requestOfPage(const std::string& page)
{
    return find([&page](const Request& row) { return row.page && page == row.page; });
}

std::size_t requestCount()
{
    return std::size(kRequests);
}

} // namespace TesselUI
