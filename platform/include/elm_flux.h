// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Styled widget set: the popups, buttons, layouts, texts, pictures and hint bubbles of the TV's look, and
/// the manager that gives the application's window its place on the screen.
///
/// Lengths that callers think in are layout units; elm_flux_unit_to_pixel() turns them into pixels. Every
/// widget belongs to its parent widget and goes with it, or earlier with evas_object_del(). Texts are
/// borrowed, UTF-8, and may carry the toolkit's markup. A call with a null, deleted or foreign object, an
/// unknown number or a negative size, or one that fails for another reason, changes nothing and returns
/// EINA_FALSE (or null). Sizes are pixels at the scale of the moment; what is up follows when the screen's
/// size changes. All calls come from the main loop's thread.
#ifndef ORBIS_ELM_FLUX_H
#define ORBIS_ELM_FLUX_H

#include <Elementary.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Manager -------------------------------------------------------------------------------------- */

/// Takes charge of @p win: gives it the screen's size, keeps it above other windows, makes lowering it take
/// it off the screen, keeps the keys inside the topmost popup, lets a held key act only once, drops presses
/// that were made before what they would act on had been drawn or after the loop's end was asked for, speaks
/// the focused widget when the screen reader is on, and shows or hides a dim layer on the window signals
/// "SetDim" and "SetNormal". These arrive only in a program that is linked with this library before the
/// toolkit's; otherwise an error in the log says so. One window a process; a second call for another window
/// moves to that one.
Eina_Bool elm_flux_manager_init(Evas_Object* win);

/// Undoes all of it. Safe without, or after, the window.
void elm_flux_manager_fini(void);

/// Keeps the window from following the device's rotation.
Eina_Bool elm_flux_manager_rotation_disable(Evas_Object* win);

/// Shows or hides the designers' grid, which is off at start.
void elm_flux_bg_grid_show(Eina_Bool show);

/// @param units  layout units: one is 8 pixels on a 1920x1080 screen, times the toolkit's scale
/// @return pixels, rounded to the nearest whole
int elm_flux_unit_to_pixel(double units);

/* ---- Popup ---------------------------------------------------------------------------------------- */

typedef enum {
    ELM_FLUX_POPUP_STYLE_DEFAULT = 0, ///< card of the content's width
    ELM_FLUX_POPUP_STYLE_WIDE = 1, ///< wide card, for guides with a picture
} Elm_Flux_Popup_Style;

/// Number of buttons a popup holds, in slots 0 and 1, in reading order.
#define ELM_FLUX_POPUP_BUTTONS 2

/// Makes a popup of the default style, hidden. It covers the whole of the window that @p parent is or
/// lies in, whatever the parent's own size, and lives as long as that window unless deleted earlier.
/// Showing it puts it on top and gives it the focus; hiding or deleting it gives the focus back to the popup
/// below. It keeps the direction it was made in, which is that of the popup it was made over or else the
/// language's; while a popup lives, a change of the language waits.
Evas_Object* elm_flux_popup_add(Evas_Object* parent);

Eina_Bool elm_flux_popup_style_set(Evas_Object* popup, Elm_Flux_Popup_Style style);

/// The title can be read back as the part "title,text".
Eina_Bool elm_flux_popup_title_set(Evas_Object* popup, const char* title);

/// Puts @p content on the card; content that was there before is deleted. The card is wider where its buttons
/// need it.
/// @param width_px,height_px  the content's size in pixels
Eina_Bool elm_flux_popup_content_set(Evas_Object* popup, Evas_Object* content, int width_px, int height_px);

/// Puts @p button into @p slot; a button that was there before is deleted. Null empties the slot. A button
/// that is in another popup is refused; one that is in the other slot moves.
Eina_Bool elm_flux_popup_button_set(Evas_Object* popup, Evas_Object* button, int slot);

/// Takes @p item (a button) off the popup without deleting it; it is hidden.
Eina_Bool elm_flux_popup_item_remove(Evas_Object* popup, Evas_Object* item);

/// Which button has the focus when the popup is shown, and at once when it is up. An empty slot may be named;
/// the other button then takes the focus.
Eina_Bool elm_flux_popup_focused_button_set(Evas_Object* popup, int slot);

/* ---- Button --------------------------------------------------------------------------------------- */

typedef enum {
    ELM_FLUX_BUTTON_STYLE_DEFAULT = 0,
} Elm_Flux_Button_Style;

/// An Elementary button of the TV's look: "clicked", "focused" and the rest are Elementary's own.
Evas_Object* elm_flux_button_add(Evas_Object* parent);
Eina_Bool elm_flux_button_style_set(Evas_Object* button, Elm_Flux_Button_Style style);
Eina_Bool elm_flux_button_text_set(Evas_Object* button, const char* text);

/* ---- Layout --------------------------------------------------------------------------------------- */

typedef enum {
    ELM_FLUX_LAYOUT_VERTICAL = 1, ///< stacks downward
    ELM_FLUX_LAYOUT_HORIZONTAL = 2, ///< a row in reading direction
} Elm_Flux_Layout_Type;

Evas_Object* elm_flux_layout_add(Evas_Object* parent);
Eina_Bool elm_flux_layout_type_set(Evas_Object* layout, Elm_Flux_Layout_Type type);

/// @param units  space between two items, layout units
Eina_Bool elm_flux_layout_gap_set(Evas_Object* layout, double units);

/// Space around the items, layout units.
Eina_Bool elm_flux_layout_padding_set(
    Evas_Object* layout, double left, double right, double top, double bottom);

/// Adds @p item behind those that are there, at this size in pixels, and shows it.
Eina_Bool elm_flux_layout_append(Evas_Object* layout, Evas_Object* item, int width_px, int height_px);

/* ---- Text box ------------------------------------------------------------------------------------- */

typedef enum {
    ELM_FLUX_TEXTBOX_SIZE_DIGITS = 8, ///< large, spaced figures
    ELM_FLUX_TEXTBOX_SIZE_BODY = 11, ///< 32 pixels at 1080 lines
    ELM_FLUX_TEXTBOX_SIZE_SECONDARY = 13, ///< 24 pixels at 1080 lines
} Elm_Flux_Textbox_Size;

typedef enum {
    ELM_FLUX_TEXTBOX_ALIGN_CENTER = 3,
    ELM_FLUX_TEXTBOX_ALIGN_LINE_CENTER = 8, ///< for a single line
    ELM_FLUX_TEXTBOX_ALIGN_LEFT = 10,
    ELM_FLUX_TEXTBOX_ALIGN_RIGHT = 11,
} Elm_Flux_Textbox_Align;

typedef enum {
    // What does not fit then is left out of the longest name in the text, with an ellipsis in its place.
    ELM_FLUX_RESPONSIVE_KEEP = 0, ///< keeps the size
    ELM_FLUX_RESPONSIVE_SHRINK = 1, ///< one line, which shrinks until it fits
    ELM_FLUX_RESPONSIVE_WRAP = 2, ///< wraps, inside a word where it must, then shrinks
} Elm_Flux_Responsive_Rule;

/// A text box of body size, one line, centred, that wraps where it may.
Evas_Object* elm_flux_textbox_add(Evas_Object* parent);

/// @param text  markup; null counts as ""
Eina_Bool elm_flux_textbox_text_set(Evas_Object* textbox, const char* text);
Eina_Bool elm_flux_textbox_multiline_set(Evas_Object* textbox, Eina_Bool multiline);
Eina_Bool elm_flux_textbox_size_set(Evas_Object* textbox, Elm_Flux_Textbox_Size size);
Eina_Bool elm_flux_textbox_align_set(Evas_Object* textbox, Elm_Flux_Textbox_Align align);
Eina_Bool elm_flux_textbox_responsive_rule_set(Evas_Object* textbox, Elm_Flux_Responsive_Rule rule);

/// @param preset  a colour preset of the theme, "CP_Info150" for instance; an unknown one is refused
Eina_Bool elm_flux_textbox_color_preset_set(Evas_Object* textbox, const char* preset);

/* ---- Image box ------------------------------------------------------------------------------------ */

/// A picture that keeps its proportions and shows nothing until it has a file.
Evas_Object* elm_flux_imagebox_add(Evas_Object* parent);

/// @return EINA_FALSE when the file cannot be loaded; the box then shows what it showed before
Eina_Bool elm_flux_imagebox_file_set(Evas_Object* imagebox, const char* path);
Eina_Bool elm_flux_imagebox_responsive_rule_set(Evas_Object* imagebox, Elm_Flux_Responsive_Rule rule);

/* ---- Progress indicator --------------------------------------------------------------------------- */

typedef enum {
    ELM_FLUX_PROGRESSBAR_STYLE_SMALL_SPINNER = 5,
} Elm_Flux_Progressbar_Style;

/// A small spinner that turns while it is visible.
Evas_Object* elm_flux_progressbar_add(Evas_Object* parent);
Eina_Bool elm_flux_progressbar_style_set(Evas_Object* progressbar, Elm_Flux_Progressbar_Style style);

/* ---- Hint bubble ---------------------------------------------------------------------------------- */

typedef enum {
    ELM_FLUX_TOOLTIP_STYLE_HINT = 2, ///< bubble with a tail
} Elm_Flux_Tooltip_Style;

typedef enum {
    ELM_FLUX_TOOLTIP_ORIENT_BELOW = 4, ///< below its target, moved up over it rather than over a text
} Elm_Flux_Tooltip_Orient;

/// Makes a hidden bubble that follows @p target; when the target goes first the bubble stays hidden.
/// @param parent  the window, or a widget in it
Evas_Object* elm_flux_object_tooltip_add(Evas_Object* target, Evas_Object* parent);
Eina_Bool elm_flux_object_tooltip_size_set(Evas_Object* tooltip, int width_px, int height_px);
Eina_Bool elm_flux_object_tooltip_style_set(Evas_Object* tooltip, Elm_Flux_Tooltip_Style style);
Eina_Bool elm_flux_object_tooltip_text_set(Evas_Object* tooltip, const char* text);
Eina_Bool elm_flux_object_tooltip_orient_set(Evas_Object* tooltip, Elm_Flux_Tooltip_Orient orient);
Eina_Bool elm_flux_object_tooltip_show(Evas_Object* tooltip);
Eina_Bool elm_flux_object_tooltip_hide(Evas_Object* tooltip);

#ifdef __cplusplus
}
#endif

#endif
