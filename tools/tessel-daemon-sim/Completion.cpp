// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Completion.h"

#include "Commands.h"
#include "Scenario.h"
#include "Settings.h"
#include "Vocabulary.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <sstream>

namespace DaemonSim {

namespace {

using Words = std::vector<std::string>;

struct ArgumentRow {
    std::string_view command;
    size_t position; ///< of the first argument that these words are for; the command's own is 0
    bool repeats; ///< they are for all that follow, too
    Words (*words)();
};

constexpr std::array<ArgumentRow, 9> kArguments = {{
    {"set", 1, false,
        [] {
            return Words {"int", "string"};
        }},
    {"set", 2, false, settingsKeys},
    {"unset", 1, false, settingsKeys},
    {"wait", 1, true, eventWords},
    {"behave", 1, false, behaviourWords},
    {"via", 1, false,
        [] {
            return Words {"bus", "settings"};
        }},
    {"scenario", 1, false, shippedScenarios},
    {"viewer", 1, false, [] { return Words {"press"}; }},
    {"viewer", 2, true,
        [] {
            return Words {"Return", "Left", "Right", "Up", "Down", "XF86Back"};
        }},
}};

/// @param before  the words in front of the one that is being typed
Words wordsAfter(const Words& before)
{
    if (before.empty())
        return commandNames();
    const auto* row = std::find_if(kArguments.begin(), kArguments.end(), [&](const ArgumentRow& each) {
        return each.command == before.front()
            && (each.position == before.size() || (each.repeats && each.position < before.size()));
    });
    return row == kArguments.end() ? Words() : row->words();
}

/// @return how many characters the words begin with together
size_t commonLength(const Words& words)
{
    size_t length = words.front().size();
    for (const std::string& word : words) {
        const auto differs = std::mismatch(word.begin(), word.end(), words.front().begin(),
            words.front().begin() + static_cast<std::ptrdiff_t>(length));
        length = static_cast<size_t>(std::distance(word.begin(), differs.first));
    }
    return length;
}

} // namespace

Completion complete(const std::string& line)
{
    const size_t begin = line.find_last_of(" \t") + 1; // 0 where there is none
    const std::string begun = line.substr(begin);
    std::istringstream stream(line.substr(0, begin));
    const Words before {std::istream_iterator<std::string>(stream), {}};

    Completion completion;
    for (const std::string& word : wordsAfter(before)) {
        if (word.rfind(begun, 0) == 0)
            completion.candidates.push_back(word);
    }
    if (completion.candidates.empty())
        return completion;
    const std::string& first = completion.candidates.front();
    completion.rest = first.substr(begun.size(), commonLength(completion.candidates) - begun.size());
    if (completion.candidates.size() == 1)
        completion.rest += ' ';
    return completion;
}

} // namespace DaemonSim
