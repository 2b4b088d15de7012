#include "elm_flux.h"
#include "flux/Motion.h"
#include "flux/Record.h"
#include "flux/Theme.h"

#include <optional>

namespace orbis::flux {

namespace {

/// Half a look of the toolkit: a step that is due by then is not put off until the next.
constexpr double kSlack = 0.01;

struct ProgressbarRecord {
    static constexpr const char* kKey = "orbis.flux.progressbar";

    ~ProgressbarRecord() { rest(); }

    void turn();
    void rest();

    Evas_Object* object = nullptr;
    bool contrast = false; ///< high contrast has no motion
    Ecore_Animator* animator = nullptr; ///< while it turns
    std::optional<Turning> turning {};
    double last = 0; ///< time of the step before
};

Eina_Bool on_look(void* data)
{
    auto& record = *static_cast<ProgressbarRecord*>(data);
    const double now = ecore_loop_time_get();
    if (now - record.last < Turning::kStep - kSlack)
        return ECORE_CALLBACK_RENEW;
    record.last = now;
    elm_object_signal_emit(record.object, "flux,step", "");
    return ECORE_CALLBACK_RENEW;
}

void ProgressbarRecord::turn()
{
    if (contrast || animator)
        return;
    turning.emplace();
    last = ecore_loop_time_get();
    animator = ecore_animator_add(on_look, this);
}

/// A spinner that nobody sees must not wake the program.
void ProgressbarRecord::rest()
{
    if (animator)
        ecore_animator_del(animator);
    animator = nullptr;
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

void on_contrast(void* data, Evas_Object*, const char*, const char*)
{
    auto* record = static_cast<ProgressbarRecord*>(data);
    record->contrast = true;
    record->rest();
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
    record->contrast = highContrast();
    evas_object_event_callback_add(progressbar, EVAS_CALLBACK_SHOW, on_shown, record);
    evas_object_event_callback_add(progressbar, EVAS_CALLBACK_HIDE, on_hidden, record);
    elm_object_signal_callback_add(progressbar, "flux,popup,shown", "", on_popupShown, record);
    elm_object_signal_callback_add(progressbar, "flux,popup,hidden", "", on_popupHidden, record);
    elm_object_signal_callback_add(progressbar, "HC", "", on_contrast, record);
    return progressbar;
}

Eina_Bool elm_flux_progressbar_style_set(Evas_Object* progressbar, Elm_Flux_Progressbar_Style style)
{
    return recordOf<ProgressbarRecord>(progressbar) && style == ELM_FLUX_PROGRESSBAR_STYLE_SMALL_SPINNER;
}
