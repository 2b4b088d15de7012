#include "World.h"

#include <algorithm>
#include <cstdlib>
#include <sched.h>
#include <sys/mount.h>

namespace monkey {

namespace {

using tv::Milliseconds;
using tv::waitUntil;

/// For a sanitizer build on a busy machine.
constexpr Milliseconds kPatience {60000};
/// Between two steps the program gets this long to do what it will.
constexpr Milliseconds kBreath {30};
constexpr size_t kMostMemory = 900000; // kB, a sanitizer's shadow included
constexpr long kMostDescriptors = 120;
constexpr const char* kReports[] = {"ERROR: AddressSanitizer", "runtime error: ", "ERROR: LeakSanitizer",
    "AddressSanitizer:DEADLYSIGNAL", "terminate called", "Assertion `"};

size_t memoryOf(int pid)
{
    const std::string status = tv::readFile("/proc/" + std::to_string(pid) + "/status");
    const size_t at = status.find("VmRSS:");
    return at == std::string::npos ? 0 : std::strtoul(status.c_str() + at + 6, nullptr, 10);
}

long descriptorsOf(int pid)
{
    std::error_code gone;
    const std::filesystem::directory_iterator all("/proc/" + std::to_string(pid) + "/fd", gone);
    return gone ? 0 : std::distance(begin(all), end(all));
}

/// @return the processes that live in these folders, but for the daemon
std::string processesIn(const std::filesystem::path& root, int daemon)
{
    std::string found;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const std::string name = entry.path().filename();
        if (name.find_first_not_of("0123456789") == std::string::npos && name != std::to_string(daemon)
            && tv::readFile(entry.path() / "environ").find("ORBIS_STATE_DIR=" + root.string() + "/")
                != std::string::npos)
            found += name + " ";
    }
    return found;
}

} // namespace

World::World()
{
    // What is mounted here is nobody else's, and goes with this process.
    if (unshare(CLONE_NEWNS) == 0)
        mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
    const char* options = std::getenv("ASAN_OPTIONS");
    box.setVariable("ASAN_OPTIONS",
        std::string(options ? options : "")
            + ":verify_asan_link_order=0:fast_unwind_on_malloc=0:quarantine_size_mb=16:exitcode=99");
    box.setVariable("LSAN_OPTIONS", "print_suppressions=0:suppressions=" LEAKS_OF_THE_TOOLKIT);
    box.setVariable("UBSAN_OPTIONS", "print_stacktrace=1");
}

void World::makeReady()
{
    if (isRunning())
        return;
    if (!m_busIsUp)
        bringBus();
    bringDaemon();
    bringFolders();
    bringManager();
    resizeScreen(tv::Display::kScreen.width, tv::Display::kScreen.height);
    box.daemon->forget();
    box.settings.setInt(tv::kStartMode, 0);
    m_daemonIsWilling = true;
    m_folderWasGone = false;
    m_mayEnd = false;
    m_linesRead = 0;
    ++m_starts;
    box.program = box.launch({"LAUNCH_MODE=POPUP"});
    const bool isUp = waitUntil(
        [this] { return !box.program->running() || box.daemon->findsUi(box.program->pid()); }, kPatience);
    readReports();
    if (!isUp || !box.program->running())
        throw Fault("the program does not come up");
}

void World::check()
{
    if (!box.program)
        return;
    tv::stays([] { return true; }, kBreath);
    readReports();
    if (isRunning())
        checkLiving();
    if (!isRunning())
        checkEnd();
}

void World::readReports()
{
    const std::vector<std::string>& lines = box.program->errors();
    for (; m_linesRead < lines.size(); ++m_linesRead) {
        for (const char* report : kReports) {
            if (lines[m_linesRead].find(report) != std::string::npos) {
                box.program->waitForExit();
                throw Fault(lines[m_linesRead]);
            }
        }
    }
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
    const bool isWell = waitUntil(
        [&] {
            const auto screen = tv::askProbe(box.probeSocket());
            if (screen) {
                wrong = whatIsWrongWith(*screen);
                shown = ": " + screen->description();
            }
            return !isRunning() || (screen && wrong.empty());
        },
        kPatience);
    readReports();
    if (!isWell)
        throw Fault(wrong + (display.hasKeys(box.program->pid()) ? "" : ", and it has no keys") + shown);
    if (isRunning())
        checkResources();
}

void World::checkResources()
{
    const size_t memory = memoryOf(box.program->pid());
    m_mostMemory = std::max(m_mostMemory, memory);
    if (memory > kMostMemory)
        throw Fault("it has grown to " + std::to_string(memory) + " kB");
    const long descriptors = descriptorsOf(box.program->pid());
    if (descriptors > kMostDescriptors)
        throw Fault("it has " + std::to_string(descriptors) + " descriptors open");
}

void World::checkStatus()
{
    readReports();
    const int status = *box.program->status();
    if (!m_mayEnd || status != 0)
        throw Fault("the program ended with " + std::to_string(status));
}

void World::checkEnd()
{
    checkStatus();
    const int pid = box.program->pid();
    const auto entry = box.folders.appStatus(tv::kPackage);
    if (!waitUntil([&] { return !std::filesystem::exists(entry) && !display.visibleWindow(pid); }))
        throw Fault("after its end there is still its " + (exists(entry) ? entry.string() : "window"));
    const std::string processes = processesIn(box.folders.root(), box.daemon ? box.daemon->pid() : 0);
    if (!processes.empty())
        throw Fault("after its end there are still processes: " + processes);
    box.program.reset();
}

void World::mustEnd(const char* reason)
{
    m_mayEnd = true;
    if (!waitUntil([this] { return !isRunning(); }, kPatience))
        throw Fault(std::string("it does not end after ") + reason);
}

void World::request(const std::string& method, const Arguments& texts, size_t times)
{
    if (!m_busIsUp || !box.daemon)
        return;
    const size_t before = box.daemon->replies().size();
    for (size_t i = 0; i < times; ++i)
        box.daemon->send(method, texts);
    waitUntil([&] { return box.daemon->replies().size() >= before + times || !isRunning(); }, kPatience);
    if (!isUndisturbed() || m_mayEnd)
        return;
    for (size_t i = before; i < before + times && isRunning(); ++i) {
        const auto& replies = box.daemon->replies();
        if (i >= replies.size() || replies[i] != tv::kTaken)
            throw Fault(method + " is answered with \"" + (i < replies.size() ? replies[i] : "") + "\"");
    }
}

void World::launch()
{
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
    const bool isFound = box.daemon && m_busIsUp;
    const bool serves = waitUntil(
        [&] { return !other->running() || !isFound || box.daemon->findsUi(other->pid()); }, kPatience);
    if (!serves || !other->running())
        throw Fault(wasEnding ? "a launch while the program was closing is lost" : "both launches end");
    box.program = std::move(other);
    m_mayEnd = false;
    m_linesRead = 0;
}

} // namespace monkey
