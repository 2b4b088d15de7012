// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The styled widgets refuse what makes no sense, and survive it; what has the keys is said once.
#include "Fixtures.h"
#include "Folders.h"
#include "Paths.h"
#include "elm_flux.h"
#include "vconf.h"

#include <cmath>

namespace {

using TheStyledWidgets = WindowTest;

TEST_F(TheStyledWidgets, RefuseWhatMakesNoSenseAndStayAsTheyAre)
{
    Evas_Object* open = popup({"Yes", "No"});
    show(open);
    Evas_Object* content = elm_object_part_content_get(open, "elm.swallow.content");
    Evas_Object* layout = elm_flux_layout_add(open);
    Evas_Object* image = elm_flux_imagebox_add(open);
    const std::string picture = std::string(TesselUI::kThemeImageFolder) + "/tessel_img_m_popup.png";
    ASSERT_TRUE(elm_flux_imagebox_file_set(image, picture.c_str()));
    Evas_Object* foreign = elm_flux_textbox_add(m_window);
    Evas_Object* rectangle = evas_object_rectangle_add(evas_object_evas_get(m_window));
    const Evas_Object* card = edje_object_part_object_get(elm_layout_edje_get(open), "card");
    const auto before = toolkit::boxOf(card);
    const auto buttons = top()->buttons;
    const std::pair<const char*, std::function<bool()>> calls[] = {
        {"title of a button", [&] { return elm_flux_popup_title_set(button(open, 0), "t"); }},
        {"gap of a window", [&] { return elm_flux_layout_gap_set(m_window, 1); }},
        {"text of a rectangle", [&] { return elm_flux_textbox_text_set(rectangle, "t"); }},
        {"hint of a window", [&] { return elm_flux_object_tooltip_show(m_window); }},
        {"content of no size", [&] { return elm_flux_popup_content_set(open, foreign, -1, 10); }},
        {"content that holds it", [&] { return elm_flux_popup_content_set(open, m_window, 10, 10); }},
        {"a text as button", [&] { return elm_flux_popup_button_set(open, foreign, 0); }},
        {"another slot", [&] { return elm_flux_popup_button_set(open, button(open, 0), 2); }},
        {"slot below the first", [&] { return elm_flux_popup_button_set(open, button(open, 0), -1); }},
        {"focus on no slot", [&] { return elm_flux_popup_focused_button_set(open, 4); }},
        {"no item", [&] { return elm_flux_popup_item_remove(open, foreign); }},
        {"unknown style", [&] { return elm_flux_popup_style_set(open, Elm_Flux_Popup_Style(7)); }},
        {"unknown size", [&] { return elm_flux_textbox_size_set(content, Elm_Flux_Textbox_Size(12)); }},
        {"unknown colour", [&] { return elm_flux_textbox_color_preset_set(content, "CP_NoSuchColour"); }},
        {"unknown type", [&] { return elm_flux_layout_type_set(layout, Elm_Flux_Layout_Type(4)); }},
        {"gap below zero", [&] { return elm_flux_layout_gap_set(layout, -1); }},
        {"gap of no number", [&] { return elm_flux_layout_gap_set(layout, std::nan("")); }},
        {"item of no size", [&] { return elm_flux_layout_append(layout, foreign, -1, 10); }},
        {"item that holds it", [&] { return elm_flux_layout_append(layout, layout, 10, 10); }},
        {"no path", [&] { return elm_flux_imagebox_file_set(image, nullptr); }},
        {"no picture", [&] { return elm_flux_imagebox_file_set(image, "/no/such/picture.png"); }},
    };
    for (const auto& [name, succeeds] : calls) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(succeeds());
        toolkit::settle();
        EXPECT_EQ(toolkit::boxOf(card), before);
        EXPECT_EQ(elm_object_part_content_get(open, "elm.swallow.content"), content);
        EXPECT_EQ(top()->buttons, buttons);
        const char* shown = nullptr;
        elm_image_file_get(image, &shown, nullptr);
        EXPECT_STREQ(shown, picture.c_str());
    }
}

TEST_F(TheStyledWidgets, RefuseNullAndDeletedObjects)
{
    Evas_Object* one = popup({"Yes"});
    Evas_Object* layout = elm_flux_layout_add(one);
    Evas_Object* gone = elm_flux_button_add(one);
    evas_object_del(gone);
    toolkit::settle();
    EXPECT_FALSE(elm_flux_popup_button_set(one, gone, 0));
    EXPECT_NE(button(one, 0), nullptr) << "the button that was there is gone for nothing";

    const std::pair<const char*, std::function<bool(Evas_Object*)>> calls[] = {
        {"popup", [](auto* o) { return elm_flux_popup_add(o); }},
        {"button", [](auto* o) { return elm_flux_button_add(o); }},
        {"button's text", [](auto* o) { return elm_flux_button_text_set(o, "t"); }},
        {"layout", [](auto* o) { return elm_flux_layout_add(o); }},
        {"textbox", [](auto* o) { return elm_flux_textbox_add(o); }},
        {"imagebox", [](auto* o) { return elm_flux_imagebox_add(o); }},
        {"tooltip's target", [=](auto* o) { return elm_flux_object_tooltip_add(o, m_window); }},
        {"tooltip's parent", [=](auto* o) { return elm_flux_object_tooltip_add(one, o); }},
        {"content", [=](auto* o) { return elm_flux_popup_content_set(one, o, 10, 10); }},
        {"item", [=](auto* o) { return elm_flux_layout_append(layout, o, 10, 10); }},
        {"window", [](auto* o) { return elm_flux_manager_init(o); }},
    };
    for (const auto& [name, accepts] : calls) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(accepts(nullptr));
        EXPECT_FALSE(accepts(gone)) << "or a crash: so do the toolkit's own calls";
    }
}

} // namespace
