// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What a canvas shows, told roughly: where there is something, and what the rest of it looks like.
#pragma once

#include <Evas.h>

#include <optional>

namespace orbis::flux {

/// Pixels of the canvas.
struct Area {
    int left = 0;
    int top = 0;
    int right = 0; ///< the first column beside it
    int bottom = 0;

    bool isEmpty() const { return left >= right || top >= bottom; }
    bool covers(const Area& other) const
    {
        return left <= other.left && top <= other.top && right >= other.right && bottom >= other.bottom;
    }
    Area with(const Area& other) const;
    Area cutTo(const Area& other) const;
};

/// Red, green and blue are multiplied with alpha already, as everywhere on a canvas.
struct Tint {
    int red = 0;
    int green = 0;
    int blue = 0;
    int alpha = 0;

    bool operator==(const Tint& other) const
    {
        return red == other.red && green == other.green && blue == other.blue && alpha == other.alpha;
    }
};

struct Outline {
    Area things; ///< where something is to be seen that does not cover the whole canvas
    /// What plain colours that cover the whole canvas come to; nothing when something else covers it.
    std::optional<Tint> rest;
};

/// @return whether the object is drawn itself and holds no others. Told by its kind: the toolkit complains
/// when
///         such a one is asked for what it is made of.
bool isLeaf(const Evas_Object* object);

/// @return where the object is
Area placeOf(const Evas_Object* object);

Area wholeOf(const Evas* canvas);

/// The next picture draws all that is there, changed or not.
void drawAgain(Evas* canvas, const Area& area);

/// Looks at every object, so it is for once a picture. @param canvas  its smart objects are up to date
Outline outlineOf(Evas* canvas);

} // namespace orbis::flux
