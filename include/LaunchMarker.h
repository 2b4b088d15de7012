// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The moment a popup appears, for whoever measures the TV.
#pragma once

#include "OutsideNames.h"

#include <cstring>

#include <sys/prctl.h>

namespace TesselUI {

/// Marks it with @p name. Nothing happens where the kernel does not know the call.
inline void markAppearance(const char* name)
{
    prctl(kLaunchMarker, name, std::strlen(name));
}

} // namespace TesselUI
