// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Everything that the monkey can do.
#ifndef TESSEL_TESTS_ACTIONS_H
#define TESSEL_TESTS_ACTIONS_H

#include "Random.h"
#include "World.h"

namespace monkey {

/// One thing that the monkey does: the action's name, and its arguments.
using Step = std::vector<std::string>;

/// @return one line of a trace: action and arguments behind tabs, what is not plain in them written as in C
std::string lineOf(const Step& step);
Step stepOf(const std::string& line);

struct Action {
    const char* name;
    size_t weight; ///< how often, beside the others
    std::function<Arguments(Random& random)>
        make; ///< from chance alone, so that a seed is a sequence of steps
    std::function<void(World& world, const Arguments& arguments)> perform;
};

using Actions = std::vector<Action>;

/// What the daemon and the viewer do.
const Actions& setUpActions();
/// What the machine does: the daemon's moods, the bus, the window manager, the settings' folders, signals and
/// launches; in Surroundings.cpp.
const Actions& surroundingActions();

/// @param names  ended by a null; null for none
/// @return all without those of these names. @throws std::runtime_error for one that there is not
Actions actionsWithout(const char* const* names);

Step someStep(const Actions& actions, Random& random);

/// @throws std::runtime_error for an action that is not among these
void perform(const Actions& actions, World& world, const Step& step);

} // namespace monkey

#endif
