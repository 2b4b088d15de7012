#include "Stage.h"

#include "OutsideNames.h"
#include "Pixels.h"
#include "Rules.h"
#include "Scene.h"
#include "States.h"
#include "Translated.h"
#include "UIManager.h"
#include "app.h"
#include "vconf.h"

#include <Ecore_Evas.h>

#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <optional>
#include <utility>

namespace gallery {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kRounds = 8;
constexpr double kInterval = 0.002; ///< seconds
/// The guide's hint comes after half a second.
constexpr std::chrono::milliseconds kWait {650};

/// A folder that goes with the object.
class TemporaryFolder {
public:
    TemporaryFolder()
    {
        std::error_code error;
        std::string path = std::filesystem::temp_directory_path(error) / "tessel-gallery-XXXXXX";
        if (!error && mkdtemp(path.data()))
            m_path = path;
        else
            perror("tessel-gallery: no temporary folder");
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        if (!m_path.empty())
            std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const { return m_path; }

private:
    std::string m_path;
};

/// Beside the program's own folder, as in an installed tree.
std::string fontsFile()
{
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return program.parent_path().parent_path() / "share/tessel/fonts/pinned.conf";
}

/// Region of a catalogue that names none; the program tells the direction of writing by "ar_" and the like.
constexpr const char* kUnknownRegion = "_ZZ";

void setUp(const Combination& combination, const std::string& folder)
{
    const std::pair<const char*, std::string> variables[] = {
        {"ORBIS_STATE_DIR", folder + "/state"},
        {"ORBIS_RUNTIME_DIR", folder + "/runtime"},
        {"HOME", folder},
        {"XDG_RUNTIME_DIR", folder},
        {"XDG_CACHE_HOME", folder},
        {"FONTCONFIG_FILE", fontsFile()},
        {"ELM_DISPLAY", "buffer"},
        {"ELM_ENGINE", "buffer"},
        {"ELM_SCALE", std::to_string(combination.realScale())},
        {"EINA_FREEQ_BYPASS", "1"},
        // Nothing may speak while pictures are made.
        {"ORBIS_SPEECH_LOG", folder + "/speech"},
        {"LC_ALL", "C.UTF-8"},
    };
    for (const auto& [name, value] : variables)
        setenv(name, value.c_str(), 1);
    std::string language = combination.language;
    if (language.find('_') == std::string::npos)
        language += kUnknownRegion;
    vconf_set_str(TesselUI::kLanguageKey, language.c_str());
    vconf_set_int(TesselUI::kContrastKey, combination.contrast ? 1 : 0);
    vconf_set_str(TesselUI::kWizardModeKey, "FIRST_RUN");
    vconf_set_str(TesselUI::kTvNameKey, "Norvale TV (Living room)");
}

/// Motion would have to be waited for, and a slow machine would be pictured in the middle of it. What moves
/// already jumps to its end.
void stopMotion(const Evas_Object* window)
{
    for (Evas_Object* object : objectsOf(window)) {
        if (strcmp(evas_object_type_get(object), "edje") == 0)
            edje_object_animation_set(object, EINA_FALSE);
    }
}

class Stage {
public:
    Stage(const Combination& combination, const Options& options)
        : m_combination(combination)
        , m_options(options)
        , m_states(states(options.awkwardNames))
        , m_behind(filmPicture(combination.width(), combination.height()))
    {
    }

    void begin();
    void close();
    Report takeReport() { return std::move(m_report); }

private:
    static Eina_Bool on_tick(void* data);

    bool openWindow();
    Ecore_Evas* canvas() const { return ecore_evas_ecore_evas_get(evas_object_evas_get(m_window)); }
    void focusWindow() const;
    bool tick();
    void press(const char* key);
    void enter(const State& state);
    void picture(const State& state);
    Image withoutTexts(const Scene& scene) const;

    const Combination& m_combination;
    const Options& m_options;
    std::vector<State> m_states;
    size_t m_next = 0; ///< state to enter
    int m_rounds = 0; ///< of the loop, still to come before the picture
    Clock::time_point m_notBefore {};
    Clock::time_point m_started {};
    Ecore_Timer* m_timer = nullptr; ///< owned; cleared when it ends itself
    Image m_behind;
    std::optional<TesselUI::UIManager> m_manager;
    Evas_Object* m_window = nullptr; ///< the manager's
    unsigned int m_timestamp = 1; ///< of the last key, milliseconds
    Report m_report;
};

void Stage::press(const char* key)
{
    Evas* canvas = evas_object_evas_get(m_window);
    evas_event_feed_key_down(canvas, key, key, nullptr, nullptr, ++m_timestamp, nullptr);
    evas_event_feed_key_up(canvas, key, key, nullptr, nullptr, ++m_timestamp, nullptr);
}

/// The manager's window is the only one.
bool Stage::openWindow()
{
    m_manager.emplace().createWindow();
    Eina_List* canvases = ecore_evas_ecore_evas_list_get();
    void* entry = nullptr;
    EINA_LIST_FREE(canvases, entry)
    {
        const Evas* canvas = ecore_evas_get(static_cast<Ecore_Evas*>(entry));
        for (Evas_Object* o = evas_object_bottom_get(canvas); o; o = evas_object_above_get(o)) {
            if (elm_object_widget_check(o) && elm_object_top_widget_get(o) == o)
                m_window = o;
        }
    }
    if (!m_window)
        return false;
    evas_object_resize(m_window, m_combination.width(), m_combination.height());
    return true;
}

void Stage::enter(const State& state)
{
    switch (state.step) {
    case Step::Show:
        state.show(*m_manager, state.names);
        break;
    case Step::Wait:
        m_notBefore = Clock::now() + kWait;
        break;
    case Step::Press:
        press("Return");
        break;
    case Step::Next:
        press(elm_config_mirrored_get() ? "Left" : "Right");
        break;
    case Step::Previous:
        press(elm_config_mirrored_get() ? "Right" : "Left");
        break;
    }
    m_rounds = kRounds;
}

/// The window of this engine counts as focused only after it was told both.
void Stage::focusWindow() const
{
    ecore_evas_focus_set(canvas(), EINA_FALSE);
    ecore_evas_focus_set(canvas(), EINA_TRUE);
}

Image Stage::withoutTexts(const Scene& scene) const
{
    struct Colour {
        int red, green, blue, alpha;
    };
    std::vector<Colour> colours;
    for (const Text& text : scene.texts) {
        Colour& colour = colours.emplace_back();
        evas_object_color_get(text.object, &colour.red, &colour.green, &colour.blue, &colour.alpha);
        evas_object_color_set(text.object, 0, 0, 0, 0);
    }
    Image image = grab(m_window, m_behind);
    for (size_t i = 0; i < colours.size(); ++i)
        evas_object_color_set(
            scene.texts[i].object, colours[i].red, colours[i].green, colours[i].blue, colours[i].alpha);
    return image;
}

void Stage::picture(const State& state)
{
    const Image whole = grab(m_window, m_behind);
    const Scene scene = look(m_window);
    const Expected expected {m_combination.realScale(), m_combination.contrast, state.hasAwkwardNames,
        state.hasMarkup, TesselUI::translated(state.focusedId)};
    Picture picture {state.name, m_combination.name() + "/" + state.name + ".png", scene, {}, {}};
    picture.broken = check(scene, whole, withoutTexts(scene), expected, picture.measured);
    if (!savePng(whole, m_options.folder + "/" + picture.file))
        picture.broken.push_back({"file", "cannot write " + picture.file});
    m_report.pictures.push_back(std::move(picture));
}

void Stage::begin()
{
    m_started = Clock::now();
    if (openWindow())
        m_timer = ecore_timer_add(kInterval, on_tick, this);
    else
        elm_exit();
}

/// The loop turns a few times between a step and its picture: a layout may need another, a job may add a job,
/// and the theme's signals are delivered by jobs.
bool Stage::tick()
{
    stopMotion(m_window); // also of what a job has made since
    ecore_evas_manual_render(canvas());
    if (m_next == 1 && m_rounds == kRounds / 2)
        focusWindow();
    if (m_rounds-- > 0 || Clock::now() < m_notBefore)
        return true;
    if (m_next > 0)
        picture(m_states[m_next - 1]);
    if (m_next < m_states.size()) {
        enter(m_states[m_next++]);
        return true;
    }
    m_report.seconds = std::chrono::duration<double>(Clock::now() - m_started).count();
    elm_exit();
    m_timer = nullptr;
    return false;
}

Eina_Bool Stage::on_tick(void* data)
{
    return static_cast<Stage*>(data)->tick() ? ECORE_CALLBACK_RENEW : ECORE_CALLBACK_CANCEL;
}

/// The window goes after the loop, as the program's own does.
void Stage::close()
{
    if (m_timer)
        ecore_timer_del(std::exchange(m_timer, nullptr));
    m_manager.reset();
}

} // namespace

Report perform(const Combination& combination, const Options& options)
{
    if (access(fontsFile().c_str(), R_OK) != 0) {
        perror(fontsFile().c_str());
        return {};
    }
    const TemporaryFolder folder;
    std::error_code error;
    std::filesystem::create_directories(options.folder + "/" + combination.name(), error);
    if (folder.path().empty() || error)
        return {};
    setUp(combination, folder.path());
    Stage stage {combination, options};
    ui_app_lifecycle_callback_s callbacks {};
    callbacks.app_control = [](app_control_h, void* data) { static_cast<Stage*>(data)->begin(); };
    callbacks.terminate = [](void* data) { static_cast<Stage*>(data)->close(); };
    std::string program = "tessel-gallery";
    char* arguments[] = {program.data(), nullptr};
    ui_app_main(1, arguments, &callbacks, &stage);
    Report report = stage.takeReport();
    report.combination = combination;
    return report;
}

} // namespace gallery
