// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Entry: runs the popups' service when launched for them, and hands any other launch to the set-up wizard.

#include "Log.h"
#include "Paths.h"
#include "TesselUI.h"
#include "app.h"
#include "base/Handles.h"
#include "base/Version.h"
#include "bundle.h"
#include "wizard.h"

#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string>

namespace {

using namespace TesselUI;

/// @return the launch parameter "LAUNCH_MODE", or ""
std::string launchMode(bundle* launch)
{
    app_control_h request = nullptr;
    if (const int result = app_control_create_request(launch, &request); result != 0)
        LOGD("[app_control_create_request failed =>%d]", result);
    char* raw = nullptr;
    if (app_control_get_extra_data(request, "LAUNCH_MODE", &raw) != 0 || !raw)
        LOGD("get data failed.");
    const base::MallocStr value {raw};
    LOGD("[Input Param] => %s", value ? value.get() : "(null)");
    app_control_destroy(request);
    return value ? value.get() : "";
}

void registerEvents()
{
    constexpr app_event_type_e kEvents[] = {APP_EVENT_LOW_BATTERY, APP_EVENT_LOW_MEMORY,
        APP_EVENT_DEVICE_ORIENTATION_CHANGED, APP_EVENT_LANGUAGE_CHANGED, APP_EVENT_REGION_FORMAT_CHANGED};
    for (app_event_type_e event : kEvents) {
        app_event_handler_h handler = nullptr;
        ui_app_add_event_handler(&handler, event, nullptr, nullptr);
    }
}

int runPopups(int argc, char** argv, bundle* launch, const std::string& mode)
{
    registerEvents();
    LOGI("[Input Param] => %s", mode.c_str());
    LOGI("Tessel UI Main before loop");
    LOGI("[Input Param] => %s", mode.c_str());
    ui_app_lifecycle_callback_s callbacks {};
    callbacks.create = CTesselUI::OnCreate;
    callbacks.terminate = CTesselUI::OnTerminate;
    callbacks.pause = CTesselUI::OnPause;
    callbacks.resume = CTesselUI::OnResume;
    callbacks.app_control = CTesselUI::OnService;
    if (const int result = ui_app_main(argc, argv, &callbacks, nullptr); result != 0)
        LOGE("app_main failed err = %d\n\n", result);
    LOGI("In CTesselUI::Main after loop");
    bundle_free(launch);
    return 0;
}

int runWizard(bundle* launch, char* program)
{
    LOGI("Tessel UI Launched from menu");
    bundle_add(launch, "type", "TESSEL_CONNECT");
    bundle_add(launch, "uri", kWizardFlowUri);
    char** arguments = nullptr;
    const int count = bundle_export_to_argv(launch, &arguments);
    if (arguments)
        arguments[0] = program;
    bundle_free(launch);
    int result = 0;
    try {
        result = Wizard::StartWizardApp(count, arguments, kTextDomain, nullptr);
    } catch (const std::invalid_argument& error) {
        LOGD("Invalid argument: %s\n\n", error.what());
    }
    bundle_free_exported_argv(count, &arguments);
    return result;
}

} // namespace

int main(int argc, char** argv)
{
    // The one argument that is no launch parameter, for whoever asks what is installed.
    if (argc == 2 && strcmp(argv[1], "--version") == 0) {
        puts("tessel-ui " TESSEL_VERSION);
        return 0;
    }
    LOGI("Tessel UI Main start");
    const base::MallocStr program {argc > 0 && argv[0] ? strdup(argv[0]) : nullptr};
    bundle* launch = bundle_import_from_argv(argc, argv);
    const std::string mode = launchMode(launch);
    return mode == "POPUP" ? runPopups(argc, argv, launch, mode) : runWizard(launch, program.get());
}
