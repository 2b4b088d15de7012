// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What a message may not bring into the log.
#pragma once

#include <string>
#include <string_view>

namespace orbis::log {

/// Names and requests from outside are part of messages: a line end of theirs would begin a line that nobody
/// wrote, and an escape byte would command the terminal that shows the log.
/// @return the text as UTF-8 without control characters: a line feed, carriage return or tab is written \n,
/// \r,
///         \t, another byte below a blank, DEL, and a byte that is no UTF-8 \xNN, U+0080 to U+009F and the
///         separators U+2028 and U+2029 \uNNNN. A backslash stays as it is.
std::string escaped(std::string_view text);

} // namespace orbis::log
