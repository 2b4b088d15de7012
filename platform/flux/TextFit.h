// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// How much room the text of a text box needs, and what of it is drawn where there is less.
#pragma once

#include <string>

namespace orbis::flux {

struct TextboxRecord;

/// @return how high a text is that is @p width wide and not shrunk, pixels as the width
int naturalHeight(const TextboxRecord& record, int width);

/// @return how high it is with its smallest letters
int leastHeight(const TextboxRecord& record, int width);

/// What of a text is drawn, and how large.
struct FittedText {
    std::string markup;
    int size = 0; ///< of its letters, as the theme has it; 0 for its group's own
};

/// @return the text as it is drawn in the room that its box has: at the largest size that leaves room for all
/// of
///         it; where even the smallest leaves none, an ellipsis stands for the rest
FittedText textThatFits(const TextboxRecord& record);

} // namespace orbis::flux
