// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Inside of the styled progress indicator, for the other parts of the widget set.
#pragma once

#include <Elementary.h>

namespace orbis::flux {

/// The key of indicators' records, for who only asks whether something is one.
inline constexpr const char* kProgressbarKey = "orbis.flux.progressbar";

/// @param widget  nullable
inline bool isProgressbar(const Evas_Object* widget)
{
    return widget && evas_object_data_get(widget, kProgressbarKey) != nullptr;
}

} // namespace orbis::flux
