// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What each state must show, taken from the catalogue and from the names alone: no widget is asked.
#pragma once

#include "Scene.h"
#include "States.h"

#include <string>
#include <vector>

namespace gallery {

/// A text that has to be there.
struct Wanted {
    Role role = Role::Text;
    std::string text; ///< as a viewer reads it; a PIN's without blanks, which may group it
    bool isOptional = false; ///< comes after a while, which a slow machine may take
    bool mayEndEarly = false; ///< holds a name that is longer than the program takes
};

struct Content {
    std::vector<Wanted> texts; ///< the title first, without those that are empty
    bool hasPicture = false;
    bool hasSpinner = false;
    std::string focusedLabel; ///< of the button that has the keys; empty: any
};

/// In the language that the process has.
Content contentOf(const State& state);

/// Finds the texts wanted among those of the scene, which get their roles.
/// @return those that are not there
std::vector<Wanted> assignRoles(const Content& content, Scene& scene);

} // namespace gallery
