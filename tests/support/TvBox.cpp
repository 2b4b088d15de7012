// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "TvBox.h"

#include <cstdlib>
#include <fstream>

namespace tv {

namespace {

/// Runs a script with mounts of its own, as any user; the number of the process stays.
const std::vector<std::string> kAlone {"unshare", "--mount", "--map-current-user", "--keep-caps", "sh", "-c"};

} // namespace

TvBox::TvBox(const PrivateBus& bus, const Display& screen)
    : settings(folders)
    , display(screen)
    , m_busAddress(bus.address())
    , m_preloaded(SCREEN_PROBE)
{
    settings.setText(kLanguage, "en_US.UTF-8");
    settings.setText(kWizardMode, "FIRST_RUN");
    setVariable("DBUS_SYSTEM_BUS_ADDRESS", m_busAddress);
    setVariable("DISPLAY", display.name());
    setVariable("ORBIS_SPEECH_LOG", m_speechLog.string());
    setVariable("SCREEN_PROBE", probeSocket());
#ifdef __SANITIZE_ADDRESS__
    // The sanitizer wants to be the first library; it may come behind one that replaces none of its
    // functions.
    const char* options = std::getenv("ASAN_OPTIONS");
    setVariable("ASAN_OPTIONS", std::string(options ? options : "") + ":verify_asan_link_order=0");
#endif
    bringDaemon();
}

void TvBox::bringDaemon(const std::vector<std::string>& options)
{
    daemon.reset();
    daemon = std::make_unique<Daemon>(m_busAddress, folders.environment(), options);
}

std::string TvBox::binary(const std::string& name)
{
    const char* folder = std::getenv("TV_PROGRAMS");
    return std::string(folder ? folder : BIN_DIR) + "/" + name;
}

std::vector<std::string> TvBox::environment() const
{
    std::vector<std::string> result;
    for (const auto& [name, value] : m_variables)
        result.emplace_back(name).append("=").append(value);
    for (std::string& variable : folders.environment()) {
        if (m_variables.count(variable.substr(0, variable.find('='))) == 0)
            result.push_back(std::move(variable));
    }
    return result;
}

bool TvBox::mayMount()
{
    auto tried = kAlone;
    tried.emplace_back("mount --bind /tmp /tmp");
    return outputOf(tried, Folders().environment()).has_value();
}

void TvBox::mountFirst(const std::string& script)
{
    m_runner = kAlone;
    m_runner.insert(m_runner.end(), {script + " && exec \"$@\"", "mounts"});
}

void TvBox::bringClock()
{
    writeFile(m_clock, std::string(sizeof(int64_t), '\0'));
    setVariable("CLOCK_SHIFT", m_clock.string());
    m_preloaded += ":" CLOCK_SHIFT;
}

void TvBox::setClock(std::chrono::seconds ahead) const
{
    const int64_t seconds = ahead.count();
    // In its place: the program looks at the file's memory.
    std::fstream(m_clock, std::ios::in | std::ios::out | std::ios::binary)
        .write(reinterpret_cast<const char*>(&seconds), sizeof seconds);
}

std::unique_ptr<Program> TvBox::launch(const std::vector<std::string>& arguments) const
{
    std::vector<std::string> all = m_runner;
    // Only the program is looked into, not what it is run by.
    all.insert(all.end(), {"env", "LD_PRELOAD=" + m_preloaded, binary("tessel-ui")});
    all.insert(all.end(), arguments.begin(), arguments.end());
    return std::make_unique<Program>(all, environment());
}

testing::AssertionResult TvBox::start()
{
    const size_t told = daemon->calls().size();
    program = launch();
    const bool ready = waitUntil([&] { return !program->running() || daemon->calls().size() > told; });
    if (!ready || !program->running())
        return testing::AssertionFailure() << "the program did not come up";
    return testing::AssertionResult(daemon->findsUi(program->pid()))
        << "the daemon was told before the name was the program's";
}

void TvBox::reset()
{
    program.reset();
    if (daemon)
        daemon->forget();
    for (const char* key : {kStartMode, kReady, kOwned, kRequest})
        settings.remove(key);
}

testing::AssertionResult TvBox::startAgain()
{
    reset();
    return start();
}

testing::AssertionResult TvBox::request(const std::string& method, const std::vector<std::string>& texts)
{
    const std::string reply = daemon->request(method, texts);
    return testing::AssertionResult(reply == kTaken) << method << " was answered with \"" << reply << "\"";
}

testing::AssertionResult TvBox::show(const std::string& method, const std::vector<std::string>& texts)
{
    if (auto answered = request(method, texts); !answered)
        return answered;
    const int pid = program->pid();
    if (!waitUntil([&] { return display.visibleWindow(pid) && display.showsAnything(); }))
        return testing::AssertionFailure() << method << " brought nothing onto the screen";
    if (!waitUntil([&] { return display.hasKeys(pid); }))
        return testing::AssertionFailure() << "the popup of " << method << " does not get the keys";
    // The picture of a popup that was up before does not tell this one's.
    const bool isDrawn = askProbe(probeSocket()).has_value();
    display.settledPicture();
    return testing::AssertionResult(isDrawn) << "the program does not tell that it has drawn " << method;
}

testing::AssertionResult TvBox::show(const ShownRequest& request)
{
    auto shown = show(request.method, request.texts);
    return shown ? shows({request.card}) : shown;
}

testing::AssertionResult TvBox::screenIsPlain() const
{
    const int pid = program->pid();
    const bool isPlain = waitUntil([&] { return !display.showsAnything() && !display.visibleWindow(pid); });
    return testing::AssertionResult(isPlain)
        << "something is left on the screen" << (display.visibleWindow(pid) ? ", the window too" : "");
}

testing::AssertionResult TvBox::shows(const std::vector<Card>& cards) const
{
    std::optional<Screen> last;
    const auto isShown = [&] { return last && last->shows(cards); };
    waitUntil([&] {
        last = askProbe(probeSocket());
        return isShown() || !program->running();
    });
    return testing::AssertionResult(isShown())
        << "on the screen: " << (last ? last->description() : "the program does not tell")
        << "\nexpected:" << describe(cards);
}

testing::AssertionResult TvBox::press(const std::vector<std::string>& keys) const
{
    for (const std::string& key : keys) {
        if (!waitUntil([&] { return display.hasKeys(program->pid()); }) || !askProbe(probeSocket()))
            return testing::AssertionFailure() << "there is nothing that could take the key " << key;
        display.key(key);
    }
    return testing::AssertionResult(askProbe(probeSocket()) || waitUntil([&] { return !program->running(); }))
        << "the program does not tell what became of the keys";
}

testing::AssertionResult TvBox::setStartMode(int value) const
{
    const size_t mark = program->mark();
    if (!settings.setInt(kStartMode, value))
        return testing::AssertionFailure() << "the setting cannot be written";
    for (const char* line : {"START", "END"}) {
        if (auto handled = program->waitForLog(line, mark); !handled)
            return handled << " after start mode " << value;
    }
    return testing::AssertionResult(value == 100 || program->running())
        << "start mode " << value << " ended the program";
}

testing::AssertionResult TvBox::ends() const
{
    const auto handled = setStartMode(100);
    return handled ? program->endsWith(0) : handled;
}

std::string TvBox::report() const
{
    std::string text = "The daemon received:\n";
    if (daemon) {
        for (const std::string& call : daemon->calls())
            text += "  " + call + "\n";
    }
    if (program)
        text += "The program's standard error ended:\n" + program->tail();
    return text;
}

} // namespace tv
