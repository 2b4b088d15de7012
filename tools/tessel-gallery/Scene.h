/// What a canvas shows: texts, buttons, focus, found by walking its objects.
#pragma once

#include "Pixels.h"

#include <string>
#include <vector>

namespace gallery {

/// A text that the viewer is to read: not one of a popup that lies behind another.
struct Text {
    Evas_Object* object = nullptr; ///< borrowed
    std::string plain; ///< without markup, lines joined by a blank
    Box box; ///< where it may draw
    Box lines; ///< what its lines take
    double sizePx = 0; ///< of its letters, pixels of this screen
    bool isCut = false; ///< ends in an ellipsis
    std::vector<Box> runs; ///< of a few letters each, without the blanks and the emoji
    uint32_t withoutFont = 0; ///< a character that no font has; 0 when all are drawn
};

struct Button {
    std::string label;
    Box box;
    bool isFocused = false;
};

struct Scene {
    std::vector<Text> texts;
    std::vector<Button> buttons; ///< of the popup that has the keys
    Box card; ///< of that popup; empty when there is none
    int focused = 0; ///< focused objects on the whole canvas
};

/// @return every visible object on the window's canvas, borrowed
std::vector<Evas_Object*> objectsOf(const Evas_Object* window);

/// @param window  shown, laid out and rendered
Scene look(const Evas_Object* window);

} // namespace gallery
