// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// How the texts of the widgets are set, so that names in any script can be read and lines break well.
#pragma once

#include <string>

namespace orbis::flux {

/// Names come with marks of direction that nobody looks at before they are drawn. In the text that is
/// returned each isolate begins and ends within its line, and a name that is written from right to left and
/// stands in one is not turned round by force. A Korean word stays on its line, and no last line is one short
/// word or a colon. Only how the text is drawn changes, never what it says.
/// @param markup  what displayMarkup() has made
std::string typeset(const std::string& markup);

/// @return a code, whose characters stand apart, in groups where they are many
std::string typesetCode(const std::string& markup);

} // namespace orbis::flux
