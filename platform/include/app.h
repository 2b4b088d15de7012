// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Application framework: launch request, lifecycle callbacks and the main loop.
#ifndef ORBIS_APP_H
#define ORBIS_APP_H

#include "bundle.h"

#include <stdbool.h>

#ifdef __cplusplus
extern "C" {
#endif

/// Results of the calls of this header.
typedef enum {
    APP_ERROR_NONE = 0,
    APP_ERROR_OUT_OF_MEMORY = -12, ///< -ENOMEM
    APP_ERROR_INVALID_PARAMETER = -22, ///< -EINVAL
    APP_ERROR_INVALID_CONTEXT = -2, ///< the loop runs already, or the toolkit cannot start
    APP_ERROR_KEY_NOT_FOUND = -126, ///< -ENOKEY
} app_error_e;

/// Exit statuses of a process that ui_app_main() itself ends, because there is nothing to return to.
typedef enum {
    APP_EXIT_DISPLAY_LOST = 3, ///< the display went away, or the window was destroyed from outside
    APP_EXIT_DENIED = 4, ///< another process runs the application and cannot be given the launch
} app_exit_e;

typedef struct app_control* app_control_h; ///< a launch request; owned by whoever created it

/// Makes a request that holds a copy of the bundle's parameters (null: none).
/// @param request  out, released with app_control_destroy(); untouched on failure
/// @return APP_ERROR_INVALID_PARAMETER for a null request, APP_ERROR_OUT_OF_MEMORY
int app_control_create_request(bundle* b, app_control_h* request);

/// @param value  out, a copy that the caller releases with free(); untouched on failure
/// @return APP_ERROR_KEY_NOT_FOUND when the request has no such parameter
int app_control_get_extra_data(app_control_h request, const char* key, char** value);

/// @return APP_ERROR_INVALID_PARAMETER for null
int app_control_destroy(app_control_h request);

/// Lifecycle callbacks, all called from the main loop's thread; each may be null.
typedef struct {
    bool (*create)(void* user_data); ///< once, inside the running loop; false ends the loop
    void (*terminate)(void* user_data); ///< once, after the loop ended, if create was called
    void (*pause)(void* user_data); ///< the window went off the screen; never after the loop ended
    void (*resume)(void* user_data); ///< the window came (back) on the screen
    void (*app_control)(app_control_h request, void* user_data); ///< after create, and for each later
                                                                 ///< launch; request is borrowed
} ui_app_lifecycle_callback_s;

typedef enum {
    APP_EVENT_LOW_MEMORY = 0,
    APP_EVENT_LOW_BATTERY = 1,
    APP_EVENT_LANGUAGE_CHANGED = 2,
    APP_EVENT_DEVICE_ORIENTATION_CHANGED = 3,
    APP_EVENT_REGION_FORMAT_CHANGED = 4,
} app_event_type_e;

typedef struct app_event_info* app_event_info_h;
typedef struct app_event_handler* app_event_handler_h;
typedef void (*app_event_cb)(app_event_info_h info, void* user_data);

/// Registers for an event. Of the events only the change of language (the setting
/// "db/menu_widget/language") has a source on an ordinary machine. The handle stays valid until the process
/// ends; there is nothing to release.
/// @return APP_ERROR_INVALID_PARAMETER for a null callback or an unknown event; *handler is untouched then
int ui_app_add_event_handler(
    app_event_handler_h* handler, app_event_type_e event, app_event_cb callback, void* user_data);

/// Runs the application: starts the toolkit in the viewer's language, calls create and app_control, runs
/// the loop until elm_exit() or SIGTERM, SIGINT, SIGHUP or SIGQUIT, calls terminate and shuts the toolkit
/// down. GLib's default main context is served by the same loop. Keeps the application's status entry
/// (aul.h). When it has returned it may be called again. The environment is left as it was, but for the
/// language and the toolkit's own switches.
///
/// When the application runs already, its parameters are handed to the running one, whose app_control is
/// called with them, and the result is APP_ERROR_NONE without any callback here. A process that was asked to
/// end takes no launch: this call then waits for its end and runs the application itself. It waits as well
/// while the other one cannot answer, for a minute at most.
///
/// The process may end inside this call, with nothing left behind and a line on standard error:
/// - with status 0, when 0.7 seconds after one of the signals a callback still blocks the loop, or when
///   terminate and the rest take longer than a second. Time in which a busy machine gives the process no
///   processor does not count, up to three seconds. terminate may then not have been called;
/// - with APP_EXIT_DISPLAY_LOST. terminate has been called after the window alone was destroyed, or a Wayland
///   compositor went, but not after an X server went;
/// - with APP_EXIT_DENIED, when the running instance belongs to another user or has not answered in a minute;
/// - by the signal itself, when it comes before the launch could be handed over or the toolkit was started.
/// Where the runtime folder cannot be used at all, nobody can tell whether another process runs the
/// application; standard error says so, and this one runs.
/// @return APP_ERROR_INVALID_PARAMETER for a null table, a null argv or argc below 1;
///         APP_ERROR_INVALID_CONTEXT when an application runs in this process already, or when the toolkit
///         cannot start
int ui_app_main(int argc, char** argv, ui_app_lifecycle_callback_s* callbacks, void* user_data);

#ifdef __cplusplus
}
#endif

#endif
