// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Lengths that survive a change of the screen's size.
#pragma once

namespace orbis::flux {

/// @return what elm_flux_unit_to_pixel() makes these pixels of, at the scale of this moment
double unitsOf(int pixels);

} // namespace orbis::flux
