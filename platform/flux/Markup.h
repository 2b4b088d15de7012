// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Markup that a text may bring along into a styled widget.
#pragma once

#include <string>

namespace orbis::flux {

/// What decides about the colours that a text brings along.
struct TextColours {
    std::string ground; ///< behind the text, a theme's "R G B A"; empty: unknown, and no colour is taken
    std::string accent; ///< stands in the place of each of them; empty: those that can be read are taken
};

/// Names from outside are drawn with the toolkit's markup, which can open files, change the whole card, or
/// cost seconds to lay out. A text keeps line ends, bold, italics, centring, the television's families of
/// fonts and the colours that stand out from what is behind it; the other tags of the toolkit are dropped,
/// and so is the end of a tag that was. An angle bracket that begins no markup of the toolkit becomes a
/// character that is drawn, for what follows it would not be drawn otherwise.
///
/// A text is cut, between two characters, where it is longer than any card can hold, and ends in "…" then; of
/// very many tags the first ones are looked at. Entities count as the character that they stand for.
std::string displayMarkup(const std::string& markup, const TextColours& colours = {});

} // namespace orbis::flux
