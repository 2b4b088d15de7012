// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Texts as they are given to a speech service.
#pragma once

#include <string>
#include <vector>

namespace orbis::flux {

/// @return what a text with the toolkit's markup says, as far as a widget draws it; its lines end in "\n"
std::string plainText(const std::string& markup);

/// @return the text as one line: without the marks that only tell the direction of writing, without control
///         characters and what is no UTF-8, with one blank between words
std::string spokenLine(const std::string& text);

/// Speech services read a row of digits as a number, which nobody can type from.
/// @return the text with blanks between the digits of each row that is too long to be a year's short form or
///         a count; rows that belong to a word with letters stay
std::string withDigitsApart(const std::string& text);

/// For codes, of whatever characters they are.
/// @return each character by itself, "0 4 2"; a blank in the code is a pause, "0 4, 2 7"
std::string spelled(const std::string& code);

/// @return the parts one after the other, each ended by a full stop unless it ends in a mark that is a pause
///         or goes on itself; parts without a word are left out
std::string sentences(const std::vector<std::string>& parts);

/// @return whether there is anything in @p part that can be said
bool hasWords(const std::string& part);

} // namespace orbis::flux
