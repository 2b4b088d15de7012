// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Button.h"
#include "flux/Countdown.h"
#include "flux/Fitting.h"
#include "flux/FocusStack.h"
#include "flux/Guard.h"
#include "flux/Look.h"
#include "flux/Markup.h"
#include "flux/PopupButtons.h"
#include "flux/PopupRecord.h"
#include "flux/Record.h"
#include "flux/Theme.h"
#include "flux/Unit.h"
#include "flux/Widget.h"
#include "flux/WindowHost.h"

#include <string>

namespace orbis::flux {

namespace {

constexpr const char* kContentPart = "elm.swallow.content";
constexpr const char* kSizePart = "flux.swallow.size";
constexpr const char* kTitlePart = "title,text";

void fitToWindow(Evas_Object* popup, Evas_Object* window)
{
    int width = 0;
    int height = 0;
    evas_object_geometry_get(window, nullptr, nullptr, &width, &height);
    evas_object_geometry_set(popup, 0, 0, width, height);
}

void applyCardLook(PopupRecord& record)
{
    applyLook(record.object);
    applyLanguage(record.object, kTitlePart);
    record.textScale = textScale();
    if (record.textScale > 1.0)
        elm_object_scale_set(record.object, cardScale());
}

void fitTitle(Evas_Object* popup)
{
    fitLine(popup, kTitlePart);
}

void on_textChanged(void* data, Evas_Object*, const char*, const char*)
{
    growPopup(*static_cast<PopupRecord*>(data));
}

void on_windowResized(void* data, Evas*, Evas_Object* window, void*)
{
    auto* popup = static_cast<Evas_Object*>(data);
    fitToWindow(popup, window);
    growPopup(*recordOf<PopupRecord>(popup));
}

/// So the toolkit also tells that its scale is another one.
void on_themeChanged(void* data, Evas_Object*, void*)
{
    arrangePopup(*static_cast<PopupRecord*>(data));
}

/// What moves in the content is not told by the toolkit that its popup comes and goes.
void tellContent(const Evas_Object* popup, const char* emission)
{
    if (Evas_Object* content = elm_layout_content_get(popup, kContentPart))
        elm_object_signal_emit(content, emission, "");
}

void on_popupShown(void* data, Evas*, Evas_Object* popup, void*)
{
    auto& record = *static_cast<PopupRecord*>(data);
    fitToWindow(popup, record.window);
    coverBelow(record);
    growPopup(record);
    evas_object_raise(popup);
    FocusStack::instance().push(popup, focusPopup);
    tellContent(popup, "flux,popup,shown");
}

void on_popupHidden(void* data, Evas*, Evas_Object* popup, void*)
{
    static_cast<PopupRecord*>(data)->told = {};
    FocusStack::instance().remove(popup);
    tellContent(popup, "flux,popup,hidden");
}

/// The content's place has its size from this, because the toolkit overwrites size hints of widgets.
Evas_Object* addSize(Evas_Object* popup)
{
    Evas_Object* size = evas_object_rectangle_add(evas_object_evas_get(popup));
    evas_object_color_set(size, 0, 0, 0, 0);
    elm_object_part_content_set(popup, kSizePart, size);
    return size;
}

} // namespace

PopupRecord::~PopupRecord()
{
    if (focusJob)
        ecore_job_del(focusJob);
    FocusStack::instance().remove(object);
    if (WindowHost* host = WindowHost::of(window))
        host->popupGone();
    for (int slot = 0; slot < ELM_FLUX_POPUP_BUTTONS; ++slot)
        forgetButton(*this, slot);
    elm_box_layout_set(row, nullptr, nullptr, nullptr); // it outlives the record by a moment
    evas_object_event_callback_del_full(window, EVAS_CALLBACK_RESIZE, on_windowResized, object);
}

} // namespace orbis::flux

using namespace orbis::flux;

Evas_Object* elm_flux_popup_add(Evas_Object* parent)
{
    Evas_Object* window = isUsable(parent) ? elm_object_top_widget_get(parent) : nullptr;
    orbis::app::applyWaitingLanguage(); // the popup before this one may have gone in the same turn
    if (WindowHost* host = WindowHost::of(window))
        host->ensureScale();
    Evas_Object* popup = addThemedLayout(window, "popup", "0");
    if (!popup)
        return nullptr;
    keepDirection(popup, FocusStack::instance().top()); // what opens over another one reads as that does
    auto* record = attachRecord<PopupRecord>(popup);
    record->window = window;
    record->size = addSize(popup);
    applyCardLook(*record);
    addButtonRow(*record);
    followCountdown(*record);
    lookBeforePictures(popup, fitTitle);
    elm_object_signal_callback_add(popup, "flux,text,changed", "", on_textChanged, record);
    evas_object_smart_callback_add(popup, "theme,changed", on_themeChanged, record);
    evas_object_event_callback_add(popup, EVAS_CALLBACK_SHOW, on_popupShown, record);
    evas_object_event_callback_add(popup, EVAS_CALLBACK_HIDE, on_popupHidden, record);
    evas_object_event_callback_add(window, EVAS_CALLBACK_RESIZE, on_windowResized, popup);
    return popup;
}

Eina_Bool elm_flux_popup_style_set(Evas_Object* popup, Elm_Flux_Popup_Style style)
{
    auto* record = recordOf<PopupRecord>(popup);
    if (!record || (style != ELM_FLUX_POPUP_STYLE_DEFAULT && style != ELM_FLUX_POPUP_STYLE_WIDE))
        return EINA_FALSE;
    if (style == record->style) // to load its group again takes as long as to make a widget
        return EINA_TRUE;
    const std::string name = std::to_string(style);
    if (!hasThemeGroup("popup", name.c_str()) || !elm_layout_theme_set(popup, "flux", "popup", name.c_str()))
        return EINA_FALSE;
    record->style = style;
    applyCardLook(*record);
    if (evas_object_visible_get(popup)) // the group's own signal came before it was loaded
        elm_object_signal_emit(popup, "show", "");
    return EINA_TRUE;
}

Eina_Bool elm_flux_popup_title_set(Evas_Object* popup, const char* title)
{
    if (!recordOf<PopupRecord>(popup))
        return EINA_FALSE;
    return guarded(
        [&] { return elm_layout_text_set(popup, kTitlePart, displayMarkup(title ? title : "").c_str()); });
}

Eina_Bool elm_flux_popup_content_set(Evas_Object* popup, Evas_Object* content, int width_px, int height_px)
{
    auto* record = recordOf<PopupRecord>(popup);
    if (!record || !canHold(popup, content) || width_px < 0 || height_px < 0)
        return EINA_FALSE;
    // Asked first: what is there already must not go for a part that cannot take the new one.
    if (!edje_object_part_exists(elm_layout_edje_get(popup), kContentPart))
        return EINA_FALSE;
    if (elm_layout_content_get(popup, kContentPart) != content
        && !elm_layout_content_set(popup, kContentPart, content))
        return EINA_FALSE;
    record->contentWidth = unitsOf(width_px);
    record->contentHeight = unitsOf(height_px);
    arrangePopup(*record);
    return EINA_TRUE;
}

Eina_Bool elm_flux_popup_button_set(Evas_Object* popup, Evas_Object* button, int slot)
{
    auto* record = recordOf<PopupRecord>(popup);
    if (!record || slot < 0 || slot >= ELM_FLUX_POPUP_BUTTONS)
        return EINA_FALSE;
    const auto* wanted = recordOf<ButtonRecord>(button);
    if (button && (!wanted || !canHold(popup, button) || (wanted->popup && wanted->popup != popup)))
        return EINA_FALSE;
    Evas_Object* former = record->buttons[slot];
    if (former == button)
        return EINA_TRUE;
    forgetButton(*record, slot);
    evas_object_del(former);
    if (button) {
        takeButton(*record, button, slot);
        evas_object_show(button);
        if (FocusStack::instance().top() == popup)
            elm_object_tree_focus_allow_set(popup, EINA_TRUE);
    }
    arrangePopup(*record);
    return EINA_TRUE;
}

Eina_Bool elm_flux_popup_item_remove(Evas_Object* popup, Evas_Object* item)
{
    auto* record = recordOf<PopupRecord>(popup);
    const int slot = record ? slotOf(*record, item) : -1;
    if (slot < 0)
        return EINA_FALSE;
    forgetButton(*record, slot);
    // Or the toolkit looks for the next focus in a popup that has none to give, and complains in the log.
    if (hasNoButton(*record))
        elm_object_tree_focus_allow_set(popup, EINA_FALSE);
    arrangePopup(*record);
    evas_object_hide(item);
    return EINA_TRUE;
}

Eina_Bool elm_flux_popup_focused_button_set(Evas_Object* popup, int slot)
{
    auto* record = recordOf<PopupRecord>(popup);
    if (!record || slot < 0 || slot >= ELM_FLUX_POPUP_BUTTONS)
        return EINA_FALSE;
    record->focusedSlot = slot;
    record->lastFocus = record->buttons[slot];
    if (FocusStack::instance().top() == popup)
        focusPopup(popup);
    return EINA_TRUE;
}
