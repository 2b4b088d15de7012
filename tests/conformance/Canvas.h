// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A canvas in memory: its loop, its keys, and where things are.
#ifndef TESTS_CANVAS_H
#define TESTS_CANVAS_H

#include <Elementary.h>

#include <tuple>
#include <vector>

namespace toolkit {

/// Serves what is due, with jobs and layouts, and does not wait.
void settle();

/// Gives the window the keys, as a window manager would.
void focusWindow(Evas_Object* window);

void keyDown(Evas_Object* window, const char* key, unsigned int afterMs = 50);
void keyUp(Evas_Object* window, const char* key, unsigned int afterMs = 50);
/// Down and up, and what follows from it.
void press(Evas_Object* window, const char* key);

/// @return the windows of this process
std::vector<Evas_Object*> windows();

/// Pixels; right and bottom are outside.
struct Box {
    int x;
    int y;
    int width;
    int height;

    bool operator==(const Box& other) const
    {
        return std::tie(x, y, width, height) == std::tie(other.x, other.y, other.width, other.height);
    }
};
Box boxOf(const Evas_Object* object);

} // namespace toolkit

#endif
