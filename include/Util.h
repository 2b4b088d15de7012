// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Set-up state in the settings store, and text helpers of the popups.
#pragma once

#include <Elementary.h>

#include <string>

namespace TesselUI {

/// Pages of the first-run wizard; 1 and 2 have no page.
enum WIZRD_PAGE {
    WIZRD_PAGE_NETWORK = 0,
    WIZRD_PAGE_TERMS = 3,
    WIZRD_PAGE_SSO = 4,
};

/// Menu applications that run a part of the set-up.
enum MENU_APP_INDEX {
    MENU_APP_NETWORK_SETUP = 0,
    MENU_APP_SSO_ALONE_SETUP = 1,
};

/// Static operations; nothing is cached, each asks the settings store afresh. Main loop only.
class TSUtil {
public:
    TSUtil();

    /// Marks the set-up as stopped, with @p setOobStatus the out-of-box status as well.
    static void StopTessel(bool setOobStatus);

    /// Marks the set-up as stopped after @p seconds; a stop that is already pending stays as it is.
    static void SetStopTesselTimer(int seconds);
    static Eina_Bool StopTesselTimerFunc(void* data);

    static void SetOOBStatus(int status);

    /// Both are false when the store does not tell; an unknown value matches the empty text only.
    static bool IsPageDisplayed(WIZRD_PAGE page);
    static bool IsAppRunning(MENU_APP_INDEX app);

    /// @return whether the first-run wizard runs the set-up; false when nobody knows
    static bool IsWizardMode();

    /// Puts direction marks around a name so that it keeps its own direction inside a sentence.
    /// @param text  borrowed, nullable
    /// @return a copy of at most 254 bytes that the caller frees; null for null
    static char* AddLTRMarker(char* text);

    static bool m_StartsWith(const char* prefix, const char* text);

    /// @return whether the language of the screen is written from right to left
    static bool m_IsReveseOSD();

    /// @param parent  any object of the canvas to measure on
    /// @param style   text block style, for instance "DEFAULT='font_size=28 wrap=word'"
    /// @param text    markup
    /// @param width   pixels
    /// @return the number of lines that hold something; 0 for an empty text
    static int m_GetTextNumLines(const Eo* parent, const char* style, const char* text, int width);

    /// @return the TV's name as phones see it, or ""
    static std::string GetBLETVName();

    static std::string m_vconfTesselStartVconf;
    static std::string m_vconfOOBEStatus;
    static Ecore_Timer* m_StopTesselTimer; ///< the pending stop, null when none
};

extern TSUtil* instance; ///< the object made last

/// @param text  nullable, as only it is
/// @return a copy of @p text between the two others, cut to kMarkedNameSize, which the caller frees; or null
char* enclosed(const char* before, const char* text, const char* after);

} // namespace TesselUI
