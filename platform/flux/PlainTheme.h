// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A look without pictures that is part of the library itself.
#pragma once

#include <string_view>

namespace orbis::flux {

/// @return a compiled theme with every group of the installed one; lives as long as the library
std::string_view plainTheme();

} // namespace orbis::flux
