// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Lines of about the same width, where the last of several in the middle would be a stump.
#pragma once

#include <Evas.h>

#include <string>

namespace orbis::flux {

struct TextboxRecord;

/// @return whether the last of several lines of @p textblock has less than a half of the longest
bool hasStump(const Evas_Object* textblock);

/// @param markup  what is drawn
/// @param size    of its letters; 0 for its group's own
/// @return what stays free at either side, pixels, so that the words of the text spread over its lines.
///         0 where it has no stump, or where that would break a word or take another line
int balancingMargin(const TextboxRecord& record, const std::string& markup, int size);

} // namespace orbis::flux
