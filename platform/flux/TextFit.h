// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// How much room the text of a text box needs, and what of it is drawn where there is less.
#pragma once

#include <string>

namespace orbis::flux {

struct TextboxRecord;

/// @return how high a text is that is @p width wide and not shrunk, pixels as the width
int naturalHeight(const TextboxRecord& record, int width);

/// @return the text as it is drawn in the room that its box has: where even its smallest letters leave no
///         room for all of it, an ellipsis stands for the rest
std::string textThatFits(const TextboxRecord& record);

} // namespace orbis::flux
