// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What a popup says.
#pragma once

#include "flux/PopupRecord.h"

#include <string>
#include <vector>

namespace orbis::flux {

/// A text of a popup.
struct SpokenPart {
    std::string plain; ///< as it is drawn, lines included
    std::string spoken; ///< ready to be said, but for the stop at its end
    bool isCode = false;
};

/// @return what a viewer reads on @p popup, from top to bottom: its title, the texts of its content and the
///         hint at a picture of it; each of them once, and none that is empty
std::vector<SpokenPart> partsOf(const PopupRecord& popup);

/// @return label, kind and place of a button, which need be in no popup
std::string nameOfButton(const Evas_Object* button);

/// An application may tell more of a popup than its widgets show. What it tells is one text for the whole
/// process in some programs, which can be of another popup, and its end of another button.
/// @param information  that the application gives for a button of @p popup
/// @return the parts of it that are to be said in the place of @p parts; none when it tells nothing more or
/// is
///         of something else
std::vector<std::string> furtherInformation(
    const std::string& information, const PopupRecord& popup, const std::vector<SpokenPart>& parts);

/// @return whether something in @p popup shows that the viewer has to wait
bool hasProgress(const PopupRecord& popup);

} // namespace orbis::flux
