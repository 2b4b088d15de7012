/// Texts as they are given to a speech service.
#pragma once

#include <string>

namespace orbis::flux {

/// @return the text as one line, without the marks that only tell the direction of writing
std::string spokenLine(const std::string& text);

/// Speech services read a row of digits as a number, which nobody can type from.
/// @return the text with blanks between the digits of each row that is too long to be a year's short form or
///         a count; rows that belong to a word with letters stay
std::string withDigitsApart(const std::string& text);

} // namespace orbis::flux
