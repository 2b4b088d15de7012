/// The styled widgets refuse what makes no sense, and survive it.
#include "Fixtures.h"
#include "elm_flux.h"

#include <cmath>
#include <unistd.h>

namespace {

class TheStyledWidgets : public WindowTest { };

TEST_F(TheStyledWidgets, RefuseForeignObjectsUnknownNumbersAndSizesBelowZero)
{
    Evas_Object* one = popup({"Yes"});
    Evas_Object* layout = elm_flux_layout_add(one);
    Evas_Object* item = elm_flux_textbox_add(one);
    Evas_Object* image = elm_flux_imagebox_add(one);
    Evas_Object* rectangle = evas_object_rectangle_add(evas_object_evas_get(m_window));
    for (Evas_Object* foreign : {m_window, rectangle, button(one, 0)}) {
        EXPECT_FALSE(elm_flux_popup_title_set(foreign, "t"));
        EXPECT_FALSE(elm_flux_layout_gap_set(foreign, 1));
        EXPECT_FALSE(elm_flux_textbox_text_set(foreign, "t"));
        EXPECT_FALSE(elm_flux_object_tooltip_show(foreign));
    }
    for (int value : {-1, 4, 1000}) {
        EXPECT_FALSE(elm_flux_popup_button_set(one, button(one, 0), value));
        EXPECT_FALSE(elm_flux_popup_focused_button_set(one, value));
        EXPECT_FALSE(elm_flux_layout_type_set(layout, static_cast<Elm_Flux_Layout_Type>(value)));
    }
    EXPECT_FALSE(elm_flux_popup_content_set(one, item, 10, -1));
    EXPECT_FALSE(elm_flux_layout_append(layout, item, -1, 10));
    EXPECT_FALSE(elm_flux_layout_append(layout, layout, 10, 10)) << "into itself";
    for (double units : {-1.0, std::nan("")})
        EXPECT_FALSE(elm_flux_layout_gap_set(layout, units));
    EXPECT_FALSE(elm_flux_textbox_color_preset_set(item, "CP_NoSuchColour"));
    for (const char* file : {static_cast<const char*>(nullptr), "/no/such/picture.png"})
        EXPECT_FALSE(elm_flux_imagebox_file_set(image, file));
    EXPECT_FALSE(elm_flux_popup_item_remove(one, item)) << "not in a slot";
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
        EXPECT_FALSE(accepts(nullptr)) << name;
        // In a process of its own: the toolkit's own calls crash on a deleted parent.
        EXPECT_EXIT(_exit(accepts(gone) ? 1 : 0), testing::ExitedWithCode(0), "") << name;
    }
}

/// @return the path of a picture that was written for the test
std::string writePicture(const Evas_Object* window)
{
    const std::string path = std::string(getenv("ORBIS_RUNTIME_DIR")) + "/picture.png";
    Evas_Object* image = evas_object_image_filled_add(evas_object_evas_get(window));
    evas_object_image_size_set(image, 4, 4);
    evas_object_image_data_set(image, evas_object_image_data_get(image, EINA_TRUE));
    EXPECT_TRUE(evas_object_image_save(image, path.c_str(), nullptr, nullptr));
    evas_object_del(image);
    return path;
}

TEST_F(TheStyledWidgets, StayAsTheyAreWhenACallFails)
{
    Evas_Object* open = popup({"Yes", "No"});
    show(open);
    Evas_Object* content = elm_object_part_content_get(open, "elm.swallow.content");
    Evas_Object* image = elm_flux_imagebox_add(open);
    const std::string picture = writePicture(m_window);
    ASSERT_TRUE(elm_flux_imagebox_file_set(image, picture.c_str()));
    Evas_Object* foreign = elm_flux_textbox_add(m_window);
    const auto card = [&] {
        return toolkit::boxOf(edje_object_part_object_get(elm_layout_edje_get(open), "card"));
    };
    const auto before = card();
    const std::pair<const char*, std::function<bool()>> calls[] = {
        {"content of no size", [&] { return elm_flux_popup_content_set(open, foreign, -1, 10); }},
        {"content that holds it", [&] { return elm_flux_popup_content_set(open, m_window, 10, 10); }},
        {"a text as button", [&] { return elm_flux_popup_button_set(open, foreign, 0); }},
        {"another slot", [&] { return elm_flux_popup_button_set(open, button(open, 0), 2); }},
        {"unknown style", [&] { return elm_flux_popup_style_set(open, Elm_Flux_Popup_Style(7)); }},
        {"unknown size", [&] { return elm_flux_textbox_size_set(content, Elm_Flux_Textbox_Size(12)); }},
        {"no picture", [&] { return elm_flux_imagebox_file_set(image, "/no/such/picture.png"); }},
    };
    for (const auto& [name, succeeds] : calls) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(succeeds());
        toolkit::settle();
        EXPECT_EQ(card(), before);
        EXPECT_EQ(elm_object_part_content_get(open, "elm.swallow.content"), content);
        EXPECT_EQ(toolkit::labelsOf(*toolkit::topPopup(m_window)), (std::vector<std::string> {"Yes", "No"}));
        const char* shown = nullptr;
        elm_image_file_get(image, &shown, nullptr);
        EXPECT_STREQ(shown, picture.c_str());
    }
    unlink(picture.c_str());
}

} // namespace
