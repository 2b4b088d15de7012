// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Texts of a text box that are laid out without being drawn.
#pragma once

#include "base/EflHandles.h"

#include <string>
#include <vector>

namespace orbis::flux {

struct TextboxRecord;

/// Pixels.
struct Extent {
    int width = 0;
    int height = 0;
};

/// A text in the style of a text box that is drawn nowhere.
class TextMeasure {
public:
    enum class Breaks { AsInTheBox, BetweenWords };

    /// @param breaks  where lines may break; between words even where a word is wider than a line
    explicit TextMeasure(const TextboxRecord& record, Breaks breaks = Breaks::AsInTheBox);

    /// @param size  of the letters; 0 for the style's own
    void setSize(int size);

    /// @return what @p markup takes, in pixels, when it is @p width wide
    Extent of(const std::string& markup, int width) const;

    /// @return the last text, which this owns, or null
    const Evas_Object* text() const { return m_text.get(); }

private:
    std::string m_style; ///< of the text box
    base::ObjectPtr m_text;
};

/// @return how wide each line of @p textblock is, pixels
std::vector<int> lineWidths(const Evas_Object* textblock);

} // namespace orbis::flux
