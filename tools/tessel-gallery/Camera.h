// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Takes the picture of a state, with all that is measured on it.
#pragma once

#include "Options.h"
#include "Pixels.h"
#include "Reference.h"
#include "Report.h"
#include "Rules.h"
#include "States.h"

namespace gallery {

/// Lives while the toolkit runs.
class Camera {
public:
    /// @param window  borrowed; of the buffer engine
    Camera(Evas_Object* window, const Combination& combination, const Options& options);

    /// Looks at what the window shows, which has to be laid out and without motion, and writes the picture's
    /// file.
    Picture take(const State& state);

private:
    class TextsAway;

    Image withoutFocus(const Scene& scene, const Image& withoutTexts, const TextsAway& textsAway) const;
    Expected expectedOf(const State& state) const;

    Evas_Object* m_window;
    const Combination& m_combination;
    const Options& m_options;
    Image m_behind; ///< the film
    Reference m_reference;
};

} // namespace gallery
