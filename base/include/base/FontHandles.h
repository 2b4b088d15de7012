// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Owners of the handles of fontconfig.
#pragma once

#include "base/Handles.h"

#include <fontconfig/fontconfig.h>

namespace base {

using FontConfigPtr = CHandle<FcConfig, FcConfigDestroy>;
using FontPatternPtr = CHandle<FcPattern, FcPatternDestroy>;
using FontSetPtr = CHandle<FcFontSet, FcFontSetDestroy>;
using CharSetPtr = CHandle<FcCharSet, FcCharSetDestroy>;

} // namespace base
