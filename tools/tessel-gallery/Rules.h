/// What a picture must hold for a viewer to be able to read and use it.
#pragma once

#include "Scene.h"

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
};

/// What a picture is expected to be.
struct Expected {
    double scale = 1.0;
    bool contrast = false; ///< high contrast
    bool mayBeCut = false; ///< a name is longer than there is room for
    bool hasOwnLook = false; ///< a name brings markup, and with it colours
    std::string focusedLabel; ///< empty: any
};

/// @param whole        the picture
/// @param withoutTexts the same without the scene's texts: what is really behind them
std::vector<Broken> check(const Scene& scene, const Image& whole, const Image& withoutTexts,
    const Expected& expected, Measured& measured);

} // namespace gallery
