#include "elm_flux.h"
#include "flux/Record.h"
#include "flux/Theme.h"

namespace orbis::flux {

namespace {

struct ProgressbarRecord {
    static constexpr const char* kKey = "orbis.flux.progressbar";
    Evas_Object* object = nullptr;
};

void on_shown(void*, Evas*, Evas_Object* progressbar, void*)
{
    elm_object_signal_emit(progressbar, "flux,spin", "");
}

void on_popupShown(void*, Evas_Object* progressbar, const char*, const char*)
{
    if (evas_object_visible_get(progressbar))
        on_shown(nullptr, nullptr, progressbar, nullptr);
}

/// A spinner that nobody sees must not wake the program.
void on_hidden(void*, Evas*, Evas_Object* progressbar, void*)
{
    elm_object_signal_emit(progressbar, "flux,stop", "");
}

} // namespace

} // namespace orbis::flux

using namespace orbis::flux;

Evas_Object* elm_flux_progressbar_add(Evas_Object* parent)
{
    Evas_Object* progressbar = addThemedLayout(parent, "progressbar", "5");
    if (!progressbar)
        return nullptr;
    attachRecord<ProgressbarRecord>(progressbar);
    evas_object_event_callback_add(progressbar, EVAS_CALLBACK_SHOW, on_shown, nullptr);
    evas_object_event_callback_add(progressbar, EVAS_CALLBACK_HIDE, on_hidden, nullptr);
    elm_object_signal_callback_add(progressbar, "flux,popup,shown", "", on_popupShown, nullptr);
    return progressbar;
}

Eina_Bool elm_flux_progressbar_style_set(Evas_Object* progressbar, Elm_Flux_Progressbar_Style style)
{
    return recordOf<ProgressbarRecord>(progressbar) && style == ELM_FLUX_PROGRESSBAR_STYLE_SMALL_SPINNER;
}
