// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "vconf.h"

#include "settings/Key.h"
#include "settings/KeyWatches.h"
#include "settings/Value.h"

#include <cerrno>
#include <exception>
#include <string>

namespace {

/// Callers are C: a lack of memory becomes an ordinary failure.
template <typename Result, typename Action>
Result guarded(Result failure, Action action) noexcept
{
    try {
        return action();
    } catch (const std::exception&) {
        errno = ENOMEM;
        return failure;
    }
}

int result(bool succeeded)
{
    return succeeded ? VCONF_OK : VCONF_ERROR;
}

} // namespace

int vconf_get_int(const char* key, int* value)
{
    return guarded<int>(VCONF_ERROR, [=] {
        const auto found = orbis::settings::readValue(key);
        if (!value || !found || found->type != VCONF_TYPE_INT)
            return VCONF_ERROR;
        *value = found->number;
        return VCONF_OK;
    });
}

char* vconf_get_str(const char* key)
{
    return guarded<char*>(nullptr, [=]() -> char* {
        auto found = orbis::settings::readValue(key);
        return found ? found->text.release() : nullptr;
    });
}

int vconf_set_int(const char* key, int value)
{
    return guarded<int>(VCONF_ERROR,
        [=] { return result(orbis::settings::writeValue(key, VCONF_TYPE_INT, std::to_string(value))); });
}

int vconf_set_str(const char* key, const char* value)
{
    return guarded<int>(VCONF_ERROR,
        [=] { return result(value && orbis::settings::writeValue(key, VCONF_TYPE_STRING, value)); });
}

int vconf_unset(const char* key)
{
    return guarded<int>(VCONF_ERROR, [=] {
        const auto file = orbis::settings::fileOfKey(key);
        return result(file && orbis::files::removeFile(file->folder, file->name, file->durability));
    });
}

int vconf_notify_key_changed(const char* key, vconf_callback_fn callback, void* user_data)
{
    return guarded<int>(
        VCONF_ERROR, [=] { return result(orbis::settings::addKeyWatch(key, callback, user_data)); });
}

int vconf_ignore_key_changed(const char* key, vconf_callback_fn callback)
{
    return guarded<int>(VCONF_ERROR, [=] { return result(orbis::settings::removeKeyWatch(key, callback)); });
}

vconf_type vconf_get_type(const char* key)
{
    return guarded(VCONF_TYPE_NONE, [=] {
        const auto found = orbis::settings::readValue(key);
        return found ? found->type : VCONF_TYPE_NONE;
    });
}

int vconf_list(const char* prefix, vconf_key_fn callback, void* user_data)
{
    return guarded<int>(VCONF_ERROR, [=]() -> int {
        if (!callback)
            errno = EINVAL;
        const auto keys = callback ? orbis::settings::findKeys(prefix ? prefix : "") : std::nullopt;
        if (!keys)
            return VCONF_ERROR;
        for (const std::string& key : *keys)
            callback(key.c_str(), user_data);
        return static_cast<int>(keys->size());
    });
}
