/// What a viewer does: keys, the pointer, and settings.
#include "Actions.h"

#include <algorithm>
#include <string_view>

namespace monkey {

namespace {

constexpr const char* kKeys[] = {"Return", "Return", "Return", "KP_Enter", "space", "Left", "Right", "Up",
    "Down", "Left", "Right", "Tab", "Escape", "XF86Back", "XF86Close", "XF86HomePage", "Menu", "0", "7", "F1",
    "XF86AudioRaiseVolume", "XF86Red"};

constexpr const char* kLanguages[] = {"en_US.UTF-8", "de_DE", "ar_AE", "he_IL", "fa_IR", "zh_CN", "ko_KR",
    "hi_IN", "tr_TR", "ar_XB", "en_XA", "tlh_XX", "", "../../..", "pt_BR"};

constexpr const char* kModes[] = {"FIRST_RUN", "NONE", "", "MENU", "nonsense"};

/// What answers nothing.
constexpr std::string_view kHarmless[] = {"Left", "Right", "Up", "Down", "Tab", "0", "7", "F1"};

void control(World& world, Arguments arguments)
{
    arguments.insert(arguments.begin(), "xdotool");
    world.display.start(arguments)->waitForExit();
}

void noteEnd(World& world, const std::string& key)
{
    if (std::find(std::begin(kHarmless), std::end(kHarmless), key) == std::end(kHarmless))
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

void click(World& world, const Arguments& at)
{
    world.mayEnd();
    control(world, {"mousemove", at[0], at[1], "click", "--repeat", at[2], "--delay", "20", "1"});
}

template <size_t N>
Arguments oneOf(const char* const (&list)[N], Random& random)
{
    return {random.pick(list)};
}

Arguments makeFlag(Random& random)
{
    return {random.numberBelow(2)};
}

} // namespace

const Actions& viewerActions()
{
    static const Actions actions {
        {"key", 25, [](Random& random) { return oneOf(kKeys, random); }, pressFast},
        {"keys", 6, makeKeys, pressFast},
        {"hold", 3,
            [](Random& random) {
                return Arguments {random.pick(kKeys), random.numberBelow(10)};
            },
            hold},
        {"click", 6,
            [](Random& random) {
                // Mostly where buttons are.
                const bool isLow = random.chance(70);
                return Arguments {std::to_string(600 + random.below(720)),
                    std::to_string(isLow ? 550 + random.below(300) : random.below(1080)),
                    std::to_string(1 + random.below(3))};
            },
            click},
        {"language", 6, [](Random& random) { return oneOf(kLanguages, random); },
            [](World& world, const Arguments& arguments) {
                world.box.settings.setText(tv::kLanguage, arguments[0]);
            }},
        {"contrast", 3, makeFlag,
            [](World& world, const Arguments& arguments) {
                world.box.settings.setInt(
                    "db/menu/system/accessibility/highcontrast", std::stoi(arguments[0]));
            }},
        {"reader", 3, makeFlag,
            [](World& world, const Arguments& arguments) {
                world.box.settings.setInt(tv::kScreenReader, std::stoi(arguments[0]));
            }},
        {"wizard", 3, [](Random& random) { return oneOf(kModes, random); },
            [](World& world, const Arguments& arguments) {
                world.box.settings.setText(tv::kWizardMode, arguments[0]);
            }},
        {"wait", 4, [](Random& random) { return Arguments {std::to_string(100 + random.below(2500))}; },
            [](World& world, const Arguments& arguments) {
                tv::stays([&world] { return world.isRunning(); }, tv::Milliseconds(std::stoi(arguments[0])));
            }},
    };
    return actions;
}

} // namespace monkey
