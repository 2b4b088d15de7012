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

std::string Step::line() const
{
    std::string result = action;
    for (const std::string& argument : arguments)
        result.append("\t").append(base::GStr(g_strescape(argument.c_str(), nullptr)).get());
    return result;
}

Step Step::fromLine(const std::string& line)
{
    std::istringstream words(line);
    Step step;
    std::getline(words, step.action, '\t');
    for (std::string word; std::getline(words, word, '\t');)
        step.arguments.emplace_back(base::GStr(g_strcompress(word.c_str())).get());
    if (!line.empty() && line.back() == '\t')
        step.arguments.emplace_back(); // one that is empty
    return step;
}

Actions actionsWithout(const char* const* names)
{
    Actions actions = setUpActions();
    actions.insert(actions.end(), surroundingActions().begin(), surroundingActions().end());
    for (; names && *names; ++names)
        actions.erase(find(actions, *names));
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
