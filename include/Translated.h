// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// User-visible texts.
#pragma once

#include "Paths.h"

#include <libintl.h>
#include <string>

namespace TesselUI {

/// @return the text of the id @p id in the viewer's language
inline std::string translated(const char* id)
{
    return dgettext(kTextDomain, id);
}

} // namespace TesselUI
