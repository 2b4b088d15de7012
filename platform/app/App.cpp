// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "app.h"

#include "app/ApplicationId.h"
#include "app/DisplayLoss.h"
#include "app/Ending.h"
#include "app/Events.h"
#include "app/Fonts.h"
#include "app/GLibBridge.h"
#include "app/Instance.h"
#include "app/Language.h"
#include "app/ToolkitStart.h"
#include "app/Traces.h"
#include "app/WindowState.h"
#include "aul.h"
#include "base/Handles.h"
#include "files/Folders.h"
#include "log/StandardError.h"
#include "names/Places.h"

#include <Elementary.h>

#include <unistd.h>

#include <cstdio>
#include <optional>
#include <string>
#include <utility>

namespace orbis::app {

namespace {

using BundlePtr = base::CHandle<bundle, bundle_free>;

/// @return the application's id; its file name serves where there is none
std::string idOf(const char* program)
{
    if (orbis_app_id)
        return orbis_app_id;
    const std::string path = program ? program : "";
    return path.substr(path.find_last_of('/') + 1);
}

LaunchParameters parametersOf(int argc, char** argv)
{
    LaunchParameters parameters;
    for (int i = 1; i < argc && argv[i]; ++i) {
        const std::string argument = argv[i];
        if (const auto equals = argument.find('='); equals != std::string::npos && equals > 0)
            parameters.push_back(argument);
    }
    return parameters;
}

/// One run of an application, from the toolkit's start to its end.
class Run {
public:
    Run(std::string id, const ui_app_lifecycle_callback_s& callbacks, void* userData)
        : m_id(std::move(id))
        , m_callbacks(callbacks)
        , m_userData(userData)
    {
    }

    int execute(int argc, char** argv);
    void windowState(bool visible, bool focused);
    void lose(const char* what);

private:
    static void on_start(void* data);
    static Eina_Bool on_idle(void* data);
    static Eina_Bool on_hangUp(void*, int, void*);
    static Eina_Bool on_endEvent(void* data, int, void*);

    void deliver(const LaunchParameters& parameters);
    bool serveLaunches();
    void loop(Ending& ending);

    std::string m_id;
    ui_app_lifecycle_callback_s m_callbacks;
    void* m_userData;
    LaunchParameters m_parameters;
    Instance m_instance;
    Ecore_Job* m_start = nullptr; ///< cleared by the job itself
    Ecore_Idler* m_statusIdler = nullptr; ///< cleared by itself
    aul_app_status m_status = STATUS_LAUNCHING; ///< of the window, to be told
    bool m_created = false;
    bool m_ended = false; ///< the loop has; from then on only terminate is called
    bool m_visible = false;
    bool m_isLost = false;
};

Run* s_run = nullptr;

int Run::execute(int argc, char** argv)
{
    Ending ending {m_id};
    m_parameters = parametersOf(argc, argv);
    const Instance::Claim claim = m_instance.claim(m_id, m_parameters);
    if (claim == Instance::Claim::Handed)
        return APP_ERROR_NONE;
    if (claim == Instance::Claim::Denied)
        _exit(APP_EXIT_DENIED);
    std::optional<Trace> status {std::in_place, files::runtimeFolder() + names::kStatusEntries + '/' + m_id,
        Trace::Whose::IfItNamesUs};
    aul_app_set_status(m_id.c_str(), STATUS_LAUNCHING);
    if (!startLoop())
        return APP_ERROR_INVALID_CONTEXT;
    ending.letLoopServe();
    const bool started = startToolkit(argc, argv);
    if (started) {
        DisplayLoss::watchConnection();
        applyLanguage();
        loop(ending);
        elm_shutdown();
    }
    // Ecore lets go of the signals when it goes: nothing may be left to remove by then.
    status.reset();
    m_instance.release();
    ecore_shutdown();
    if (m_isLost)
        _exit(APP_EXIT_DISPLAY_LOST);
    return started ? APP_ERROR_NONE : APP_ERROR_INVALID_CONTEXT;
}

void Run::loop(Ending& ending)
{
    std::optional<GLibBridge> bridge {std::in_place, [this] { return serveLaunches(); }};
    m_instance.launches().listen();
    startEventSources();
    Ecore_Event_Handler* hangUp = ecore_event_handler_add(ECORE_EVENT_SIGNAL_HUP, on_hangUp, nullptr);
    const FontCheck fonts;
    Ecore_Event_Handler* end = ecore_event_handler_add(ECORE_EVENT_SIGNAL_EXIT, on_endEvent, this);
    // An exit that is asked for before the loop runs would be forgotten, so creation happens inside it.
    m_start = ecore_job_add(on_start, this);
    elm_run();
    ending.limitTheRest(m_isLost ? APP_EXIT_DISPLAY_LOST : 0);
    m_ended = true;
    m_instance.launches().close();
    if (m_created && m_callbacks.terminate)
        m_callbacks.terminate(m_userData);
    if (m_start)
        ecore_job_del(std::exchange(m_start, nullptr));
    if (m_statusIdler)
        ecore_idler_del(std::exchange(m_statusIdler, nullptr));
    ecore_event_handler_del(end);
    ecore_event_handler_del(hangUp);
    stopEventSources();
}

/// The loop has dealt with all that came before them.
bool Run::serveLaunches()
{
    if (!m_created || m_ended || Ending::isAskedFor())
        return false;
    return m_instance.launches().serve([this](const LaunchParameters& parameters) { deliver(parameters); });
}

void Run::on_start(void* data)
{
    auto* self = static_cast<Run*>(data);
    self->m_start = nullptr;
    if (Ending::isAskedFor()) { // before the loop ran, when nobody could be told
        elm_exit();
        return;
    }
    self->m_created = true;
    if (self->m_callbacks.create && !self->m_callbacks.create(self->m_userData)) {
        elm_exit();
        return;
    }
    checkCatalogues();
    if (!self->m_visible)
        aul_app_set_status(self->m_id.c_str(), STATUS_CREATED);
    self->deliver(self->m_parameters);
}

void Run::deliver(const LaunchParameters& parameters)
{
    if (!m_callbacks.app_control)
        return;
    const BundlePtr launch {bundle_import_from_argv(0, nullptr)};
    for (const std::string& parameter : parameters) {
        const auto equals = parameter.find('=');
        if (equals != std::string::npos)
            bundle_add(launch.get(), parameter.substr(0, equals).c_str(), parameter.c_str() + equals + 1);
    }
    app_control_h request = nullptr;
    if (app_control_create_request(launch.get(), &request) != APP_ERROR_NONE)
        return;
    m_callbacks.app_control(request, m_userData);
    app_control_destroy(request);
}

void Run::windowState(bool visible, bool focused)
{
    if (m_ended)
        return;
    const aul_app_status shown = focused ? STATUS_FOCUS : STATUS_VISIBLE;
    m_status = visible ? shown : STATUS_BG;
    if (!m_statusIdler)
        m_statusIdler = ecore_idler_add(on_idle, this);
    if (visible == m_visible)
        return;
    m_visible = visible;
    if (auto* callback = visible ? m_callbacks.resume : m_callbacks.pause)
        callback(m_userData);
}

/// Others are told of the window once it has been drawn: to write a file takes as long as much of a picture.
Eina_Bool Run::on_idle(void* data)
{
    auto* self = static_cast<Run*>(data);
    self->m_statusIdler = nullptr;
    aul_app_set_status(self->m_id.c_str(), self->m_status);
    return ECORE_CALLBACK_CANCEL;
}

void Run::lose(const char* what)
{
    if (m_isLost || m_ended)
        return;
    m_isLost = true;
    fprintf(stderr, "%s: %s\n", m_id.c_str(), what);
    elm_exit();
}

Eina_Bool Run::on_hangUp(void*, int, void*)
{
    elm_exit();
    return ECORE_CALLBACK_PASS_ON;
}

/// The toolkit makes this event of a signal, but also of a compositor that has gone.
Eina_Bool Run::on_endEvent(void* data, int, void*)
{
    if (!Ending::isAskedFor())
        static_cast<Run*>(data)->lose("the display is gone");
    return ECORE_CALLBACK_PASS_ON;
}

} // namespace

void windowStateChanged(bool visible, bool focused)
{
    if (s_run)
        s_run->windowState(visible, focused);
}

void displayLost(const char* what)
{
    if (s_run)
        s_run->lose(what);
}

} // namespace orbis::app

int ui_app_main(int argc, char** argv, ui_app_lifecycle_callback_s* callbacks, void* user_data)
{
    using namespace orbis::app;
    if (!callbacks || !argv || argc < 1)
        return APP_ERROR_INVALID_PARAMETER;
    if (s_run)
        return APP_ERROR_INVALID_CONTEXT;
    Run run {idOf(argv[0]), *callbacks, user_data};
    s_run = &run;
    orbis::log::ignoreBrokenPipes();
    orbis::log::neverWaitForStandardError(); // the toolkit writes there, too
    const int result = run.execute(argc, argv);
    s_run = nullptr;
    return result;
}
