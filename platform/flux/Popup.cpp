#include "flux/Popup.h"

#include "flux/Button.h"
#include "flux/FocusStack.h"
#include "flux/Guard.h"
#include "flux/Manager.h"
#include "flux/Markup.h"
#include "flux/Record.h"
#include "flux/Theme.h"
#include "flux/Widget.h"

#include <algorithm>
#include <string>

namespace orbis::flux {

namespace {

constexpr const char* kContentPart = "elm.swallow.content";
constexpr const char* kSizePart = "flux.swallow.size";
constexpr const char* kButtonsPart = "elm.swallow.buttons";
constexpr const char* kTitlePart = "title,text";

// Layout units.
constexpr double kButtonHeight = 10.0;
constexpr double kButtonGap = 3.0;
constexpr double kSingleButtonWidth = 44.0;

/// While a popup loses the focus, the toolkit passes it through the other button: that does not count.
void on_buttonFocused(void* data, Evas_Object* button, void*)
{
    auto& record = *static_cast<PopupRecord*>(data);
    Evas_Object* top = FocusStack::instance().top();
    if (!top || top == record.object)
        record.lastFocus = button;
}

void on_buttonDeleted(void* data, Evas*, Evas_Object* button, void*);

void forgetButton(PopupRecord& record, int slot)
{
    Evas_Object* button = record.buttons[slot];
    if (!button)
        return;
    evas_object_event_callback_del_full(button, EVAS_CALLBACK_DEL, on_buttonDeleted, &record);
    evas_object_smart_callback_del_full(button, "focused", on_buttonFocused, &record);
    record.buttons[slot] = nullptr;
    if (record.lastFocus == button)
        record.lastFocus = nullptr;
}

int slotOf(const PopupRecord& record, const Evas_Object* button)
{
    const auto found = std::find(record.buttons.begin(), record.buttons.end(), button);
    return button && found != record.buttons.end() ? static_cast<int>(found - record.buttons.begin()) : -1;
}

bool isEmpty(const PopupRecord& record)
{
    return std::all_of(record.buttons.begin(), record.buttons.end(), [](auto* button) { return !button; });
}

/// One button has a width of its own; two share the content's width.
void arrangeButtons(PopupRecord& record)
{
    const auto count = std::count_if(record.buttons.begin(), record.buttons.end(), [](auto* b) { return b; });
    const int gap = elm_flux_unit_to_pixel(kButtonGap);
    const int single = elm_flux_unit_to_pixel(kSingleButtonWidth);
    const int width = count > 1 ? std::max((record.contentWidth - gap) / 2, single / 2) : single;
    elm_box_unpack_all(record.row);
    for (Evas_Object* button : record.buttons) {
        if (!button)
            continue;
        evas_object_size_hint_min_set(button, width, elm_flux_unit_to_pixel(kButtonHeight));
        evas_object_size_hint_max_set(button, width, elm_flux_unit_to_pixel(kButtonHeight));
        elm_box_pack_end(record.row, button);
    }
}

void on_focusJob(void* data)
{
    auto& record = *static_cast<PopupRecord*>(data);
    record.focusJob = nullptr;
    if (FocusStack::instance().top() == record.object)
        focusPopup(record.object);
}

void on_buttonDeleted(void* data, Evas*, Evas_Object* button, void*)
{
    auto& record = *static_cast<PopupRecord*>(data);
    const int slot = slotOf(record, button);
    if (slot < 0)
        return;
    forgetButton(record, slot);
    arrangeButtons(record);
    // The toolkit leaves the keys with nobody; they go to the other button once this one is gone.
    if (!isEmpty(record) && !record.focusJob)
        record.focusJob = ecore_job_add(on_focusJob, &record);
}

void fitToWindow(Evas_Object* popup, Evas_Object* window)
{
    int width = 0;
    int height = 0;
    evas_object_geometry_get(window, nullptr, nullptr, &width, &height);
    evas_object_geometry_set(popup, 0, 0, width, height);
}

void on_windowResized(void* data, Evas*, Evas_Object* window, void*)
{
    fitToWindow(static_cast<Evas_Object*>(data), window);
}

/// What moves in the content is not told by the toolkit that its popup comes and goes.
void tellContent(const Evas_Object* popup, const char* emission)
{
    if (Evas_Object* content = elm_layout_content_get(popup, kContentPart))
        elm_object_signal_emit(content, emission, "");
}

void on_popupShown(void* data, Evas*, Evas_Object* popup, void*)
{
    fitToWindow(popup, static_cast<PopupRecord*>(data)->window);
    evas_object_raise(popup);
    FocusStack::instance().push(popup);
    tellContent(popup, "flux,popup,shown");
}

void on_popupHidden(void*, Evas*, Evas_Object* popup, void*)
{
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

Evas_Object* addButtonRow(Evas_Object* popup)
{
    Evas_Object* row = elm_box_add(popup);
    elm_box_horizontal_set(row, EINA_TRUE);
    elm_box_align_set(row, 0.5, 0.5);
    elm_box_padding_set(row, elm_flux_unit_to_pixel(kButtonGap), 0);
    elm_object_part_content_set(popup, kButtonsPart, row);
    return row;
}

} // namespace

PopupRecord::~PopupRecord()
{
    if (focusJob)
        ecore_job_del(focusJob);
    FocusStack::instance().remove(object);
    if (Manager* manager = Manager::of(window))
        manager->popupGone();
    for (int slot = 0; slot < ELM_FLUX_POPUP_BUTTONS; ++slot)
        forgetButton(*this, slot);
    evas_object_event_callback_del_full(window, EVAS_CALLBACK_RESIZE, on_windowResized, object);
}

void focusPopup(Evas_Object* popup)
{
    auto* record = recordOf<PopupRecord>(popup);
    if (!record)
        return;
    Evas_Object* target = record->lastFocus ? record->lastFocus : record->buttons[record->focusedSlot];
    for (Evas_Object* button : record->buttons) {
        if (!target)
            target = button;
    }
    if (target)
        elm_object_focus_set(target, EINA_TRUE);
}

} // namespace orbis::flux

using namespace orbis::flux;

Evas_Object* elm_flux_popup_add(Evas_Object* parent)
{
    Evas_Object* window = isUsable(parent) ? elm_object_top_widget_get(parent) : nullptr;
    if (Manager* manager = Manager::of(window))
        manager->ensureScale();
    Evas_Object* popup = addThemedLayout(window, "popup", "0");
    if (!popup)
        return nullptr;
    auto* record = attachRecord<PopupRecord>(popup);
    record->window = window;
    record->size = addSize(popup);
    record->row = addButtonRow(popup);
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
    if (!elm_layout_theme_set(popup, "flux", "popup", std::to_string(style).c_str()))
        return EINA_FALSE;
    record->style = style;
    applyContrast(popup);
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
    evas_object_size_hint_min_set(record->size, width_px, height_px);
    if (elm_layout_content_get(popup, kContentPart) != content
        && !elm_layout_content_set(popup, kContentPart, content))
        return EINA_FALSE;
    record->contentWidth = width_px;
    arrangeButtons(*record);
    return EINA_TRUE;
}

Eina_Bool elm_flux_popup_button_set(Evas_Object* popup, Evas_Object* button, int slot)
{
    auto* record = recordOf<PopupRecord>(popup);
    if (!record || slot < 0 || slot >= ELM_FLUX_POPUP_BUTTONS)
        return EINA_FALSE;
    if (button && (!recordOf<ButtonRecord>(button) || !canHold(popup, button)))
        return EINA_FALSE;
    Evas_Object* former = record->buttons[slot];
    if (former == button)
        return EINA_TRUE;
    if (const int held = slotOf(*record, button); held >= 0)
        forgetButton(*record, held);
    forgetButton(*record, slot);
    evas_object_del(former);
    record->buttons[slot] = button;
    if (button) {
        evas_object_event_callback_add(button, EVAS_CALLBACK_DEL, on_buttonDeleted, record);
        evas_object_smart_callback_add(button, "focused", on_buttonFocused, record);
        evas_object_show(button);
        if (FocusStack::instance().top() == popup)
            elm_object_tree_focus_allow_set(popup, EINA_TRUE);
    }
    arrangeButtons(*record);
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
    if (isEmpty(*record))
        elm_object_tree_focus_allow_set(popup, EINA_FALSE);
    arrangeButtons(*record);
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
