// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Countdown.h"

#include "flux/WindowHost.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>

namespace orbis::flux {

namespace {

constexpr const char* kSignals = "countdown,*";

/// The theme is told a number of them, below 0 where lines run from right to left.
constexpr int64_t kParts = 1000;

/// @return the number at @p text, which is moved behind it; -1 when there is none
int64_t takeNumber(const char*& text)
{
    int number = -1;
    const auto result = std::from_chars(text, text + strlen(text), number);
    text = result.ptr;
    return result.ec == std::errc() ? number : -1;
}

void on_countdown(void* data, Evas_Object* popup, const char* emission, const char*)
{
    const auto& record = *static_cast<PopupRecord*>(data);
    const char* rest = strchr(emission, ',') + 1;
    const int64_t left = takeNumber(rest);
    if (left < 0 || *rest != ',')
        return;
    ++rest;
    const int64_t whole = takeNumber(rest);
    if (whole <= 0 || *rest != '\0')
        return;
    // One that has only just come up is being read out as it is.
    if (WindowHost* host = WindowHost::of(record.window); host && left < whole)
        host->givesUp(popup, static_cast<int>(left));
    const auto parts = static_cast<int>(std::min(left, whole) * kParts / whole);
    Edje_Message_Int message {elm_object_mirrored_get(record.object) ? -parts : parts};
    edje_object_message_send(elm_layout_edje_get(popup), EDJE_MESSAGE_INT, 0, &message);
    edje_object_message_signal_process(elm_layout_edje_get(popup));
}

} // namespace

void followCountdown(PopupRecord& record)
{
    elm_object_signal_callback_add(record.object, kSignals, "", on_countdown, &record);
}

} // namespace orbis::flux
