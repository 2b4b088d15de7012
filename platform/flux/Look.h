// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What the viewer chose for the look of the widgets, apart from their theme.
#pragma once

#include "vconf.h"

#include <Elementary.h>

#include <functional>
#include <string>

namespace orbis::flux {

/// @return whether the viewer chose the high-contrast look
bool highContrast();

/// @return whether nothing moves but in calm steps: in high contrast, and where the viewer wants it so
bool isCalm();

/// @return how much larger than usual the viewer wants texts to be: 1.0, 1.3 or 1.6
double textScale();

/// @return how much larger than usual titles and buttons are: they are large as it is, and leave the room to
/// the
///         texts between them
double cardScale();

/// Some languages have a family of fonts of their own, so that a row of mixed writing does not change its
/// font.
/// @return what a text's style says for the family to be that of the language that texts have now, or ""
std::string languageStyle();

/// @return whether letters of the texts' language are told apart by dots that are lost in the smallest size
bool hasSmallDots();

/// Gives the text @p part of a widget's theme the family of the language.
void applyLanguage(Evas_Object* widget, const char* part);

/// Gives a widget of the theme the look that the viewer chose, now, and whenever he chooses another one while
/// a window is managed; the size of texts is that of this moment.
void applyLook(Evas_Object* widget);

/// Tells of the viewer's choice of another look by the smart event "flux,look,changed" on @p picture.
void followLook(Evas_Object* picture);

/// Has the widgets of a window follow the viewer's choices. Must go before the window. Main loop only.
class LookWatch {
public:
    /// @param changed  called when the viewer has chosen another look
    LookWatch(Evas_Object* window, std::function<void()> changed);
    ~LookWatch();
    LookWatch(const LookWatch&) = delete;
    LookWatch& operator=(const LookWatch&) = delete;

private:
    static void on_changed(keynode_t*, void* data);

    Evas_Object* m_window; ///< borrowed
    std::function<void()> m_changed;
};

} // namespace orbis::flux
