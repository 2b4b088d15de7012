// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Composed sentences.
#pragma once

#include "Export.h"

namespace TesselUI {

// Sizes of the buffers of composed sentences, bytes, the terminator included.
inline constexpr int kCombinedTextSize = 255; ///< what combinate_string() writes into
inline constexpr int kMarkedNameSize = 255; ///< a name between direction marks
inline constexpr int kMarkedTextSize = 1024; ///< a sentence or name between tags

} // namespace TesselUI

extern "C" {

/// Fills a translated template with up to two arguments (%1, %2; see string_util.h).
/// @param format,arg1,arg2  borrowed; null counts as ""
/// @param out  buffer of kCombinedTextSize bytes; the text is cut to it between two characters. Null is
///             logged and otherwise ignored
TESSEL_API void combinate_string(const char* format, const char* arg1, const char* arg2, char* out);
}
