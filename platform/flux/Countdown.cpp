// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Countdown.h"

#include "flux/FocusStack.h"
#include "flux/Outline.h"
#include "flux/WindowHost.h"
#include "flux/WindowSystem.h"

#include <Ecore_Evas.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

namespace orbis::flux {

namespace {

constexpr std::string_view kSignal = "countdown,";
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
    auto& record = *static_cast<PopupRecord*>(data);
    const char* rest = strchr(emission, ',') + 1;
    const int64_t left = takeNumber(rest);
    if (left < 0 || *rest != ',')
        return;
    ++rest;
    const int64_t whole = takeNumber(rest);
    if (whole <= 0 || *rest != '\0')
        return;
    record.isTimeMoved = left < whole;
    // One that has only just come up is being read out as it is.
    if (WindowHost* host = WindowHost::of(record.window); host && left < whole)
        host->givesUp(popup, static_cast<int>(left));
    const auto parts = static_cast<int>(std::min(left, whole) * kParts / whole);
    Edje_Message_Int message {elm_object_mirrored_get(record.object) ? -parts : parts};
    edje_object_message_send(elm_layout_edje_get(popup), EDJE_MESSAGE_INT, 0, &message);
    edje_object_message_signal_process(elm_layout_edje_get(popup));
}

/// @return where a part of the popup is on the window; empty while it is not shown
Area areaOf(const Evas_Object* edje, const char* part)
{
    const Evas_Object* object = edje_object_part_object_get(edje, part);
    return object && evas_object_visible_get(object) ? placeOf(object) : Area {};
}

/// What the line has given up, and a part of the same size that it gave up before.
struct Step {
    Area gone;
    Area like; ///< empty when there is none
};

Step stepOf(const Evas_Object* edje, const Area& before)
{
    const Area now = areaOf(edje, "time_line");
    const Area whole = areaOf(edje, "hairline");
    if (now.isEmpty() || now.top != before.top || now.bottom != before.bottom)
        return {};
    Step step {now, now};
    if (now.left == before.left && now.right < before.right) {
        step.gone.left = now.right;
        step.gone.right = before.right;
        step.like.left = before.right;
        step.like.right = before.right + before.right - now.right;
    } else if (now.right == before.right && now.left > before.left) {
        step.gone.left = before.left;
        step.gone.right = now.left;
        step.like.right = before.left;
        step.like.left = before.left - (now.left - before.left);
    } else {
        return {};
    }
    if (step.like.left < whole.left || step.like.right > whole.right)
        step.like = {};
    return step;
}

/// @return whether nothing but the popup is to be seen there
bool isBare(const Evas_Object* popup, const Area& part)
{
    if (FocusStack::instance().top() != popup)
        return false;
    for (const Evas_Object* above = evas_object_above_get(popup); above;
         above = evas_object_above_get(above)) {
        if (evas_object_visible_get(above) && !part.cutTo(placeOf(above)).isEmpty())
            return false;
    }
    return true;
}

} // namespace

void followCountdown(PopupRecord& record)
{
    elm_object_signal_callback_add(record.object, kSignals, "", on_countdown, &record);
}

void drawCountdown(Evas_Object* popup, const char* emission)
{
    if (!emission || std::string_view {emission}.substr(0, kSignal.size()) != kSignal
        || !recordOf<PopupRecord>(popup))
        return;
    Evas* canvas = evas_object_evas_get(popup);
    Evas_Object* edje = elm_layout_edje_get(popup);
    const Area before = areaOf(edje, "time_line");
    const bool isDrawn = !evas_changed_get(canvas); // nothing but the line will have changed
    edje_object_message_signal_process(edje); // the signal
    edje_object_message_signal_process(edje); // and what it told the theme
    auto* record = recordOf<PopupRecord>(popup);
    if (!record || !std::exchange(record->isTimeMoved, false))
        return;
    // A window that has a shape instead of transparency is more than its picture.
    const bool isPlain = isX11(record->window) && ecore_evas_alpha_get(ecore_evas_ecore_evas_get(canvas));
    if (!isPlain || !evas_object_visible_get(record->window))
        return;
    const Step step = stepOf(edje, before);
    if (!isDrawn || step.like.isEmpty() || !isBare(popup, step.gone.with(step.like))) {
        evas_render(canvas);
        return;
    }
    evas_norender(canvas);
    copyWithin(record->window, step.like, step.gone);
}

} // namespace orbis::flux
