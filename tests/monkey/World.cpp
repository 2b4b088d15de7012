// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "World.h"

#include <algorithm>
#include <cstdlib>
#include <sched.h>
#include <sys/mount.h>

namespace monkey {

namespace {

namespace fs = std::filesystem;
using tv::waitUntil;

/// For a sanitizer build on a busy machine.
constexpr tv::Milliseconds kPatience {120000};
/// Between two steps the program gets this long to do what it will.
constexpr tv::Milliseconds kBreath {30};
constexpr size_t kMostMemory = 900000; // kB, a sanitizer's shadow included
constexpr long kMostDescriptors = 120;

/// @return the processes that live in these folders, but for the daemon
std::string processesIn(const std::string& root, int daemon)
{
    const std::string look = "grep -las ORBIS_STATE_DIR=" + root + "/ /proc/[0-9]*/environ | grep -v /proc/"
        + std::to_string(daemon) + "/ | cat";
    return tv::outputOf({"sh", "-c", look}, {"PATH=/usr/bin:/bin"}).value_or("");
}

void checkResources(int pid)
{
    const fs::path process = "/proc/" + std::to_string(pid);
    const std::string status = tv::readFile(process / "status");
    const size_t at = status.find("VmRSS:");
    const size_t memory = at == std::string::npos ? 0 : std::strtoul(status.c_str() + at + 6, nullptr, 10);
    if (memory > kMostMemory)
        throw Fault("it has grown to " + std::to_string(memory) + " kB");
    std::error_code gone;
    const long descriptors = std::distance(fs::directory_iterator(process / "fd", gone), {});
    if (descriptors > kMostDescriptors)
        throw Fault("it has " + std::to_string(descriptors) + " descriptors open");
}

} // namespace

World::World()
{
    // What is mounted here is nobody else's, and goes with this process.
    if (unshare(CLONE_NEWNS) == 0)
        mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
    const char* options = std::getenv("ASAN_OPTIONS");
    // A program with something to report ends at once, and not with 0.
    box.setVariable("ASAN_OPTIONS",
        std::string(options ? options : "")
            + ":verify_asan_link_order=0:fast_unwind_on_malloc=0:quarantine_size_mb=16:exitcode=99");
    box.setVariable("LSAN_OPTIONS", "print_suppressions=0:suppressions=" LEAKS_OF_THE_TOOLKIT);
    box.setVariable("UBSAN_OPTIONS", "print_stacktrace=1:halt_on_error=1");
}

/// @return false when the program still runs without it
bool World::waitForProgram(const std::function<bool()>& condition)
{
    return waitUntil([&] { return !isRunning() || condition(); }, kPatience);
}

void World::makeReady()
{
    if (isRunning())
        return;
    changeDaemon({"back"});
    changeFolders({"back"});
    changeWindowManager({"back"});
    resizeScreen({"1920x1080"});
    box.settings.setInt(tv::kStartMode, 0);
    m_disturbed.clear();
    m_mayEnd = false;
    ++m_starts;
    box.program = box.launch({"LAUNCH_MODE=POPUP"});
    if (!waitForProgram([this] { return box.daemon->findsUi(box.program->pid()); }))
        throw Fault("the program does not come up");
    if (!isRunning())
        throw Fault("the program ends at its start with " + std::to_string(*box.program->status()));
}

void World::check()
{
    if (!box.program)
        return;
    tv::pass(kBreath);
    if (isRunning())
        checkLiving();
    if (!isRunning())
        checkEnd();
}

std::string World::whatIsWrongWith(const tv::Screen& screen) const
{
    const std::vector<tv::Card>& cards = screen.cards;
    if (cards.size() > 2 || (cards.size() == 2 && cards.back().buttons.size() != 2))
        return "more than a popup and its confirmation";
    if (screen.visible == cards.empty())
        return screen.visible ? "an empty window covers the screen" : "a popup without its window";
    if (screen.visible && !(display.visibleWindow(box.program->pid()) == m_screen))
        return "a window that does not cover the screen";
    if (!cards.empty() && (cards.back().buttons.empty() || cards.back().focus.empty()))
        return "a popup without a button that has the focus";
    return {};
}

void World::checkLiving()
{
    std::string wrong = "it does not answer";
    std::string shown;
    const bool isWell = waitForProgram([&] {
        const auto screen = tv::askProbe(box.probeSocket());
        if (screen) {
            wrong = whatIsWrongWith(*screen);
            shown = ": " + screen->description();
        }
        return screen && wrong.empty();
    });
    if (!isWell)
        throw Fault(wrong + (display.hasKeys(box.program->pid()) ? "" : ", and it has no keys") + shown);
    if (isRunning())
        checkResources(box.program->pid());
}

void World::checkStatus() const
{
    const int status = *box.program->status();
    if (!m_mayEnd || status != 0)
        throw Fault("the program ended with " + std::to_string(status));
}

void World::checkEnd()
{
    checkStatus();
    const int pid = box.program->pid();
    const fs::path entry = box.folders.appStatus(tv::kPackage);
    if (!waitUntil([&] { return !fs::exists(entry) && !display.visibleWindow(pid); }))
        throw Fault("after its end there is still its " + (exists(entry) ? entry.string() : "window"));
    const std::string processes = processesIn(box.folders.root(), box.daemon ? box.daemon->pid() : 0);
    if (!processes.empty())
        throw Fault("after its end there are still processes: " + processes);
    box.program.reset();
}

void World::mustEnd(const char* reason)
{
    m_mayEnd = true;
    if (!waitForProgram([] { return false; }))
        throw Fault(std::string("it does not end after ") + reason);
}

void World::end()
{
    if (!isRunning())
        return;
    endBySignal({"15"});
    check();
}

void World::request(const std::string& method, const Arguments& texts, size_t times)
{
    if (!box.daemon)
        return;
    const std::vector<std::string>& replies = box.daemon->replies();
    const size_t before = replies.size();
    for (size_t i = 0; i < times; ++i)
        box.daemon->send(method, texts, kPatience);
    waitUntil([&] { return replies.size() >= before + times || !isRunning(); }, kPatience);
    if (!m_disturbed.empty() || m_mayEnd)
        return;
    for (size_t i = before; i < before + times && isRunning(); ++i) {
        if (i >= replies.size() || replies[i] != tv::kTaken)
            throw Fault(method + " is answered with \"" + (i < replies.size() ? replies[i] : "") + "\"");
    }
}

/// The toolkit neither draws nor takes the keys in a program that was started without a window manager.
void World::launch(const Arguments&)
{
    changeWindowManager({"back"});
    auto other = box.launch({"LAUNCH_MODE=POPUP"});
    const bool wasEnding = m_mayEnd;
    waitUntil([&] { return !other->running() || !isRunning(); }, kPatience);
    // One that takes over is not asked to hand anything over any more.
    if (isRunning()) {
        if (other->running())
            throw Fault("a second launch stays beside the first");
        if (other->status() != 0)
            throw Fault("a second launch ends with " + std::to_string(*other->status()));
        return;
    }
    checkStatus();
    const bool serves = waitUntil(
        [&] { return !other->running() || !box.daemon || box.daemon->findsUi(other->pid()); }, kPatience);
    if (!serves || !other->running())
        throw Fault(wasEnding ? "a launch while the program was closing is lost" : "both launches end");
    box.program = std::move(other);
    m_mayEnd = false;
}

} // namespace monkey
