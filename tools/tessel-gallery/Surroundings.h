// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What the program finds around it while it is pictured: folders, settings, fonts.
#pragma once

#include "Options.h"

#include <string>

namespace gallery {

/// A folder that goes with the object; its path is empty when it could not be made.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const { return m_path; }

private:
    std::string m_path;
};

/// Description of the fonts of pictures, beside the program's own folder as in an installed tree.
std::string fontsFile();

/// Sets the environment and the settings, which lie in @p folder, before the toolkit starts.
void setUp(const Combination& combination, const std::string& folder);

} // namespace gallery
