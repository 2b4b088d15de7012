// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What the monkey does to the world around the program.
#include "Actions.h"

#include <csignal>
#include <sys/mount.h>

namespace monkey {

namespace {

namespace fs = std::filesystem;

tv::Milliseconds milliseconds(const std::string& number)
{
    return tv::Milliseconds(std::stoi(number));
}

/// One of these, each as often as it comes.
auto oneOf(const Arguments& choice)
{
    return [=](Random& random) { return Arguments {random.pick(choice)}; };
}

auto numberBelow(size_t end)
{
    return [=](Random& random) { return Arguments {random.numberBelow(end)}; };
}

} // namespace

void World::answer(const Arguments& how)
{
    if (!box.daemon || !box.daemon->running())
        return;
    box.daemon->behave(how[0]);
    if (how[0] == tv::kWilling)
        m_disturbed.erase("daemon");
    else if (how[0] != tv::kRefusing)
        m_disturbed.insert("daemon");
}

/// One that has left the bus in the midst of an answer counts as gone, too.
void World::changeDaemon(const Arguments& how)
{
    box.daemon.reset();
    if (how[0] != "back")
        return;
    box.bringDaemon();
    m_disturbed.erase("daemon");
}

void World::interruptBus(const Arguments& duration)
{
    box.daemon.reset();
    m_bus.kill();
    tv::stays([this] { return isRunning(); }, milliseconds(duration[0]));
    check();
    m_bus.restart();
    changeDaemon({"back"});
    if (!isRunning() || m_mayEnd)
        return;
    if (!tv::waitUntil([this] { return !isRunning() || box.daemon->findsUi(box.program->pid()); }))
        throw Fault("the bus is back, and the program does not come back to it");
}

void World::changeFolders(const Arguments& how)
{
    const std::string state = box.folders.state();
    const fs::path gone = box.folders.root() / "gone";
    std::error_code ignored;
    if (how[0] == "back") {
        while (umount2(state.c_str(), MNT_DETACH) == 0) { }
        for (const std::string name : {"state", "runtime"}) {
            if (!fs::exists(gone / name))
                continue;
            fs::remove_all(box.folders.root() / name, ignored);
            fs::rename(gone / name, box.folders.root() / name, ignored);
        }
        return;
    }
    m_disturbed.insert("folders");
    if (how[0] == "locked") {
        // By a mount, because root may write whatever the permissions say; others may not mount.
        if (mount(state.c_str(), state.c_str(), nullptr, MS_BIND, nullptr) == 0)
            mount(nullptr, state.c_str(), nullptr, MS_BIND | MS_REMOUNT | MS_RDONLY, nullptr);
        return;
    }
    fs::create_directory(gone);
    fs::remove_all(gone / how[0], ignored);
    fs::rename(box.folders.root() / how[0], gone / how[0], ignored);
}

void World::resizeScreen(const Arguments& size)
{
    const int width = std::stoi(size[0]);
    const int height = std::stoi(size[0].substr(size[0].find('x') + 1));
    if (width != m_screen.width || height != m_screen.height)
        display.resize(width, height);
    m_screen = {0, 0, width, height};
}

void World::changeWindowManager(const Arguments& how)
{
    const bool isBack = how[0] == "back";
    if (!isBack)
        display.stopManager();
    else if (!m_managerIsUp)
        display.startManager();
    m_managerIsUp = isBack;
}

void World::pause(const Arguments& duration)
{
    box.program->signal(SIGSTOP);
    tv::pass(milliseconds(duration[0]));
    box.program->signal(SIGCONT);
}

void World::writeStartMode(const Arguments& mode)
{
    const int value = std::stoi(mode[0]);
    m_mayEnd = m_mayEnd || value == 100;
    if (box.settings.setInt(tv::kStartMode, value) && value == 100)
        mustEnd("the start mode 100");
}

void World::endBySignal(const Arguments& number)
{
    m_mayEnd = true;
    box.program->signal(std::stoi(number[0]));
    mustEnd("a signal");
}

void World::endAndLaunch(const Arguments& wayAndDelay)
{
    changeWindowManager({"back"});
    m_mayEnd = true;
    if (wayAndDelay[0] == "signal")
        box.program->signal(SIGTERM);
    else
        box.settings.setInt(tv::kStartMode, 100);
    tv::pass(milliseconds(wayAndDelay[1]));
    if (isRunning())
        launch();
}

const Actions& surroundingActions()
{
    constexpr static const char* kWays[] = {"signal", "mode"};
    static const Actions actions {
        {"answer", 6, oneOf({tv::kWilling, "dawdle 0.3", tv::kRefusing, "wrong-type", "vanish"}),
            &World::answer},
        {"daemon", 3, oneOf({"back", "gone"}), &World::changeDaemon},
        {"bus", 1, numberBelow(1500), &World::interruptBus},
        {"folders", 3, oneOf({"back", "back", "back", "state", "runtime", "locked"}), &World::changeFolders},
        {"screen", 2, oneOf({"1920x1080", "1280x720", "800x600"}), &World::resizeScreen},
        {"manager", 2, oneOf({"back", "gone"}), &World::changeWindowManager},
        {"pause", 2, numberBelow(2000), &World::pause},
        {"mode", 3, oneOf({"0", "5", "99", "101", "-100", "100", "100"}), &World::writeStartMode},
        {"signal", 2, oneOf({"1", "2", "15"}), &World::endBySignal},
        {"launch", 3, [](Random&) { return Arguments {}; }, &World::launch},
        {"relaunch", 2,
            [](Random& random) {
                return Arguments {random.pick(kWays), random.numberBelow(100)};
            },
            &World::endAndLaunch},
    };
    return actions;
}

} // namespace monkey
