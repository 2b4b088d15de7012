// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Popup requests in the words of the settings store.
#pragma once

#include "Commands.h"

#include <optional>
#include <string>

namespace DaemonSim {

/// @return the text for the request key that asks for the same, or nothing when there is none: the
/// access-point hint has no page, and the page for a failure cannot say that it was the sign-in.
std::optional<std::string> toJson(const RequestCommand& request);

} // namespace DaemonSim
