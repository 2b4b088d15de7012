// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What a picture must hold for a viewer to be able to read and use it.
#pragma once

#include "Content.h"
#include "Scene.h"

#include <cmath>
#include <string>
#include <vector>

namespace gallery {

struct Broken {
    std::string rule; ///< for instance "ellipsis"
    std::string detail; ///< which text or button, and what was measured
};

/// What the measuring found, kept for the report.
struct Measured {
    std::vector<double> textContrasts; ///< of the scene's texts, in their order; 0 for a text without letters
    double focusContrast = 0; ///< least step in lightness between the focused button and what is around it
    /// Least distances, pixels of a screen of 1080 lines; negative for none.
    double toEdge = -1; ///< of a text to the card's edge
    double betweenTexts = -1;
    double toHairline = -1;
};

/// What a picture is expected to be.
struct Expected {
    double scale = 1.0;
    double textScale = 1.0; ///< the viewer's text size
    bool contrast = false; ///< high contrast
    std::string language; ///< a catalogue's name
    bool hasAnyCharacter = false; ///< a name has characters that no font need have
    bool mayBeCut = false; ///< a name is longer than there is room for
    bool hasOwnDirection = false; ///< a name says in which direction it runs
    std::vector<std::string> names; ///< as they are shown
    Content content;
};

/// The same moment, seen in several ways.
struct Views {
    const Image& whole; ///< the picture
    const Image& withoutTexts; ///< what is really behind the scene's texts
    const Image& unfocused; ///< without texts, and with the focused button as it looks without the focus
};

/// Finds the broken rules. Fills in what the views tell of the scene's letters.
std::vector<Broken> check(Scene& scene, const Views& views, const Expected& expected, Measured& measured);

/// One picture under examination, for the rules of one theme each.
struct Case {
    Scene& scene;
    const Views& views;
    const Expected& expected;
    Measured& measured;
    std::vector<Broken> broken {};

    void report(const std::string& rule, const std::string& detail) { broken.push_back({rule, detail}); }
    /// @return pixels of this screen for some on one of 1080 lines
    int px(double at1080) const { return static_cast<int>(std::lround(at1080 * expected.scale)); }
    double at1080(int pixels) const { return pixels / expected.scale; }
};

void checkTexts(Case& one); ///< what is there, whole, large and distinct enough
void checkLines(Case& one); ///< where lines end, and in which order letters stand
void checkLayout(Case& one); ///< places and distances, the card's other parts
void checkFocus(Case& one); ///< the button that has the keys

/// A number for a detail, with one digit behind the point.
std::string number(double value);

} // namespace gallery
