// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The escapes that the platform's log writes for control characters and for bytes that are no text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace DaemonSim {

/// Reads \n, \r, \t, \xHH (a byte) and \uHHHH.
/// @param others  characters that a backslash in front makes themselves
/// @return nothing when a backslash stands in front of anything else, or an escape would end the text (\x00)
std::optional<std::string> unescaped(std::string_view text, std::string_view others);

/// The same for the text of a log, which escapes no backslash: what is no escape stays.
/// @param count  out, how many escapes there were; is added to
std::string unescapedLog(std::string_view text, size_t& count);

} // namespace DaemonSim
