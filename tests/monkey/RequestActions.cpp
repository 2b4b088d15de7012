/// Requests of the daemon, over the bus and through the settings.
#include "Actions.h"
#include "Texts.h"

namespace monkey {

namespace {

/// Method and texts.
Arguments someRequest(Random& random)
{
    const std::string name = someName(random);
    const std::string pin = somePin(random);
    const Arguments requests[] = {{"ShowMobileGuide", pin}, {"ShowPinPopup", name, pin}, {"ShowApListPopup"},
        {"ShowTnCPopup"}, {"ShowFailedPopup", random.chance(50) ? "sso" : name},
        {"ShowNetworkTest", name, someName(random)}, {"ShowSSOLoginPopup", name, someName(random)},
        {"HidePopup"}};
    return random.pick(requests);
}

/// Texts on the bus are UTF-8; others do not get past the caller's library.
std::string utf8(const std::string& text)
{
    const base::GStr valid(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
    return valid.get();
}

void send(World& world, const Arguments& request, size_t times)
{
    Arguments texts;
    for (size_t i = 1; i < request.size(); ++i)
        texts.push_back(utf8(request[i]));
    world.request(request[0], texts, times);
}

Arguments makeFlood(Random& random)
{
    Arguments arguments = someRequest(random);
    arguments.insert(arguments.begin(), std::to_string(2 + random.below(40)));
    return arguments;
}

void flood(World& world, const Arguments& arguments)
{
    send(world, {arguments.begin() + 1, arguments.end()}, std::stoul(arguments[0]));
}

} // namespace

const Actions& requestActions()
{
    static const Actions actions {
        {"request", 30, someRequest,
            [](World& world, const Arguments& arguments) { send(world, arguments, 1); }},
        {"flood", 4, makeFlood, flood},
        {"store", 12, [](Random& random) { return Arguments {someJson(random)}; },
            [](World& world, const Arguments& arguments) {
                world.box.settings.setText(tv::kRequest, arguments[0]);
            }},
        {"owned", 4, [](Random& random) { return Arguments {random.numberBelow(2)}; },
            [](World& world, const Arguments& arguments) {
                world.box.settings.setInt(tv::kOwned, std::stoi(arguments[0]));
            }},
    };
    return actions;
}

} // namespace monkey
