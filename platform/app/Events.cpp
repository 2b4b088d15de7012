// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "app/Events.h"

#include "app.h"
#include "app/Language.h"
#include "names/SettingsKeys.h"
#include "vconf.h"

#include <memory>
#include <vector>

struct app_event_handler {
    app_event_type_e event;
    app_event_cb callback;
    void* userData;
};

struct app_event_info {
    app_event_type_e event;
};

namespace {

/// Handles stay valid until the process ends, so their records are kept as long.
std::vector<std::unique_ptr<app_event_handler>>& handlers()
{
    static std::vector<std::unique_ptr<app_event_handler>> s_handlers;
    return s_handlers;
}

void report(app_event_type_e event)
{
    app_event_info info {event};
    // By index: a handler may register another one.
    for (std::size_t i = 0; i < handlers().size(); ++i) {
        const app_event_handler& handler = *handlers()[i];
        if (handler.event == event)
            handler.callback(&info, handler.userData);
    }
}

void on_languageChanged(keynode_t*, void*)
{
    orbis::app::changeLanguage();
    report(APP_EVENT_LANGUAGE_CHANGED);
}

} // namespace

namespace orbis::app {

void startEventSources()
{
    vconf_notify_key_changed(names::kLanguageKey, on_languageChanged, nullptr);
}

void stopEventSources()
{
    vconf_ignore_key_changed(names::kLanguageKey, on_languageChanged);
}

} // namespace orbis::app

int ui_app_add_event_handler(
    app_event_handler_h* handler, app_event_type_e event, app_event_cb callback, void* user_data)
{
    if (!handler || !callback || event < APP_EVENT_LOW_MEMORY || event > APP_EVENT_REGION_FORMAT_CHANGED)
        return APP_ERROR_INVALID_PARAMETER;
    handlers().push_back(std::make_unique<app_event_handler>(app_event_handler {event, callback, user_data}));
    *handler = handlers().back().get();
    return APP_ERROR_NONE;
}
