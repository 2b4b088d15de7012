// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Unit.h"

#include "elm_flux.h"

#include <algorithm>
#include <cmath>

namespace {

/// One unit on a screen of 1080 lines: 101 units are the 808 pixels at which body texts are measured.
constexpr double kPixelsPerUnit = 8.0;

/// No screen is larger; a bound keeps the product a whole number of pixels.
constexpr double kMaxPixels = 65535.0;

} // namespace

double orbis::flux::unitsOf(int pixels)
{
    return pixels / (kPixelsPerUnit * elm_config_scale_get());
}

int elm_flux_unit_to_pixel(double units)
{
    if (std::isnan(units))
        return 0;
    const double pixels = units * kPixelsPerUnit * elm_config_scale_get();
    return static_cast<int>(std::lround(std::clamp(pixels, -kMaxPixels, kMaxPixels)));
}
