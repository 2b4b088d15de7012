// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Stage.h"

#include "Camera.h"
#include "OutsideNames.h"
#include "Paths.h"
#include "Scene.h"
#include "Speech.h"
#include "States.h"
#include "Surroundings.h"
#include "UIManager.h"
#include "app.h"
#include "vconf.h"

#include <Ecore_Evas.h>
#include <libintl.h>

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
        , m_states(chosenStates(options))
        , m_listener(options.folder + "/" + combination.name() + "/speech.txt")
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

    const Combination& m_combination;
    const Options& m_options;
    std::vector<Chosen> m_states;
    size_t m_next = 0; ///< state to enter
    int m_rounds = 0; ///< of the loop, still to come before the picture
    Clock::time_point m_notBefore {};
    Clock::time_point m_started {};
    Ecore_Timer* m_timer = nullptr; ///< owned; cleared when it ends itself
    std::optional<TesselUI::UIManager> m_manager;
    Evas_Object* m_window = nullptr; ///< the manager's
    unsigned int m_timestamp = 1; ///< of the last key, milliseconds
    std::optional<Camera> m_camera; ///< while the toolkit runs
    Listener m_listener;
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
    // What the widgets find is not looked for again.
    if (!m_options.theme.empty())
        elm_theme_extension_add(nullptr, m_options.theme.c_str());
    m_manager.emplace().createWindow();
    if (!m_options.catalogues.empty())
        bindtextdomain(TesselUI::kTextDomain, m_options.catalogues.c_str());
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
        vconf_set_str(TesselUI::kTvNameKey, state.names.tv.c_str());
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

void Stage::picture(const State& state)
{
    Picture picture = m_camera->take(state);
    for (Broken& unheard : m_listener.hear(state, picture.scene))
        picture.broken.push_back(std::move(unheard));
    m_report.pictures.push_back(std::move(picture));
}

void Stage::begin()
{
    m_started = Clock::now();
    if (openWindow()) {
        m_camera.emplace(m_window, m_combination, m_options);
        m_timer = ecore_timer_add(kInterval, on_tick, this);
    } else {
        elm_exit();
    }
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
    if (m_next > 0 && m_states[m_next - 1].isPictured)
        picture(m_states[m_next - 1].state);
    if (m_next < m_states.size()) {
        enter(m_states[m_next++].state);
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
    m_camera.reset();
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
