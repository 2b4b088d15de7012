// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Popup requests as JSON.
#pragma once

#include <json/json.h>

#include <cstddef>
#include <string_view>

namespace TesselUI {

/// The longest text that counts as a request, bytes. A value tree takes many times the memory of its text.
constexpr std::size_t kLongestRequest = std::size_t {64} * 1024;

/// Reads any text; throws nothing but std::bad_alloc.
/// @param root  the request; null when the text is too long, or nested deeper than the library takes
/// @return whether @p text is JSON of an acceptable size
bool parseRequest(std::string_view text, Json::Value& root);

} // namespace TesselUI
