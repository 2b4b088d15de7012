/// Markup that a text may bring along into a text box.
#pragma once

#include <string>

namespace orbis::flux {

/// Leaves a text its family, weight, alignment and colour, and takes from it what the widget decides: sizes,
/// line spacing, wrapping, margins and embedded objects. A name from outside could otherwise make a text
/// vanish that it is part of. An angle bracket that begins no markup of the toolkit becomes a character that
/// is drawn, for what follows it would not be drawn otherwise.
/// @param colour  replaces every colour of the text; empty: they stay
std::string displayMarkup(const std::string& markup, const std::string& colour);

} // namespace orbis::flux
