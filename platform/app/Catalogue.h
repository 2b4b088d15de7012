// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Compiled message catalogues, looked at before the C library does.
#pragma once

#include <string>
#include <string_view>

namespace orbis::app {

/// The C library follows every offset in a catalogue unseen: one that was cut, or whose bytes were changed,
/// ends the process or hangs it. A catalogue is sound when every look-up in it stays inside the file and
/// comes to an end, every id that it has is found, and every text is whole and UTF-8.
/// @param bytes  a whole file, in either byte order
/// @return what is wrong with it, or ""
std::string faultOfCatalogue(std::string_view bytes);

/// For catalogues that the C library need not know.
/// @param bytes  of a sound catalogue
/// @return what it says for @p id, "" when it does not have that
std::string textOfCatalogue(std::string_view bytes, std::string_view id);

} // namespace orbis::app
