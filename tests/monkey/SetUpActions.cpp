// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Requests over the bus and through the settings; keys, the pointer, and the viewer's settings.
#include "Actions.h"
#include "Texts.h"

namespace monkey {

namespace {

constexpr const char* kKeys[] = {"Return", "Return", "Return", "KP_Enter", "space", "Left", "Right", "Up",
    "Down", "Left", "Right", "Tab", "Escape", "XF86Back", "XF86Close", "XF86HomePage", "Menu", "0", "7", "F1",
    "XF86AudioRaiseVolume", "XF86Red"};
/// What answers nothing.
const std::set<std::string> kHarmless {"Left", "Right", "Up", "Down", "Tab", "0", "7", "F1"};

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

void send(World& world, const Arguments& request, size_t times)
{
    Arguments texts(request.begin() + 1, request.end());
    // Texts on the bus are UTF-8; others do not get past the caller's library.
    for (std::string& text : texts)
        text = base::GStr(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size()))).get();
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

void control(World& world, Arguments arguments)
{
    arguments.insert(arguments.begin(), "xdotool");
    world.display.start(arguments)->waitForExit();
}

void noteEnd(World& world, const std::string& key)
{
    if (kHarmless.count(key) == 0)
        world.mayEnd();
}

Arguments makeKeys(Random& random)
{
    Arguments keys;
    for (size_t count = 2 + random.below(12); count > 0; --count)
        keys.emplace_back(random.pick(kKeys));
    return keys;
}

void pressFast(World& world, const Arguments& keys)
{
    Arguments all {"key", "--delay", "0"};
    for (const std::string& key : keys) {
        all.push_back(key);
        noteEnd(world, key);
    }
    control(world, all);
}

void hold(World& world, const Arguments& arguments)
{
    noteEnd(world, arguments[0]);
    control(world, {"keydown", arguments[0], "sleep", "0." + arguments[1], "keyup", arguments[0]});
}

/// Mostly where buttons are.
Arguments makeClick(Random& random)
{
    const bool isLow = random.chance(70);
    return {std::to_string(600 + random.below(720)),
        std::to_string(isLow ? 550 + random.below(300) : random.below(1080)),
        std::to_string(1 + random.below(3))};
}

void click(World& world, const Arguments& at)
{
    world.mayEnd();
    control(world, {"mousemove", at[0], at[1], "click", "--repeat", at[2], "--delay", "20", "1"});
}

/// Writes one of the values.
Action setting(const char* name, size_t weight, const char* key, const Arguments& values)
{
    return {name, weight, [=](Random& random) { return Arguments {random.pick(values)}; },
        [=](World& world, const Arguments& arguments) { world.box.settings.setText(key, arguments[0]); }};
}

/// Writes 0 or 1.
Action flag(const char* name, size_t weight, const char* key)
{
    return {name, weight, [](Random& random) { return Arguments {random.numberBelow(2)}; },
        [=](World& world, const Arguments& arguments) {
            world.box.settings.setInt(key, std::stoi(arguments[0]));
        }};
}

} // namespace

const Actions& setUpActions()
{
    static const Actions actions {
        {"request", 30, someRequest,
            [](World& world, const Arguments& arguments) { send(world, arguments, 1); }},
        {"flood", 4, makeFlood, flood},
        {"store", 12, [](Random& random) { return Arguments {someJson(random)}; },
            [](World& world, const Arguments& arguments) {
                world.box.settings.setText(tv::kRequest, arguments[0]);
            }},
        flag("owned", 4, tv::kOwned),
        {"key", 25, [](Random& random) { return Arguments {random.pick(kKeys)}; }, pressFast},
        {"keys", 6, makeKeys, pressFast},
        {"hold", 3,
            [](Random& random) {
                return Arguments {random.pick(kKeys), random.numberBelow(10)};
            },
            hold},
        {"click", 6, makeClick, click},
        setting("language", 6, tv::kLanguage,
            {"en_US.UTF-8", "de_DE", "ar_AE", "he_IL", "fa_IR", "zh_CN", "ko_KR", "hi_IN", "tr_TR", "ar_XB",
                "en_XA", "tlh_XX", "", "../../..", "pt_BR"}),
        flag("contrast", 3, "db/menu/system/accessibility/highcontrast"),
        flag("reader", 3, tv::kScreenReader),
        setting("wizard", 3, tv::kWizardMode, {"FIRST_RUN", "NONE", "", "MENU", "nonsense"}),
        {"wait", 4, [](Random& random) { return Arguments {std::to_string(100 + random.below(2500))}; },
            [](World& world, const Arguments& arguments) {
                tv::stays([&world] { return world.isRunning(); }, tv::Milliseconds(std::stoi(arguments[0])));
            }},
    };
    return actions;
}

} // namespace monkey
