// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// How a styled layout holds texts that are larger than usual.
#pragma once

#include "flux/LayoutRecord.h"

namespace orbis::flux {

/// The room for the items, in pixels.
struct ItemRoom {
    int x, y, width, height;
};

/// @return how high a text box or styled layout, @p width wide, has to be for its texts not to shrink, pixels
/// as
///         the width; 0 for another object
int heightNeeded(Evas_Object* item, int width);

/// Places the items of a layout: texts are as high as their lines, and pictures give way to them.
void arrangeGrown(const LayoutRecord& record, const ItemRoom& room);

} // namespace orbis::flux
