// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Rules.h"

#include <cstdio>

namespace gallery {

std::string number(double value)
{
    char text[32];
    snprintf(text, sizeof text, "%.1f", value);
    return text;
}

std::vector<Broken> check(Scene& scene, const Views& views, const Expected& expected, Measured& measured)
{
    Case one {scene, views, expected, measured};
    for (Text& text : scene.texts)
        measureLetters(text, views.whole, views.withoutTexts);
    checkTexts(one);
    checkLines(one);
    checkLayout(one);
    checkFocus(one);
    return std::move(one.broken);
}

} // namespace gallery
