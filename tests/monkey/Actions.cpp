#include "Actions.h"

#include <algorithm>

namespace monkey {

namespace {

Actions::const_iterator find(const Actions& actions, const std::string& name)
{
    const auto found = std::find_if(
        actions.begin(), actions.end(), [&](const Action& action) { return action.name == name; });
    if (found == actions.end())
        throw std::runtime_error("there is no action " + name);
    return found;
}

} // namespace

Actions actionsWithout(const Arguments& names)
{
    Actions actions;
    for (const Actions& part : {requestActions(), viewerActions(), surroundingActions()})
        actions.insert(actions.end(), part.begin(), part.end());
    for (const std::string& name : names)
        actions.erase(find(actions, name));
    return actions;
}

Step someStep(const Actions& actions, Random& random)
{
    std::vector<const Action*> choice;
    for (const Action& action : actions)
        choice.insert(choice.end(), action.weight, &action);
    const Action* chosen = random.pick(choice);
    return {chosen->name, chosen->make(random)};
}

void perform(const Actions& actions, World& world, const Step& step)
{
    find(actions, step.action)->perform(world, step.arguments);
}

} // namespace monkey
