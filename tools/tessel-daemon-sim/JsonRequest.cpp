// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "JsonRequest.h"

#include <json/value.h>
#include <json/writer.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace DaemonSim {

namespace {

struct PageRow {
    std::string_view method;
    const char* page;
    std::array<const char*, 2> members; ///< one an argument; null for an argument that the page leaves out
};

constexpr std::array<PageRow, 7> kPages = {{
    {"ShowMobileGuide", "mobileDetection", {"pin"}},
    {"ShowPinPopup", "pin", {"mobilename", "pin"}},
    {"ShowNetworkTest", "wifi", {"mobilename", "ssid"}},
    {"ShowSSOLoginPopup", "sso", {"mobilename", "account"}},
    {"ShowTnCPopup", "tnc", {}},
    {"HidePopup", "success", {}},
    {"ShowFailedPopup", "disconnect", {}},
}};

constexpr std::string_view kSignInStep = "sso";

} // namespace

std::optional<std::string> toJson(const RequestCommand& request)
{
    const auto* row = std::find_if(
        kPages.begin(), kPages.end(), [&](const PageRow& each) { return each.method == request.method; });
    if (row == kPages.end())
        return std::nullopt;
    if (request.method == "ShowFailedPopup" && request.arguments.front() == kSignInStep)
        return std::nullopt;

    // Put together by hand, because the library would sort the members.
    std::string json = "{\"page\":" + Json::valueToQuotedString(row->page);
    for (size_t index = 0; index < std::min(row->members.size(), request.arguments.size()); ++index) {
        if (row->members[index])
            json += "," + Json::valueToQuotedString(row->members[index]) + ":"
                + Json::valueToQuotedString(request.arguments[index].c_str());
    }
    return json + "}";
}

} // namespace DaemonSim
