// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The platform's own words.
#pragma once

#include <string>
#include <vector>

namespace orbis::app {

/// For what is said to a viewer beside the application's texts.
/// @param id      the English words, which are a catalogue's id; "%1" and "%2" stand for numbers
/// @param numbers for these places
/// @return the words in the language that the application's texts are in; in English where they are not
///         translated, or their catalogue is damaged, which is named in the log once
std::string wordsOf(const char* id, const std::vector<int>& numbers = {});

} // namespace orbis::app
