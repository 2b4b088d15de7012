// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The times that stand in front of a log's lines.
#pragma once

#include <optional>
#include <string_view>

namespace DaemonSim {

/// Knows what the journal's tools print ("short", "short-precise", "short-iso", "short-full",
/// "short-monotonic", "short-unix", "export" and their kin), and with them the system log's own files.
/// @return seconds, of which only differences within one log mean something; nothing when the line begins
/// otherwise
std::optional<double> timeAtBeginning(std::string_view line);

} // namespace DaemonSim
