// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Texts that shrink where they have to.
#pragma once

#include <Elementary.h>

namespace orbis::flux {

/// The toolkit looks for the largest size that fits by trying sizes, with all of a text laid out and its
/// letters read for each, whenever something of the text changes. Most texts fit as they are: so that is
/// tried first, once, when the next picture is prepared.

/// Has @p look called before each picture of the canvas that @p widget is on, until the widget is deleted.
void lookBeforePictures(Evas_Object* widget, void (*look)(Evas_Object* widget));

/// @param width,height  pixels
/// @return whether a part of a theme is so large
bool hasRoomFor(const Evas_Object* text, int width, int height);

/// For lookBeforePictures(): has the theme of @p widget shrink the text @p part, which is one line, when it
/// does not fit.
void fitLine(Evas_Object* widget, const char* part);

/// A text may be larger in its theme than there is usually room for.
/// @param group  a theme object for texts. @param scale  how much larger than usual texts are
/// @return the size that it usually comes to, as the theme has it; 0 for its own
int usualSize(const Evas_Object* group, double scale);

/// The toolkit shrinks a text that fills its place to the last line of pixels.
inline constexpr int kSlack = 4;

} // namespace orbis::flux
