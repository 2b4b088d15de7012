/// Requests of the daemon, over the bus and through the settings.
#include "Actions.h"
#include "Texts.h"

namespace monkey {

namespace {

/// Method and texts.
Arguments someRequest(Random& random)
{
    switch (random.below(8)) {
    case 0:
        return {"ShowMobileGuide", somePin(random)};
    case 1:
        return {"ShowPinPopup", someName(random), somePin(random)};
    case 2:
        return {"ShowApListPopup"};
    case 3:
        return {"ShowTnCPopup"};
    case 4:
        return {"ShowFailedPopup", random.chance(50) ? "sso" : someName(random)};
    case 5:
        return {"ShowNetworkTest", someName(random), someName(random)};
    case 6:
        return {"ShowSSOLoginPopup", someName(random), someName(random)};
    default:
        return {"HidePopup"};
    }
}

/// Texts on the bus are UTF-8; others do not get past the caller's library.
std::string utf8(const std::string& text)
{
    const tv::GText valid(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
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
    Arguments arguments {std::to_string(2 + random.below(40))};
    const Arguments request = someRequest(random);
    arguments.insert(arguments.end(), request.begin(), request.end());
    return arguments;
}

void flood(World& world, const Arguments& arguments)
{
    send(world, {arguments.begin() + 1, arguments.end()}, std::stoul(arguments[0]));
}

} // namespace

const std::vector<Action>& requestActions()
{
    static const std::vector<Action> actions {
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
