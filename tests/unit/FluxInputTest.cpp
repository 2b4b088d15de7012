/// The styled widgets refuse what makes no sense, and survive it.
#include "Fixtures.h"
#include "elm_flux.h"

#include <cmath>
#include <functional>
#include <limits>
#include <unistd.h>

namespace {

using Objects = std::vector<Evas_Object*>;

template <typename Number>
Number number(int value)
{
    return static_cast<Number>(value);
}

class TheStyledWidgets : public WindowTest {
protected:
    /// @return one of each kind, on a popup
    Objects oneOfEach()
    {
        Evas_Object* popup = elm_flux_popup_add(m_window);
        return {popup, elm_flux_button_add(popup), elm_flux_layout_add(popup), elm_flux_textbox_add(popup),
            elm_flux_imagebox_add(popup), elm_flux_object_tooltip_add(popup, m_window)};
    }
};

/// Every call that takes a widget, with arguments that are fine. The index is that of the widget's kind.
struct Call {
    const char* name;
    size_t kind;
    std::function<Eina_Bool(Evas_Object* widget)> make;
};

/// @param window  where calls that take a second widget make it
std::vector<Call> callsOn(Evas_Object* window)
{
    return {
        {"popup_style", 0, [](auto* o) { return elm_flux_popup_style_set(o, ELM_FLUX_POPUP_STYLE_WIDE); }},
        {"popup_title", 0, [](auto* o) { return elm_flux_popup_title_set(o, nullptr); }},
        {"popup_content", 0,
            [=](auto* o) { return elm_flux_popup_content_set(o, elm_flux_textbox_add(window), 10, 10); }},
        {"popup_button", 0, [](auto* o) { return elm_flux_popup_button_set(o, nullptr, 1); }},
        {"popup_focused", 0, [](auto* o) { return elm_flux_popup_focused_button_set(o, 1); }},
        {"button_style", 1,
            [](auto* o) { return elm_flux_button_style_set(o, ELM_FLUX_BUTTON_STYLE_DEFAULT); }},
        {"button_text", 1, [](auto* o) { return elm_flux_button_text_set(o, nullptr); }},
        {"layout_type", 2, [](auto* o) { return elm_flux_layout_type_set(o, ELM_FLUX_LAYOUT_HORIZONTAL); }},
        {"layout_gap", 2, [](auto* o) { return elm_flux_layout_gap_set(o, 1); }},
        {"layout_padding", 2, [](auto* o) { return elm_flux_layout_padding_set(o, 1, 2, 3, 4); }},
        {"layout_append", 2,
            [=](auto* o) { return elm_flux_layout_append(o, elm_flux_textbox_add(window), 10, 0); }},
        {"textbox_text", 3, [](auto* o) { return elm_flux_textbox_text_set(o, nullptr); }},
        {"textbox_multiline", 3, [](auto* o) { return elm_flux_textbox_multiline_set(o, EINA_TRUE); }},
        {"textbox_size", 3,
            [](auto* o) { return elm_flux_textbox_size_set(o, ELM_FLUX_TEXTBOX_SIZE_DIGITS); }},
        {"textbox_align", 3,
            [](auto* o) { return elm_flux_textbox_align_set(o, ELM_FLUX_TEXTBOX_ALIGN_LEFT); }},
        {"textbox_rule", 3,
            [](auto* o) { return elm_flux_textbox_responsive_rule_set(o, ELM_FLUX_RESPONSIVE_SHRINK); }},
        {"textbox_color", 3, [](auto* o) { return elm_flux_textbox_color_preset_set(o, "CP_Info150"); }},
        {"imagebox_rule", 4,
            [](auto* o) { return elm_flux_imagebox_responsive_rule_set(o, ELM_FLUX_RESPONSIVE_KEEP); }},
        {"tooltip_size", 5, [](auto* o) { return elm_flux_object_tooltip_size_set(o, 10, 0); }},
        {"tooltip_style", 5,
            [](auto* o) { return elm_flux_object_tooltip_style_set(o, ELM_FLUX_TOOLTIP_STYLE_HINT); }},
        {"tooltip_text", 5, [](auto* o) { return elm_flux_object_tooltip_text_set(o, nullptr); }},
        {"tooltip_orient", 5,
            [](auto* o) { return elm_flux_object_tooltip_orient_set(o, ELM_FLUX_TOOLTIP_ORIENT_BELOW); }},
        {"tooltip_show", 5, [](auto* o) { return elm_flux_object_tooltip_show(o); }},
        {"tooltip_hide", 5, [](auto* o) { return elm_flux_object_tooltip_hide(o); }},
    };
}

TEST_F(TheStyledWidgets, RefuseNullDeletedAndForeignObjects)
{
    Evas_Object* rectangle = evas_object_rectangle_add(evas_object_evas_get(m_window));
    for (const Call& call : callsOn(m_window)) {
        SCOPED_TRACE(call.name);
        const Objects all = oneOfEach();
        EXPECT_TRUE(call.make(all[call.kind])) << "the widget itself is refused";
        for (size_t kind = 0; kind < all.size(); ++kind)
            EXPECT_EQ(call.make(all[kind]), kind == call.kind) << "kind " << kind;
        for (Evas_Object* foreign : {static_cast<Evas_Object*>(nullptr), m_window, rectangle})
            EXPECT_FALSE(call.make(foreign));
        evas_object_del(all[call.kind]);
        EXPECT_FALSE(call.make(all[call.kind])) << "deleted";
        toolkit::settle();
        EXPECT_FALSE(call.make(all[call.kind])) << "deleted and gone";
        evas_object_del(all[0]);
    }
}

TEST_F(TheStyledWidgets, RefuseUnknownNumbersAndSizesBelowZero)
{
    const Objects all = oneOfEach();
    Evas_Object* const popup = all[0];
    Evas_Object* const layout = all[2];
    Evas_Object* const textbox = all[3];
    Evas_Object* item = elm_flux_textbox_add(popup);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (int value : {-1, 4, 1000}) {
        EXPECT_FALSE(elm_flux_popup_style_set(popup, number<Elm_Flux_Popup_Style>(value)));
        EXPECT_FALSE(elm_flux_popup_button_set(popup, all[1], value));
        EXPECT_FALSE(elm_flux_popup_focused_button_set(popup, value));
        EXPECT_FALSE(elm_flux_button_style_set(all[1], number<Elm_Flux_Button_Style>(value)));
        EXPECT_FALSE(elm_flux_layout_type_set(layout, number<Elm_Flux_Layout_Type>(value)));
        EXPECT_FALSE(elm_flux_textbox_size_set(textbox, number<Elm_Flux_Textbox_Size>(value)));
        EXPECT_FALSE(elm_flux_textbox_align_set(textbox, number<Elm_Flux_Textbox_Align>(value)));
        EXPECT_FALSE(elm_flux_textbox_responsive_rule_set(textbox, number<Elm_Flux_Responsive_Rule>(value)));
        EXPECT_FALSE(elm_flux_imagebox_responsive_rule_set(all[4], number<Elm_Flux_Responsive_Rule>(value)));
        EXPECT_FALSE(elm_flux_object_tooltip_style_set(all[5], number<Elm_Flux_Tooltip_Style>(value)));
        if (value != ELM_FLUX_TOOLTIP_ORIENT_BELOW) {
            EXPECT_FALSE(elm_flux_object_tooltip_orient_set(all[5], number<Elm_Flux_Tooltip_Orient>(value)));
        }
    }
    EXPECT_FALSE(elm_flux_popup_content_set(popup, item, -1, 10));
    EXPECT_FALSE(elm_flux_popup_content_set(popup, item, 10, -1));
    EXPECT_FALSE(elm_flux_layout_append(layout, item, -1, 10));
    EXPECT_FALSE(elm_flux_layout_append(layout, layout, 10, 10));
    EXPECT_FALSE(elm_flux_object_tooltip_size_set(all[5], 10, -1));
    for (double units : {-1.0, nan}) {
        EXPECT_FALSE(elm_flux_layout_gap_set(layout, units));
        EXPECT_FALSE(elm_flux_layout_padding_set(layout, 0, 0, 0, units));
    }
    EXPECT_FALSE(elm_flux_textbox_color_preset_set(textbox, "CP_NoSuchColour"));
    EXPECT_FALSE(elm_flux_textbox_color_preset_set(textbox, nullptr));
    EXPECT_FALSE(elm_flux_imagebox_file_set(all[4], nullptr));
    EXPECT_FALSE(elm_flux_imagebox_file_set(all[4], "/no/such/picture.png"));
    EXPECT_FALSE(elm_flux_popup_item_remove(popup, item)) << "not in a slot";
    EXPECT_FALSE(elm_flux_popup_item_remove(popup, nullptr));
}

TEST_F(TheStyledWidgets, RefuseNullAndDeletedParentsAndParts)
{
    Evas_Object* popup = elm_flux_popup_add(m_window);
    Evas_Object* layout = elm_flux_layout_add(popup);
    Evas_Object* gone = elm_flux_textbox_add(popup);
    evas_object_del(gone);
    toolkit::settle();
    const std::pair<const char*, std::function<bool(Evas_Object*)>> calls[] = {
        {"popup", [](auto* o) { return elm_flux_popup_add(o); }},
        {"button", [](auto* o) { return elm_flux_button_add(o); }},
        {"layout", [](auto* o) { return elm_flux_layout_add(o); }},
        {"textbox", [](auto* o) { return elm_flux_textbox_add(o); }},
        {"imagebox", [](auto* o) { return elm_flux_imagebox_add(o); }},
        {"tooltip's target", [=](auto* o) { return elm_flux_object_tooltip_add(o, m_window); }},
        {"tooltip's parent", [=](auto* o) { return elm_flux_object_tooltip_add(popup, o); }},
        {"content", [=](auto* o) { return elm_flux_popup_content_set(popup, o, 10, 10); }},
        {"item", [=](auto* o) { return elm_flux_layout_append(layout, o, 10, 10); }},
        {"window", [](auto* o) { return elm_flux_manager_init(o); }},
        {"rotation", [](auto* o) { return elm_flux_manager_rotation_disable(o); }},
    };
    for (const auto& [name, accepts] : calls) {
        EXPECT_FALSE(accepts(nullptr)) << name;
        // In a process of its own: the toolkit's own calls crash on a deleted parent.
        EXPECT_EXIT(_exit(accepts(gone) ? 1 : 0), testing::ExitedWithCode(0), "") << name;
    }
    EXPECT_FALSE(elm_flux_manager_init(popup)) << "no window";
}

TEST_F(TheStyledWidgets, RefuseADeletedButtonForASlot)
{
    Evas_Object* one = popup({"Yes"});
    Evas_Object* gone = elm_flux_button_add(one);
    evas_object_del(gone);
    toolkit::settle();
    EXPECT_FALSE(elm_flux_popup_button_set(one, gone, 1));
    EXPECT_EQ(button(one, 1), nullptr);
    EXPECT_FALSE(elm_flux_popup_button_set(one, gone, 0));
    EXPECT_NE(button(one, 0), nullptr) << "the button that was there is gone for nothing";
}

TEST_F(TheStyledWidgets, TurnUnitsIntoPixels)
{
    EXPECT_EQ(elm_flux_unit_to_pixel(101), 808);
    EXPECT_EQ(elm_flux_unit_to_pixel(0), 0);
    EXPECT_EQ(elm_flux_unit_to_pixel(0.1), 1) << "rounded";
    EXPECT_EQ(elm_flux_unit_to_pixel(0.06), 0);
    elm_config_scale_set(2.0);
    EXPECT_EQ(elm_flux_unit_to_pixel(101), 1616);
    elm_config_scale_set(1.0);
    EXPECT_EQ(elm_flux_unit_to_pixel(std::nan("")), 0);
    EXPECT_GT(elm_flux_unit_to_pixel(HUGE_VAL), 0);
    EXPECT_LT(elm_flux_unit_to_pixel(-1e300), 0);
}

} // namespace
