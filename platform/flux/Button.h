// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Inside of the styled button, for the other parts of the widget set.
#pragma once

#include <Elementary.h>

namespace orbis::flux {

struct ButtonRecord {
    static constexpr const char* kKey = "orbis.flux.button";
    Evas_Object* object = nullptr;
    Evas_Object* popup = nullptr; ///< borrowed; whose slot it is in
};

} // namespace orbis::flux
