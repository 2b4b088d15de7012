// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Progressbar.h"
#include "elm_flux.h"
#include "flux/Look.h"
#include "flux/Motion.h"
#include "flux/Record.h"
#include "flux/Theme.h"

#include <optional>
#include <string_view>

namespace orbis::flux {

namespace {

/// Half a look of the toolkit: a step that is due by then is not put off until the next.
constexpr double kSlack = 0.01;

/// Between two steps where nothing is to move but calmly, seconds.
constexpr double kCalmStep = 1.0;

struct ProgressbarRecord {
    static constexpr const char* kKey = kProgressbarKey;

    ~ProgressbarRecord() { rest(); }

    void turn();
    void rest();

    Evas_Object* object = nullptr;
    bool calm = false;
    Ecore_Animator* animator = nullptr; ///< while it turns
    std::optional<Turning> turning {};
    double last = 0; ///< time of the step before
    Ecore_Timer* timer = nullptr; ///< in the animator's place while it turns calmly
};

void step(const ProgressbarRecord& record)
{
    elm_object_signal_emit(record.object, "flux,step", "");
}

Eina_Bool on_look(void* data)
{
    auto& record = *static_cast<ProgressbarRecord*>(data);
    const double now = ecore_loop_time_get();
    if (now - record.last < Turning::kStep - kSlack)
        return ECORE_CALLBACK_RENEW;
    record.last = now;
    step(record);
    return ECORE_CALLBACK_RENEW;
}

Eina_Bool on_time(void* data)
{
    step(*static_cast<ProgressbarRecord*>(data));
    return ECORE_CALLBACK_RENEW;
}

void ProgressbarRecord::turn()
{
    if (animator || timer)
        return;
    if (calm) {
        timer = ecore_timer_add(kCalmStep, on_time, this);
        return;
    }
    turning.emplace();
    last = ecore_loop_time_get();
    animator = ecore_animator_add(on_look, this);
}

/// A spinner that nobody sees must not wake the program.
void ProgressbarRecord::rest()
{
    if (animator)
        ecore_animator_del(animator);
    if (timer)
        ecore_timer_del(timer);
    animator = nullptr;
    timer = nullptr;
    turning.reset();
}

void on_shown(void* data, Evas*, Evas_Object*, void*)
{
    static_cast<ProgressbarRecord*>(data)->turn();
}

void on_hidden(void* data, Evas*, Evas_Object*, void*)
{
    static_cast<ProgressbarRecord*>(data)->rest();
}

void on_popupShown(void* data, Evas_Object* progressbar, const char*, const char*)
{
    if (evas_object_visible_get(progressbar))
        static_cast<ProgressbarRecord*>(data)->turn();
}

void on_popupHidden(void* data, Evas_Object*, const char*, const char*)
{
    static_cast<ProgressbarRecord*>(data)->rest();
}

void on_motion(void* data, Evas_Object*, const char* emission, const char*)
{
    auto* record = static_cast<ProgressbarRecord*>(data);
    const bool isTurning = record->animator || record->timer;
    record->calm = std::string_view {emission} == "flux,motion,off";
    if (!isTurning)
        return;
    record->rest();
    record->turn();
}

} // namespace

} // namespace orbis::flux

using namespace orbis::flux;

Evas_Object* elm_flux_progressbar_add(Evas_Object* parent)
{
    Evas_Object* progressbar = addThemedLayout(parent, "progressbar", "5");
    if (!progressbar)
        return nullptr;
    auto* record = attachRecord<ProgressbarRecord>(progressbar);
    record->calm = isCalm();
    evas_object_event_callback_add(progressbar, EVAS_CALLBACK_SHOW, on_shown, record);
    evas_object_event_callback_add(progressbar, EVAS_CALLBACK_HIDE, on_hidden, record);
    elm_object_signal_callback_add(progressbar, "flux,popup,shown", "", on_popupShown, record);
    elm_object_signal_callback_add(progressbar, "flux,popup,hidden", "", on_popupHidden, record);
    for (const char* emission : {"flux,motion,off", "flux,motion,on"})
        elm_object_signal_callback_add(progressbar, emission, "", on_motion, record);
    return progressbar;
}

Eina_Bool elm_flux_progressbar_style_set(Evas_Object* progressbar, Elm_Flux_Progressbar_Style style)
{
    return recordOf<ProgressbarRecord>(progressbar) && style == ELM_FLUX_PROGRESSBAR_STYLE_SMALL_SPINNER;
}
