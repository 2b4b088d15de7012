/// How the texts of the widgets are set, so that names in any script can be read and lines break well.
#pragma once

#include <string>

namespace orbis::flux {

/// Names come with marks of direction that nobody looks at before they are drawn. In the text that is
/// returned no character is turned round by force, each isolate begins and ends within its line, and a name
/// that is isolated has the direction of its own letters. A Korean word stays on its line, and no line ends
/// with one short word, a lone bracket or colon alone. Only how the text is drawn changes, never what it
/// says.
/// @param markup  what displayMarkup() has made
std::string typeset(const std::string& markup);

/// The same for a code, whose characters stand apart, long ones in groups.
std::string typesetCode(const std::string& markup);

} // namespace orbis::flux
