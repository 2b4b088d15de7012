// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What is heard of a state, beside what is drawn of it.
#pragma once

#include "Rules.h"
#include "States.h"

#include <string>
#include <vector>

namespace gallery {

/// What the screen reader is to say on the way into a state, and what it did say.
struct Utterances {
    std::vector<std::string> lines; ///< that were said, in order
    std::vector<std::string> news; ///< texts that are drawn and were not before, from top to bottom
    std::string label; ///< of the button that the focus came to; empty when it stayed where it was
    std::string kind; ///< of that button, and its place, in words
    std::string code; ///< that is among the news when the state has one
};

/// Each text is heard once, in the order in which it is read, then the button, and nothing else.
std::vector<Broken> checkSpeech(const Utterances& utterances);

/// Listens while states are pictured. Does nothing where the platform is another than ours, whose speech may
/// be another, too.
class Listener {
public:
    /// Turns the screen reader on; to be made when the settings store is in its place.
    /// @param transcript  file that gets a line an utterance: the state, a tab, what was said
    explicit Listener(std::string transcript);

    /// @param scene  as it is in this state
    /// @return the broken rules
    std::vector<Broken> hear(const State& state, const Scene& scene);

private:
    std::vector<std::string> takeLines();

    std::string m_transcript;
    size_t m_taken = 0; ///< lines of the speech log
    std::vector<std::string> m_drawn; ///< in the state before
    std::string m_focused; ///< label, likewise
};

} // namespace gallery
