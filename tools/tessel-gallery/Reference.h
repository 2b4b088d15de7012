// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Texts drawn alone: what their letters look like when nothing cuts, covers or hides them.
#pragma once

#include "Pixels.h"

#include "base/EflHandles.h"

#include <map>
#include <string>

namespace gallery {

struct Font {
    std::string family; ///< that fontconfig knows
    bool isBold;
    double size; ///< as the toolkit has it
    double scale; ///< by which that is multiplied
};

/// A canvas of its own, on the buffer engine. What was drawn once is kept.
class Reference {
public:
    Reference();

    /// The letters of @p textblock, in the coordinates of its own canvas.
    Mask lettersOf(const Evas_Object* textblock);

    /// @return whether @p textblock would have room for all of its text were that not shrunk
    bool fitsAtFullSize(const Evas_Object* textblock);

    /// One line; its ink begins at 0, 0.
    const Mask& word(const std::string& text, const Font& font);

private:
    base::ObjectPtr copyOf(const Evas_Object* textblock);
    Mask draw(Evas_Object* object, int width, int height);

    base::CanvasPtr m_canvas;
    std::map<std::string, Mask> m_drawn;
};

/// @return a number in the text style that @p textblock has, 0 when it names none: style("font_size")
double styleNumber(const Evas_Object* textblock, const std::string& name);

/// @return the size of letters that the theme has for @p textblock, which others may be shrunk from
double fullSize(const Evas_Object* textblock);

/// @return whether its style is bold
bool isBold(const Evas_Object* textblock);

} // namespace gallery
