// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What a canvas shows: texts, buttons, focus, found by walking its objects.
#pragma once

#include "Letters.h"

#include <string>
#include <vector>

namespace gallery {

class Reference;

struct Button {
    Evas_Object* object = nullptr; ///< borrowed
    std::string label;
    Box box; ///< that it was given
    bool isFocused = false;
};

struct Scene {
    std::vector<Text> texts;
    std::vector<Button> buttons; ///< of the popup that has the keys
    Box card; ///< of that popup; empty when there is none
    std::vector<Box> coveredCards; ///< of popups behind it
    int focused = 0; ///< focused objects on the whole canvas
};

/// @return every visible object on the window's canvas, borrowed
std::vector<Evas_Object*> objectsOf(const Evas_Object* window);

/// @param window     shown, laid out and rendered
/// @param reference  draws the texts alone
Scene look(const Evas_Object* window, Reference& reference);

} // namespace gallery
