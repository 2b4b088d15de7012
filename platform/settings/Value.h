// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A setting's value and its form on the disk: a line with the type, then the value's bytes.
#pragma once

#include "base/Handles.h"
#include "vconf.h"

#include <optional>
#include <string_view>

namespace orbis::settings {

struct Value {
    vconf_type type = VCONF_TYPE_NONE;
    base::MallocStr text; ///< of VCONF_TYPE_STRING; from malloc(), ends with NUL
    int number = 0; ///< of VCONF_TYPE_INT
};

/// @return nothing, with errno, when the key is refused, absent, or its file holds something else
std::optional<Value> readValue(const char* key);

/// @param type  VCONF_TYPE_INT or VCONF_TYPE_STRING
/// @param text  the value's bytes, without NUL; the number in decimal for VCONF_TYPE_INT
bool writeValue(const char* key, vconf_type type, std::string_view text);

} // namespace orbis::settings
