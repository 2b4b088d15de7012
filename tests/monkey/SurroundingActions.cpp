/// What the machine does: the daemon, the bus, the window manager, the settings' folders, signals and
/// launches.
#include "Actions.h"

#include <csignal>

namespace monkey {

namespace {

void changeDaemon(World& world, const Arguments& arguments)
{
    arguments[0] == "back" ? world.bringDaemon() : world.removeDaemon();
}

/// Gone for a while, and back: what a step leaves broken would hide what the next ones do.
void bus(World& world, const Arguments& arguments)
{
    world.killBus();
    tv::stays([&world] { return world.isRunning(); }, tv::Milliseconds(std::stoi(arguments[0])));
    world.check();
    world.bringBus();
}

void folders(World& world, const Arguments& arguments)
{
    if (arguments[0] == "back")
        world.bringFolders();
    else
        arguments[0] == "locked" ? world.lockFolder() : world.removeFolder(arguments[0]);
}

void manager(World& world, const Arguments& arguments)
{
    arguments[0] == "back" ? world.bringManager() : world.stopManager();
}

void resize(World& world, const Arguments& arguments)
{
    const size_t cross = arguments[0].find('x');
    world.resizeScreen(std::stoi(arguments[0]), std::stoi(arguments[0].substr(cross + 1)));
}

void stopAndGoOn(World& world, const Arguments& arguments)
{
    world.box.program->signal(SIGSTOP);
    tv::stays([] { return true; }, tv::Milliseconds(std::stoi(arguments[0])));
    world.box.program->signal(SIGCONT);
}

void startMode(World& world, const Arguments& arguments)
{
    const bool isEnd = arguments[0] == "100";
    if (isEnd)
        world.mayEnd();
    if (world.box.settings.setInt(tv::kStartMode, std::stoi(arguments[0])) && isEnd)
        world.mustEnd("the start mode 100");
}

void endBySignal(World& world, const Arguments& arguments)
{
    world.mayEnd();
    world.box.program->signal(std::stoi(arguments[0]));
    world.mustEnd("a signal");
}

void endAndLaunch(World& world, const Arguments& arguments)
{
    world.mayEnd();
    if (arguments[0] == "signal")
        world.box.program->signal(SIGTERM);
    else
        world.box.settings.setInt(tv::kStartMode, 100);
    tv::stays([] { return true; }, tv::Milliseconds(std::stoi(arguments[1])));
    if (world.isRunning())
        world.launch();
}

Arguments backOr(Random& random, std::initializer_list<const char*> others)
{
    if (random.chance(50))
        return {"back"};
    return {*(others.begin() + random.below(others.size()))};
}

} // namespace

const Actions& surroundingActions()
{
    constexpr static const char* kManners[] = {
        tv::kWilling, "dawdle 0.3", tv::kRefusing, "wrong-type", "vanish"};
    constexpr static const char* kModes[] = {"0", "5", "99", "101", "-100", "100", "100"};
    constexpr static const char* kScreens[] = {"1920x1080", "1280x720", "800x600"};
    constexpr static const char* kSignals[] = {"1", "2", "15"};
    static const Actions actions {
        {"answer", 6, [](Random& random) { return Arguments {random.pick(kManners)}; },
            [](World& world, const Arguments& arguments) { world.answer(arguments[0]); }},
        {"daemon", 3, [](Random& random) { return backOr(random, {"gone"}); }, changeDaemon},
        {"bus", 1, [](Random& random) { return Arguments {random.numberBelow(1500)}; }, bus},
        {"folders", 3,
            [](Random& random) {
                return backOr(random, {"state", "runtime", "locked"});
            },
            folders},
        {"screen", 2, [](Random& random) { return Arguments {random.pick(kScreens)}; }, resize},
        {"manager", 2, [](Random& random) { return backOr(random, {"gone"}); }, manager},
        {"pause", 2, [](Random& random) { return Arguments {random.numberBelow(2000)}; }, stopAndGoOn},
        {"mode", 3, [](Random& random) { return Arguments {random.pick(kModes)}; }, startMode},
        {"signal", 2, [](Random& random) { return Arguments {random.pick(kSignals)}; }, endBySignal},
        {"launch", 3, [](Random&) { return Arguments {}; },
            [](World& world, const Arguments&) { world.launch(); }},
        {"relaunch", 2,
            [](Random& random) {
                return Arguments {random.chance(50) ? "signal" : "mode", random.numberBelow(100)};
            },
            endAndLaunch},
    };
    return actions;
}

} // namespace monkey
