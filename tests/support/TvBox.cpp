#include "TvBox.h"

#include <cstdlib>

namespace tv {

namespace {

std::filesystem::path speechLog(const Folders& folders)
{
    return folders.root() / "speech.log";
}

std::string probeSocket(const Folders& folders)
{
    return (folders.root() / "screen-probe").string();
}

} // namespace

TvBox::TvBox(const PrivateBus& bus, const Display& screen)
    : settings(folders)
    , display(screen)
    , daemon(std::make_unique<Daemon>(bus.address()))
{
    settings.setText(kLanguage, "en_US.UTF-8");
    settings.setText(kWizardMode, "FIRST_RUN");
    setVariable("DBUS_SYSTEM_BUS_ADDRESS", bus.address());
    setVariable("DISPLAY", display.name());
    setVariable("ORBIS_SPEECH_LOG", speechLog(folders).string());
    watchScreen();
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
    // Where a name comes twice, the first one holds.
    for (std::string& variable : folders.environment())
        result.push_back(std::move(variable));
    return result;
}

std::unique_ptr<Program> TvBox::launch(const std::vector<std::string>& arguments) const
{
    std::vector<std::string> all {binary("tessel-ui")};
    all.insert(all.end(), arguments.begin(), arguments.end());
    return std::make_unique<Program>(all, environment());
}

testing::AssertionResult TvBox::start(const std::vector<std::string>& arguments)
{
    const size_t told = daemon->calls().size();
    program = launch(arguments);
    const bool ready = waitUntil([&] { return !program->running() || daemon->calls().size() > told; });
    if (!ready || !program->running())
        return testing::AssertionFailure() << "the program did not come up";
    if (!daemon->findsUi(program->pid()))
        return testing::AssertionFailure() << "the daemon was told before the name was the program's";
    return testing::AssertionSuccess();
}

testing::AssertionResult TvBox::startAgain()
{
    program.reset();
    daemon->forget();
    for (const char* key : {kStartMode, kReady, kOwned, kRequest})
        settings.remove(key);
    return start();
}

testing::AssertionResult TvBox::request(const std::string& method, const std::vector<std::string>& texts)
{
    const Reply reply = daemon->request(method, texts);
    if (reply.value == "(0,)")
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
        << method << " was answered with \"" << reply.value << reply.error << "\"";
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
    if (!askProbeWhenDrawn(probeSocket(folders)))
        return testing::AssertionFailure() << "the program does not tell that it has drawn " << method;
    display.settledPicture();
    return testing::AssertionSuccess();
}

testing::AssertionResult TvBox::show(const ShownRequest& request)
{
    auto shown = show(request.method, request.texts);
    return shown ? shows({request.card}) : shown;
}

testing::AssertionResult TvBox::screenIsPlain() const
{
    const int pid = program->pid();
    if (waitUntil([&] { return !display.showsAnything() && !display.visibleWindow(pid); }))
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
        << "something is left on the screen" << (display.visibleWindow(pid) ? ", the window too" : "");
}

void TvBox::watchScreen()
{
    setVariable("LD_PRELOAD", SCREEN_PROBE);
    setVariable("SCREEN_PROBE", probeSocket(folders));
#ifdef __SANITIZE_ADDRESS__
    // The sanitizer wants to be the first library; it may come behind one that replaces none of its
    // functions.
    const char* options = std::getenv("ASAN_OPTIONS");
    setVariable("ASAN_OPTIONS", std::string(options ? options : "") + ":verify_asan_link_order=0");
#endif
}

Screen TvBox::screen() const
{
    return askProbeWhenDrawn(probeSocket(folders)).value_or(Screen {});
}

Screen TvBox::drawn() const
{
    return askProbe(probeSocket(folders)).value_or(Screen {});
}

testing::AssertionResult TvBox::shows(const std::vector<Card>& cards) const
{
    std::optional<Screen> last;
    const bool shown = waitUntil([&] {
        last = askProbe(probeSocket(folders));
        if (last && last->shows(cards))
            last = askProbeWhenDrawn(probeSocket(folders));
        return (last && last->shows(cards)) || !program->running();
    });
    if (shown && last && last->shows(cards))
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
        << "on the screen: " << (last ? last->description() : "the program does not tell")
        << "\nexpected:" << describe(cards);
}

testing::AssertionResult TvBox::press(const std::vector<std::string>& keys) const
{
    for (const std::string& key : keys) {
        if (!waitUntil([&] { return display.hasKeys(program->pid()); })
            || !askProbeWhenDrawn(probeSocket(folders)))
            return testing::AssertionFailure() << "there is nothing that could take the key " << key;
        display.key(key);
    }
    if (askProbeWhenDrawn(probeSocket(folders)) || waitUntil([&] { return !program->running(); }))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "the program does not tell what became of the keys";
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
    if (value != 100 && !program->running())
        return testing::AssertionFailure() << "start mode " << value << " ended the program";
    return testing::AssertionSuccess();
}

std::vector<std::string> TvBox::utterances() const
{
    return readLines(speechLog(folders));
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
