/// Everything that the monkey can do.
#ifndef TESSEL_TESTS_ACTIONS_H
#define TESSEL_TESTS_ACTIONS_H

#include "Random.h"
#include "Step.h"
#include "World.h"

namespace monkey {

struct Action {
    const char* name;
    size_t weight; ///< how often, beside the others
    Arguments (*make)(Random& random); ///< from chance alone, so that a seed is a sequence of steps
    void (*perform)(World& world, const Arguments& arguments);
};

using Actions = std::vector<Action>;

const Actions& requestActions();
const Actions& viewerActions();
const Actions& surroundingActions();

/// @return all without those of these names. @throws std::runtime_error for one that there is not
Actions actionsWithout(const Arguments& names);

Step someStep(const Actions& actions, Random& random);

/// @throws std::runtime_error for an action that is not among these
void perform(const Actions& actions, World& world, const Step& step);

} // namespace monkey

#endif
