#include "Actions.h"

#include <algorithm>

namespace monkey {

std::vector<Action> Choice::all()
{
    std::vector<Action> result;
    for (const auto* part : {&requestActions(), &viewerActions(), &surroundingActions()})
        result.insert(result.end(), part->begin(), part->end());
    return result;
}

Choice::Choice(const Arguments& without)
    : m_actions(all())
{
    for (const std::string& name : without) {
        const auto isNamed = [&name](const Action& action) { return name == action.name; };
        const auto rest = std::remove_if(m_actions.begin(), m_actions.end(), isNamed);
        if (rest == m_actions.end())
            throw std::runtime_error("there is no action " + name);
        m_actions.erase(rest, m_actions.end());
    }
    for (const Action& action : m_actions)
        m_weight += action.weight;
}

Step Choice::next(Random& random) const
{
    size_t at = random.below(m_weight);
    for (const Action& action : m_actions) {
        if (at < action.weight)
            return {action.name, action.make(random)};
        at -= action.weight;
    }
    throw std::logic_error("no action");
}

void Choice::perform(World& world, const Step& step)
{
    for (const Action& action : all()) {
        if (step.action == action.name) {
            action.perform(world, step.arguments);
            return;
        }
    }
    throw std::runtime_error("there is no action " + step.action);
}

} // namespace monkey
