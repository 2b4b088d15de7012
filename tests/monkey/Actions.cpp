// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

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

std::string lineOf(const Step& step)
{
    std::string line;
    for (const std::string& word : step)
        line.append(line.empty() ? "" : "\t").append(base::GStr(g_strescape(word.c_str(), nullptr)).get());
    return line;
}

Step stepOf(const std::string& line)
{
    std::istringstream words(line + '\t'); // so that an empty one at the end counts
    Step step;
    for (std::string word; std::getline(words, word, '\t');)
        step.emplace_back(base::GStr(g_strcompress(word.c_str())).get());
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
    Step step = chosen->make(random);
    step.insert(step.begin(), chosen->name);
    return step;
}

void perform(const Actions& actions, World& world, const Step& step)
{
    find(actions, step[0])->perform(world, {step.begin() + 1, step.end()});
}

} // namespace monkey
