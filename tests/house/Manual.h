// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A manual page, as what it lists.
#pragma once

#include <map>
#include <set>
#include <string>

namespace house {

/// A section's items: what stands before the text, and the text.
using Items = std::map<std::string, std::string>;

/// @param file  in docs/man, written with the macros of man(7). @return its sections' items, in plain text
std::map<std::string, Items> manual(const std::string& file);

/// @return what the first group of @p pattern, or all of it where it has none, finds in @p text
std::set<std::string> found(const std::string& pattern, const std::string& text);

/// @return the same in each item's beginning
std::set<std::string> found(const std::string& pattern, const Items& items);

} // namespace house
