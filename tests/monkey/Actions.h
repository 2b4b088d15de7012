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

const std::vector<Action>& requestActions();
const std::vector<Action>& viewerActions();
const std::vector<Action>& surroundingActions();

/// What one seed does, without those actions.
class Choice {
public:
    explicit Choice(const Arguments& without);

    Step next(Random& random) const;
    /// @throws std::runtime_error for an action that there is not
    static void perform(World& world, const Step& step);

private:
    static std::vector<Action> all();

    std::vector<Action> m_actions;
    size_t m_weight = 0;
};

} // namespace monkey

#endif
