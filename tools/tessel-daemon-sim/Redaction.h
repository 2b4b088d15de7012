// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Takes out of a scenario what says who somebody is.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace DaemonSim {

/// Puts other characters in the place of letters, digits and pictures: of the same script, kind and number of
/// bytes, so that a text needs about as much room, is written the same way and breaks what it broke before.
/// Blanks, punctuation, markup, entities and invisible characters stay. The same text is always replaced by
/// the same one, and what comes out depends on its shape alone: letters cannot be told from it.
class Redaction {
public:
    /// @param text  valid UTF-8
    std::string text(const std::string& text);

    /// The same for all strings and numbers of a popup request but the names of its members and the page;
    /// takes also what is no JSON.
    std::string json(const std::string& request);

private:
    std::string jsonString(const std::string& inside);

    std::map<std::string, std::string> m_known;
};

} // namespace DaemonSim
