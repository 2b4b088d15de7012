// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Inside of the styled text box, for the other parts of the widget set.
#pragma once

#include "flux/TextboxRecord.h"

namespace orbis::flux {

/// Has a text begin where lines begin, unless the application has chosen an alignment.
void alignToStart(TextboxRecord& record);

} // namespace orbis::flux
