// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Settings.h"

#include "EventLog.h"
#include "Names.h"

#include <vconf.h>

#include <iterator>
#include <set>

namespace DaemonSim {

namespace {

constexpr const char* kUiKeys[] = {
    kStartModeKey,
    kDeviceOwnedKey,
    kRequestKey,
    "db/bleapp/security_key",
    kContrastKey,
    "db/menu/system/accessibility/screenreader",
    kLanguageKey,
    "memory/menu/network/tessel_ocf_ready",
    kTvNameKey,
    kWizardModeKey,
};

bool report(EventLog& log, bool success, const std::string& what, const std::string& value)
{
    if (success)
        log.event(what + value);
    else
        log.error("the settings store refused: " + what);
    return success;
}

} // namespace

bool writeInt(EventLog& log, const std::string& key, int value)
{
    const bool success = vconf_set_int(key.c_str(), value) == VCONF_OK;
    return report(log, success, "set " + key, " " + std::to_string(value));
}

bool writeString(EventLog& log, const std::string& key, const std::string& value)
{
    const bool success = vconf_set_str(key.c_str(), value.c_str()) == VCONF_OK;
    return report(log, success, "set " + key, " " + value);
}

bool removeKey(EventLog& log, const std::string& key)
{
    const bool existed = vconf_get_type(key.c_str()) != VCONF_TYPE_NONE;
    const bool success = !existed || vconf_unset(key.c_str()) == VCONF_OK;
    return report(log, success, "unset " + key, "");
}

std::vector<std::string> settingsKeys()
{
    std::set<std::string> keys(std::begin(kUiKeys), std::end(kUiKeys));
    const auto keep = [](const char* key, void* data) {
        static_cast<std::set<std::string>*>(data)->insert(key);
    };
    vconf_list(nullptr, keep, &keys);
    return {keys.begin(), keys.end()};
}

} // namespace DaemonSim
