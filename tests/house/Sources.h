// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The project's own sources, as text.
#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace house {

/// From what to what; both sides are paths from the project's root.
using Arrows = std::map<std::string, std::set<std::string>>;

/// @return the C and C++ files below @p folders
std::vector<std::filesystem::path> sources(const std::vector<std::string>& folders);

std::string textOf(const std::filesystem::path& file);

/// @return the file of the project that @p file includes as @p name, relative to the root; "" for one that is
/// not the
///         project's
std::filesystem::path included(const std::filesystem::path& file, const std::string& name);

/// @return for each of the files those of the project that it includes
Arrows includes(const std::vector<std::filesystem::path>& files);

/// @return @p text without its comments; line ends stay
std::string withoutComments(const std::string& text);

} // namespace house
