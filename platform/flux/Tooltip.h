// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Inside of the hint bubble, for the other parts of the widget set.
#pragma once

#include <Elementary.h>

#include <string>

namespace orbis::flux {

/// @return the markup of the hint that is shown at @p target, "" when there is none
std::string hintOf(const Evas_Object* target);

} // namespace orbis::flux
