// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// How the texts of the widgets are set, so that names in any script can be read and lines break well.
#pragma once

#include <string>

namespace orbis::flux {

enum class Lines { One, Many };

/// Names come with marks of direction that nobody looks at before they are drawn. In the text that is
/// returned each isolate begins and ends within its line, and a name that is written from right to left and
/// stands in one is not turned round by force, nor does it end a line of its sentence. A Korean word stays on
/// its line, and no last line is one short word or a colon. A letter has no more marks than any writing piles
/// up. Only how the text is drawn changes, never what it says.
/// @param markup  what displayMarkup() has made
/// @param lines   with One, nothing in it ends a line
std::string typeset(const std::string& markup, Lines lines = Lines::Many);

/// @return a code, whose characters stand apart, in groups where they are many
std::string typesetCode(const std::string& markup);

} // namespace orbis::flux
