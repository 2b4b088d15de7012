// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Settings and process-wide values that the application and its popups share. Each reader asks the settings
/// store afresh. Main loop only.
#pragma once

#include "Export.h"

extern "C" {

/// The application mode, 0 at start.
TESSEL_API int get_app_mode();
TESSEL_API void set_app_mode(int mode);

/// @return the PIN of the key "db/bleapp/audio_pin" when it is positive; else the value that the store gave,
///         or 5831 when it gave none
TESSEL_API int Get_Random_PIN();

/// Reads "db/bleapp/security_key". @param key  out, may be null
/// @return 1 when a positive key was read, else 0
TESSEL_API int Get_Security_Key(int* key);

/// Which progress popup is up; -1 for none.
TESSEL_API int get_tessel_popup_type();
TESSEL_API void set_tessel_popup_type(int type);

/// Called when Back or Close is pressed on a widget of the factory. Does nothing: these keys do not end the
/// set-up.
TESSEL_API void ExitFromTS();

/// @return 1, 2 or 3 for a first-run wizard mode that begins with "PNP_SETUP", "INITIAL_SETUP" or
///         "VELLUM_SETUP", else 0
TESSEL_API int IGetWizardMode();

/// @return whether the viewer chose the high-contrast look
TESSEL_API bool IsHighContrastMode();
}
