// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The change callbacks of this process.
#pragma once

#include "vconf.h"

namespace orbis::settings {

/// See vconf_notify_key_changed(). @return false with errno on failure
bool addKeyWatch(const char* key, vconf_callback_fn callback, void* userData);

/// See vconf_ignore_key_changed().
bool removeKeyWatch(const char* key, vconf_callback_fn callback);

} // namespace orbis::settings
