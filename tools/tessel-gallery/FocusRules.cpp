// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The button that has the keys is the expected one and cannot be taken for another, nor anything else for
/// it.
#include "Rules.h"
#include "Surface.h"

#include <algorithm>

namespace gallery {

namespace {

/// Least step in lightness by which a focused button stands out: that for parts of a user interface.
constexpr double kFocusContrast = 3.0;

// Pixels on a screen of 1080 lines.
constexpr double kBeside = 14; ///< how far around a button it may be drawn, and the card be looked at
constexpr double kGrowth = 6; ///< of a focused button's height and width
constexpr double kThinnestOutline = 3;
constexpr double kLookWidth = 60; ///< a block of this size that has the focus' colour looks like it
constexpr double kLookHeight = 20;

class FocusLook {
public:
    FocusLook(Case& one, const Button& focused)
        : m_one(one)
        , m_focused(focused)
        , m_card(colourOfCard(one.views.withoutTexts, one.scene.card))
        , m_drawn(drawnIn(one.views.withoutTexts, around(focused), m_card))
        , m_fill(fillOf(one.views.withoutTexts, focused))
    {
    }

    void check()
    {
        checkLightness();
        if (!isLarger() && !isOutlined())
            m_one.report(
                "focus-size", m_focused.label + ": it has the size and outline of one without the focus");
        const Box block = blockLike(m_one.views.withoutTexts, m_one.scene.card, around(m_focused), m_fill,
            m_one.px(kLookWidth), m_one.px(kLookHeight));
        if (!block.isEmpty())
            m_one.report("focus-like", "what is at " + describe(block) + " has the colour of the focus");
    }

private:
    Box around(const Button& button) const { return button.box.grownBy(m_one.px(kBeside)); }

    static uint32_t colourAt(const Image& image, int x, int y)
    {
        const Box point = Box {x, y, 1, 1}.cutTo(image.box());
        return point.isEmpty() ? 0 : image.at(x, y);
    }

    static uint32_t fillOf(const Image& image, const Button& button)
    {
        return colourAt(image, button.box.x + button.box.width / 2, button.box.y + button.box.height / 2);
    }

    /// In lightness alone, because colours look alike to some viewers and on some screens.
    void checkLightness()
    {
        double least = contrast(m_fill, m_card);
        least = std::min(least, contrast(m_fill, fillOf(m_one.views.unfocused, m_focused)));
        for (const Button& other : m_one.scene.buttons) {
            if (!other.isFocused)
                least = std::min(least, contrast(m_fill, fillOf(m_one.views.withoutTexts, other)));
        }
        m_one.measured.focusContrast = least;
        if (least < kFocusContrast)
            m_one.report("focus-lightness", m_focused.label + ": " + number(least) + ":1");
    }

    /// Than the same button without the focus, and than each other one in its own place.
    bool isLarger() const
    {
        const Box without = drawnIn(m_one.views.unfocused, around(m_focused), m_card);
        const int least = m_one.px(kGrowth);
        return m_drawn.height - without.height >= least && m_drawn.width - without.width >= least;
    }

    /// A ring along its edge that is neither the card's nor its own colour, and that it has only with the
    /// focus.
    bool isOutlined() const { return hasRing(m_one.views.withoutTexts) && !hasRing(m_one.views.unfocused); }

    bool hasRing(const Image& image) const
    {
        const Box drawn = drawnIn(image, around(m_focused), m_card);
        const int depth = m_one.px(kThinnestOutline) / 2;
        const uint32_t ring = colourAt(image, drawn.x + drawn.width / 2, drawn.y + depth);
        const uint32_t side = colourAt(image, drawn.x + depth, drawn.y + drawn.height / 2);
        const uint32_t fill = fillOf(image, m_focused);
        return ring == side && contrast(ring, fill) >= kFocusContrast
            && contrast(ring, m_card) >= kFocusContrast;
    }

    Case& m_one;
    const Button& m_focused;
    uint32_t m_card;
    Box m_drawn;
    uint32_t m_fill;
};

} // namespace

void checkFocus(Case& one)
{
    if (one.scene.focused != 1)
        one.report("focus", std::to_string(one.scene.focused) + " objects are focused");
    const std::string& wanted = one.expected.content.focusedLabel;
    for (const Button& button : one.scene.buttons) {
        if (!button.isFocused)
            continue;
        if (!wanted.empty() && button.label != wanted)
            one.report("focus", button.label + " instead of " + wanted);
        FocusLook(one, button).check();
    }
}

} // namespace gallery
