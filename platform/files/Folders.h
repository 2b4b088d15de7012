// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Where the platform keeps its files.
#pragma once

#include <string>

namespace orbis::files {

/// What survives a reboot. Read from the environment at each call, so that a change takes effect at once.
std::string stateFolder();

/// What a reboot clears.
std::string runtimeFolder();

/// Makes a folder and every missing one above it, with mode 0755 as the umask narrows it.
/// @return false when there is no such folder afterwards; errno tells why
bool makeFolders(const std::string& path);

} // namespace orbis::files
