// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What the toolkit forgets to free.
#pragma once

#include <Evas.h>

namespace orbis::flux {

/// The toolkit's release 1.26.3 makes a record for each theme object, gives it out as the object's data, and
/// loses it when the object goes: 32 bytes each time, two megabytes after ten thousand popups. Frees it once
/// @p group is gone; does nothing with any other release, which may do so itself.
/// @param group  a theme object that has just been made; nullable
void freeWithGroup(Evas_Object* group);

} // namespace orbis::flux
