// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Button.h"
#include "elm_flux.h"
#include "flux/Fitting.h"
#include "flux/ForgottenMemory.h"
#include "flux/Guard.h"
#include "flux/Look.h"
#include "flux/Markup.h"
#include "flux/Motion.h"
#include "flux/Record.h"
#include "flux/Theme.h"
#include "flux/Widget.h"
#include "flux/WindowHost.h"

namespace orbis::flux {

namespace {

constexpr const char* kTextPart = "elm.text";

void fitLabel(Evas_Object* button)
{
    fitLine(button, kTextPart);
}

void on_focused(void*, Evas_Object* button, void*)
{
    moveSmoothly();
    if (WindowHost* host = WindowHost::of(elm_object_top_widget_get(button)))
        host->focusMoved();
}

void on_unfocused(void*, Evas_Object* button, void*)
{
    if (WindowHost* host = WindowHost::of(elm_object_top_widget_get(button)))
        host->focusLeft();
}

/// Runs before the application's own handlers. What waits behind this press was made before the viewer saw
/// what came of it.
void on_clicked(void*, Evas_Object* button, void*)
{
    if (WindowHost* host = WindowHost::of(elm_object_top_widget_get(button)))
        host->pictureChanges();
}

} // namespace

} // namespace orbis::flux

using namespace orbis::flux;

Evas_Object* elm_flux_button_add(Evas_Object* parent)
{
    if (!isUsable(parent))
        return nullptr;
    ensureTheme();
    Evas_Object* button = elm_button_add(parent);
    if (!button)
        return nullptr;
    freeWithGroup(elm_layout_edje_get(button));
    attachRecord<ButtonRecord>(button);
    elm_object_style_set(button, "flux");
    keepDirectionOf(parent, button);
    applyLook(button);
    if (textScale() > 1.0)
        elm_object_scale_set(button, cardScale());
    applyLanguage(button, kTextPart);
    lookBeforePictures(button, fitLabel);
    evas_object_smart_callback_priority_add(
        button, "clicked", EVAS_CALLBACK_PRIORITY_BEFORE, on_clicked, nullptr);
    evas_object_smart_callback_add(button, "focused", on_focused, nullptr);
    evas_object_smart_callback_add(button, "unfocused", on_unfocused, nullptr);
    return button;
}

Eina_Bool elm_flux_button_style_set(Evas_Object* button, Elm_Flux_Button_Style style)
{
    return recordOf<ButtonRecord>(button) && style == ELM_FLUX_BUTTON_STYLE_DEFAULT;
}

Eina_Bool elm_flux_button_text_set(Evas_Object* button, const char* text)
{
    if (!recordOf<ButtonRecord>(button))
        return EINA_FALSE;
    return guarded([&]() -> Eina_Bool {
        elm_object_text_set(button, displayMarkup(text ? text : "").c_str());
        return EINA_TRUE;
    });
}
