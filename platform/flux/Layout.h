// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Inside of the styled layout, for the other parts of the widget set.
#pragma once

#include "flux/LayoutRecord.h"

namespace orbis::flux {

/// @return the styled layout around @p widget that no other styled layout holds; null when there is none
Evas_Object* outermostLayout(Evas_Object* widget);

} // namespace orbis::flux
