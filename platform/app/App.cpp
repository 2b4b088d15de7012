#include "app.h"

#include "app/ApplicationId.h"
#include "app/Events.h"
#include "app/Fonts.h"
#include "app/GLibBridge.h"
#include "app/Instance.h"
#include "app/Language.h"
#include "app/WindowState.h"
#include "aul.h"
#include "log/StandardError.h"
#include "settings/Folders.h"

#include <Efreet.h>
#include <Elementary.h>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

namespace orbis::app {

namespace {

using BundlePtr = std::unique_ptr<bundle, decltype(&bundle_free)>;

/// @return the application's id; its file name serves where there is none
std::string idOf(const char* program)
{
    if (orbis_app_id)
        return orbis_app_id;
    const std::string path = program ? program : "";
    return path.substr(path.find_last_of('/') + 1);
}

Instance::Parameters parametersOf(int argc, char** argv)
{
    Instance::Parameters parameters;
    for (int i = 1; i < argc && argv[i]; ++i) {
        const std::string argument = argv[i];
        if (const auto equals = argument.find('='); equals != std::string::npos && equals > 0)
            parameters.push_back(argument);
    }
    return parameters;
}

/// @return whether files can be made in @p folder; asked by making one, because permissions do not tell
bool canWriteIn(const std::string& folder)
{
    std::string name = folder + "/.probe-XXXXXX";
    const int file = folder.empty() ? -1 : mkstemp(name.data());
    if (file < 0)
        return false;
    close(file);
    unlink(name.c_str());
    return true;
}

std::string environment(const char* name)
{
    const char* value = getenv(name);
    return value ? value : "";
}

/// The toolkit ends the process when it finds no folder to write in.
/// @return whether it will find one
bool prepareFolders()
{
    const bool homeIsUsable = canWriteIn(environment("HOME"));
    const bool runtimeIsUsable = canWriteIn(environment("XDG_RUNTIME_DIR"));
    if (homeIsUsable && (runtimeIsUsable || environment("XDG_RUNTIME_DIR").empty()))
        return true;
    std::string fallback = runtimeFolder();
    if (!makeFolders(fallback) || !canWriteIn(fallback)) {
        char temporary[] = P_tmpdir "/orbis-XXXXXX";
        const char* made = mkdtemp(temporary);
        fallback = made ? made : "";
    }
    if (fallback.empty())
        return false;
    if (!homeIsUsable)
        setenv("HOME", fallback.c_str(), 1);
    if (!runtimeIsUsable)
        setenv("XDG_RUNTIME_DIR", fallback.c_str(), 1);
    return true;
}

/// The toolkit's defaults serve a desktop: they start helper processes, open the system bus and keep freed
/// memory back. What the environment says already is left alone.
bool prepareToolkit()
{
    setenv("ECORE_NO_SYSTEM_MODULES", "1", 0);
    setenv("EINA_FREEQ_BYPASS", "1", 0);
    chooseFonts();
    efreet_cache_disable();
    return prepareFolders();
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

private:
    static void on_start(void* data);
    static Eina_Bool on_hangUp(void*, int, void*);

    void deliver(const Instance::Parameters& parameters);
    void loop();

    std::string m_id;
    ui_app_lifecycle_callback_s m_callbacks;
    void* m_userData;
    Instance::Parameters m_parameters;
    Instance m_instance;
    bool m_created = false;
    bool m_visible = false;
};

Run* s_run = nullptr;

int Run::execute(int argc, char** argv)
{
    m_parameters = parametersOf(argc, argv);
    if (m_instance.claim(m_id, m_parameters) == Instance::Claim::Handed)
        return APP_ERROR_NONE;
    aul_app_set_status(m_id.c_str(), STATUS_LAUNCHING);
    if (!prepareToolkit() || elm_init(argc, argv) <= 0) {
        aul_app_remove_status(m_id.c_str());
        return APP_ERROR_INVALID_CONTEXT;
    }
    applyLanguage();
    loop();
    elm_shutdown();
    aul_app_remove_status(m_id.c_str());
    return APP_ERROR_NONE;
}

void Run::loop()
{
    std::optional<GLibBridge> bridge {std::in_place};
    m_instance.listen([this](const Instance::Parameters& parameters) { deliver(parameters); });
    startEventSources();
    Ecore_Event_Handler* hangUp = ecore_event_handler_add(ECORE_EVENT_SIGNAL_HUP, on_hangUp, nullptr);
    const FontCheck fonts;
    // An exit that is asked for before the loop runs would be forgotten, so creation happens inside it.
    Ecore_Job* start = ecore_job_add(on_start, this);
    elm_run();
    if (m_created && m_callbacks.terminate)
        m_callbacks.terminate(m_userData);
    else if (!m_created)
        ecore_job_del(start);
    ecore_event_handler_del(hangUp);
    stopEventSources();
    m_instance.listen(nullptr);
}

void Run::on_start(void* data)
{
    auto* self = static_cast<Run*>(data);
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

void Run::deliver(const Instance::Parameters& parameters)
{
    if (!m_callbacks.app_control)
        return;
    const BundlePtr launch {bundle_import_from_argv(0, nullptr), bundle_free};
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
    const aul_app_status shown = focused ? STATUS_FOCUS : STATUS_VISIBLE;
    aul_app_set_status(m_id.c_str(), visible ? shown : STATUS_BG);
    if (visible == m_visible)
        return;
    m_visible = visible;
    if (auto* callback = visible ? m_callbacks.resume : m_callbacks.pause)
        callback(m_userData);
}

Eina_Bool Run::on_hangUp(void*, int, void*)
{
    elm_exit();
    return ECORE_CALLBACK_PASS_ON;
}

} // namespace

void windowStateChanged(bool visible, bool focused)
{
    if (s_run)
        s_run->windowState(visible, focused);
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
    orbis::log::neverWaitForStandardError(); // the toolkit writes there, too
    const int result = run.execute(argc, argv);
    s_run = nullptr;
    return result;
}
