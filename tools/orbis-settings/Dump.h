// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A store, or a part of it, as text: to be kept, and to be put back exactly as it was.
///
/// The first line is "orbis-settings-dump 1 PREFIX", the last "end COUNT", and each between them "int KEY
/// NUMBER" or "string KEY TEXT". In prefix, key and text \\ is a backslash, \n a line end and \xHH any byte;
/// a blank in a prefix or a key is written so, too.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

struct Setting {
    bool isNumber = false;
    int number = 0;
    std::string text {};

    bool operator==(const Setting& other) const
    {
        return isNumber == other.isNumber && number == other.number && text == other.text;
    }
};

struct Dump {
    std::string prefix; ///< of all its keys; what else begins so is not set
    std::map<std::string, Setting> settings;
};

/// @return the keys that begin so, sorted; nothing with errno when the store cannot be read
std::optional<std::vector<std::string>> keysOf(const std::string& prefix);

/// @return what the key holds now; nothing, with errno, when it has no value that can be read
std::optional<Setting> settingOf(const std::string& key);

/// Reads the store. @param problem  out, what is in the way. @return nothing then
std::optional<Dump> readStore(const std::string& prefix, std::string& problem);

/// @return the whole text
std::string toText(const Dump& dump);

/// @param problem  out, what is wrong with the text and in which line
/// @return nothing when anything is wrong: a key that there cannot be, one that comes twice, a number that is
/// none, an
///         end that is missing
std::optional<Dump> parseDump(const std::string& text, std::string& problem);
