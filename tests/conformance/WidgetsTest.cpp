// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Where the styled widgets put things, what they take, and how the window leaves the screen.
#include "WidgetTest.h"
#include "elm_flux.h"

namespace {

using toolkit::Box;
using toolkit::boxOf;

/// @return layout units in pixels
int px(double units)
{
    return elm_flux_unit_to_pixel(units);
}

class AStyledLayout : public WidgetTest {
protected:
    void TearDown() override
    {
        elm_config_mirrored_set(EINA_FALSE);
        WidgetTest::TearDown();
    }

    /// A layout at 100,50 of this size in units, shown.
    Evas_Object* layout(Elm_Flux_Layout_Type type, double width, double height)
    {
        Evas_Object* layout = elm_flux_layout_add(m_window);
        EXPECT_TRUE(elm_flux_layout_type_set(layout, type));
        evas_object_geometry_set(layout, 100, 50, px(width), px(height));
        evas_object_show(layout);
        return layout;
    }
    /// Appends an item of this size in units.
    static Evas_Object* append(Evas_Object* layout, double width, double height)
    {
        Evas_Object* item = elm_flux_imagebox_add(layout);
        EXPECT_TRUE(elm_flux_layout_append(layout, item, px(width), px(height)));
        return item;
    }
};

TEST_F(AStyledLayout, FillsARowInReadingOrderAndAStackWithItsGapsAndPadding)
{
    for (bool mirrored : {false, true}) {
        elm_config_mirrored_set(mirrored);
        Evas_Object* row = layout(ELM_FLUX_LAYOUT_HORIZONTAL, 109, 10);
        elm_flux_layout_gap_set(row, 1);
        Evas_Object* first = append(row, 12, 10);
        Evas_Object* second = append(row, 96, 10);
        toolkit::settle();
        EXPECT_EQ(boxOf(first), (Box {100 + (mirrored ? px(97) : 0), 50, px(12), px(10)}));
        EXPECT_EQ(boxOf(second), (Box {100 + (mirrored ? 0 : px(13)), 50, px(96), px(10)}));
    }
    Evas_Object* stack = layout(ELM_FLUX_LAYOUT_VERTICAL, 101, 33);
    elm_flux_layout_gap_set(stack, 1);
    elm_flux_layout_padding_set(stack, 2, 4, 3, 0);
    Evas_Object* upper = append(stack, 101, 18);
    Evas_Object* lower = append(stack, 51, 14);
    toolkit::settle();
    EXPECT_EQ(boxOf(upper), (Box {100 + px(2), 50 + px(3), px(95), px(18)}));
    EXPECT_EQ(boxOf(lower).y, 50 + px(22));
    EXPECT_LE(boxOf(lower).y + boxOf(lower).height, 50 + px(33)) << "nothing leaves the layout";
    evas_object_del(upper);
    toolkit::settle();
    EXPECT_EQ(boxOf(lower).y, 50 + px(3)) << "the gap of a deleted item stays";
}

using ATooltip = WidgetTest;

TEST_F(ATooltip, FollowsItsTargetAndForgetsADeletedOne)
{
    Evas_Object* target = elm_flux_imagebox_add(m_window);
    evas_object_geometry_set(target, 500, 300, 200, 100);
    Evas_Object* former = elm_flux_object_tooltip_add(target, m_window);
    elm_flux_object_tooltip_show(former);
    evas_object_del(former); // does not listen to the target any more
    Evas_Object* bubble = elm_flux_object_tooltip_add(target, m_window);
    elm_flux_object_tooltip_style_set(bubble, ELM_FLUX_TOOLTIP_STYLE_HINT);
    elm_flux_object_tooltip_orient_set(bubble, ELM_FLUX_TOOLTIP_ORIENT_BELOW);
    elm_flux_object_tooltip_size_set(bubble, 328, 72);
    EXPECT_FALSE(evas_object_visible_get(bubble));
    EXPECT_TRUE(elm_flux_object_tooltip_show(bubble));
    const Box first = boxOf(bubble);
    EXPECT_EQ(first.width, 328);
    EXPECT_EQ(first.x + first.width / 2, 600) << "the middle of its target";
    evas_object_move(target, 700, 100);
    EXPECT_EQ(boxOf(bubble), (Box {first.x + 200, first.y - 200, first.width, first.height}));
    evas_object_del(target);
    toolkit::settle();
    EXPECT_FALSE(evas_object_visible_get(bubble));
    EXPECT_FALSE(elm_flux_object_tooltip_show(bubble));
}

using AManagedWindow = WidgetTest;

TEST_F(AManagedWindow, LeavesTheScreenWhenLoweredUnlessItIsRaisedInTheSameTurn)
{
    show(popup({"OK"}));
    bool isHidden = false;
    const auto onHide = [](void* data, Evas*, Evas_Object*, void*) { *static_cast<bool*>(data) = true; };
    evas_object_event_callback_add(m_window, EVAS_CALLBACK_HIDE, onHide, &isHidden);
    elm_win_lower(m_window);
    evas_object_show(m_window);
    elm_win_raise(m_window);
    toolkit::settle();
    EXPECT_TRUE(evas_object_visible_get(m_window));
    EXPECT_FALSE(isHidden) << "it blinked";
    elm_win_lower(m_window);
    toolkit::settle();
    EXPECT_FALSE(evas_object_visible_get(m_window));
    evas_object_event_callback_del(m_window, EVAS_CALLBACK_HIDE, onHide);
}

TEST_F(AManagedWindow, TakesTheSignalsThatDimIt)
{
    show(popup({"OK"}));
    for (const char* signal : {"SetDim", "SetNormal"})
        elm_object_signal_emit(m_window, signal, "");
    toolkit::settle();
    EXPECT_TRUE(evas_object_visible_get(m_window));
}

using AStyledPopup = WidgetTest;

TEST_F(AStyledPopup, HasATitleThatCanBeReadAndButtonsThatMakeWayForOthers)
{
    Evas_Object* one = popup({"Cancel"});
    EXPECT_TRUE(elm_flux_popup_style_set(one, ELM_FLUX_POPUP_STYLE_DEFAULT));
    EXPECT_TRUE(elm_flux_popup_title_set(one, "Set up"));
    show(one);
    EXPECT_STREQ(elm_object_part_text_get(one, "title,text"), "Set up");
    EXPECT_EQ(focused(), button(one, 0));

    EXPECT_TRUE(elm_flux_popup_item_remove(one, button(one, 0)));
    evas_object_del(button(one, 0));
    Evas_Object* answers[2] = {};
    for (int slot = 0; slot < 2; ++slot) {
        answers[slot] = elm_flux_button_add(one);
        EXPECT_TRUE(elm_flux_button_style_set(answers[slot], ELM_FLUX_BUTTON_STYLE_DEFAULT));
        EXPECT_TRUE(elm_flux_popup_button_set(one, answers[slot], slot));
    }
    EXPECT_TRUE(elm_flux_popup_focused_button_set(one, 1));
    toolkit::settle();
    EXPECT_EQ(focused(), answers[1]);
    toolkit::press(m_window, "Left");
    EXPECT_EQ(focused(), answers[0]);
    elm_object_signal_emit(one, "theme,dimmed,percent,50", "");
    elm_object_signal_emit(one, "theme,undim", "");
}

/// The numbers are the program's; a layer may have other names for them.
TEST_F(AStyledPopup, TakesTheTextsPicturesAndNumbersOfTheProgram)
{
    EXPECT_GT(px(1), 0);
    Evas_Object* one = popup({"OK"});
    EXPECT_TRUE(elm_flux_popup_style_set(one, ELM_FLUX_POPUP_STYLE_WIDE));
    Evas_Object* layout = elm_flux_layout_add(one);
    for (int type : {2, 1})
        EXPECT_TRUE(elm_flux_layout_type_set(layout, static_cast<Elm_Flux_Layout_Type>(type)));
    Evas_Object* box = elm_flux_textbox_add(layout);
    EXPECT_TRUE(elm_flux_textbox_text_set(box, "<color=#29C5FF><align=center>0427</align></color>"));
    EXPECT_TRUE(elm_flux_textbox_multiline_set(box, EINA_TRUE));
    for (int size : {8, 11, 13})
        EXPECT_TRUE(elm_flux_textbox_size_set(box, static_cast<Elm_Flux_Textbox_Size>(size)));
    for (int align : {3, 8, 10, 11})
        EXPECT_TRUE(elm_flux_textbox_align_set(box, static_cast<Elm_Flux_Textbox_Align>(align)));
    for (int rule : {0, 1, 2})
        EXPECT_TRUE(elm_flux_textbox_responsive_rule_set(box, static_cast<Elm_Flux_Responsive_Rule>(rule)));
    EXPECT_TRUE(elm_flux_textbox_color_preset_set(box, "CP_Info150"));
    Evas_Object* image = elm_flux_imagebox_add(layout);
    EXPECT_FALSE(elm_flux_imagebox_file_set(image, "/no/such/picture.png")) << "and it survives that";
    EXPECT_TRUE(elm_flux_imagebox_responsive_rule_set(image, static_cast<Elm_Flux_Responsive_Rule>(0)));
    Evas_Object* spinner = elm_flux_progressbar_add(layout);
    EXPECT_TRUE(elm_flux_progressbar_style_set(spinner, static_cast<Elm_Flux_Progressbar_Style>(5)));
    for (Evas_Object* item : {box, image, spinner})
        EXPECT_TRUE(elm_flux_layout_append(layout, item, px(12), px(12)));
    EXPECT_TRUE(elm_flux_popup_content_set(one, layout, px(101), px(40)));
    show(one);
    EXPECT_EQ(boxOf(layout).width, px(101));
    EXPECT_EQ(boxOf(box).width, px(12));
}

} // namespace
