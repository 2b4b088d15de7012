/// Where the styled widgets put things, and what is theirs.
#include "Fixtures.h"
#include "elm_flux.h"

namespace {

using toolkit::Box;
using toolkit::boxOf;

class AStyledLayout : public WindowTest {
protected:
    void TearDown() override
    {
        elm_config_mirrored_set(EINA_FALSE);
        WindowTest::TearDown();
    }

    /// A layout at 100,50 of this size in units, shown.
    Evas_Object* layout(Elm_Flux_Layout_Type type, double width, double height)
    {
        Evas_Object* layout = elm_flux_layout_add(m_window);
        EXPECT_TRUE(elm_flux_layout_type_set(layout, type));
        evas_object_geometry_set(
            layout, 100, 50, elm_flux_unit_to_pixel(width), elm_flux_unit_to_pixel(height));
        evas_object_show(layout);
        return layout;
    }
    /// Appends an item of this size in units.
    static Evas_Object* append(Evas_Object* layout, double width, double height)
    {
        Evas_Object* item = elm_flux_imagebox_add(layout);
        EXPECT_TRUE(elm_flux_layout_append(
            layout, item, elm_flux_unit_to_pixel(width), elm_flux_unit_to_pixel(height)));
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
        EXPECT_EQ(boxOf(first), (Box {100 + (mirrored ? 776 : 0), 50, 96, 80}));
        EXPECT_EQ(boxOf(second), (Box {100 + (mirrored ? 0 : 104), 50, 768, 80}));
    }
    Evas_Object* stack = layout(ELM_FLUX_LAYOUT_VERTICAL, 101, 33);
    elm_flux_layout_gap_set(stack, 1);
    elm_flux_layout_padding_set(stack, 2, 4, 3, 0);
    Evas_Object* upper = append(stack, 101, 18);
    Evas_Object* lower = append(stack, 51, 14);
    toolkit::settle();
    EXPECT_EQ(boxOf(upper), (Box {116, 74, 808 - 48, 144}));
    EXPECT_EQ(boxOf(lower).y, 74 + 152);
    EXPECT_LE(boxOf(lower).y + boxOf(lower).height, 50 + 264) << "nothing leaves the layout";
    evas_object_del(upper);
    toolkit::settle();
    EXPECT_EQ(boxOf(lower).y, 74) << "the gap of a deleted item stays";
}

using AStyledPopup = AStyledLayout;

TEST_F(AStyledPopup, ReplacesItsContentAndItsButtons)
{
    Evas_Object* one = popup({"Yes", "No"});
    Evas_Object* content = elm_flux_textbox_add(one);
    show(one);
    elm_flux_popup_content_set(one, content, 100, 100);
    EXPECT_TRUE(elm_flux_popup_content_set(one, content, 300, 50)) << "again, at another size";
    toolkit::settle();
    EXPECT_EQ(boxOf(content).width, 300);
    elm_flux_popup_content_set(one, elm_flux_textbox_add(one), 100, 100);
    EXPECT_FALSE(elm_flux_textbox_text_set(content, "x")) << "the former content is still there";

    Evas_Object* former = button(one, 0);
    Evas_Object* later = elm_flux_button_add(one);
    EXPECT_TRUE(elm_flux_popup_button_set(one, later, 0));
    EXPECT_FALSE(elm_flux_button_text_set(former, "x")) << "the former button is still there";
    for (int slot : {0, 1, 0}) { // where it is already, and to the other slot and back
        EXPECT_TRUE(elm_flux_popup_button_set(one, later, slot));
        EXPECT_EQ(button(one, slot), later);
        EXPECT_NE(button(one, 1 - slot), later);
    }
    EXPECT_TRUE(elm_flux_popup_item_remove(one, later));
    EXPECT_FALSE(evas_object_visible_get(later));
    EXPECT_TRUE(elm_flux_popup_button_set(one, later, 0)) << "removing deleted it";
}

TEST_F(AStyledPopup, KeepsAButtonThatAnotherWantsAndTheKeysWhenOneIsDeleted)
{
    Evas_Object* one = popup({"Yes", "No"});
    Evas_Object* other = popup({"Cancel", "Help"});
    Evas_Object* help = button(other, 1);
    Evas_Object* yes = button(one, 0);
    EXPECT_FALSE(elm_flux_popup_button_set(other, yes, 1));
    EXPECT_EQ(button(one, 0), yes);
    EXPECT_EQ(button(other, 1), help);
    show(other);
    evas_object_del(button(other, 0));
    toolkit::settle();
    EXPECT_EQ(button(other, 0), nullptr);
    EXPECT_EQ(focused(), help) << "the keys went with the button";
}

TEST_F(AStyledPopup, IsNeverNarrowerThanItsButtons)
{
    for (const auto& labels : {std::initializer_list<const char*> {"OK"}, {"Yes", "No"}}) {
        Evas_Object* narrow = popup(labels);
        Evas_Object* content = elm_flux_textbox_add(narrow);
        ASSERT_TRUE(elm_flux_popup_content_set(narrow, content, 100, 100));
        show(narrow);
        const Box around = boxOf(edje_object_part_object_get(elm_layout_edje_get(narrow), "card"));
        for (int slot = 0; slot < static_cast<int>(labels.size()); ++slot) {
            const Box inside = boxOf(button(narrow, slot));
            EXPECT_GE(inside.x, around.x);
            EXPECT_LE(inside.x + inside.width, around.x + around.width);
        }
        EXPECT_EQ(boxOf(content).width, 100) << "the content has another size than it was given";
        EXPECT_EQ(boxOf(content).x + 50, around.x + around.width / 2);
        evas_object_hide(narrow); // what comes over it would be as large
    }
}

using ATooltip = WindowTest;

TEST_F(ATooltip, FollowsItsTargetAndForgetsADeletedOne)
{
    Evas_Object* target = elm_flux_imagebox_add(m_window);
    evas_object_geometry_set(target, 500, 300, 200, 100);
    Evas_Object* former = elm_flux_object_tooltip_add(target, m_window);
    elm_flux_object_tooltip_show(former);
    evas_object_del(former); // does not listen to the target any more
    Evas_Object* bubble = elm_flux_object_tooltip_add(target, m_window);
    elm_flux_object_tooltip_size_set(bubble, 328, 72);
    EXPECT_FALSE(evas_object_visible_get(bubble));
    EXPECT_TRUE(elm_flux_object_tooltip_show(bubble));
    EXPECT_EQ(boxOf(bubble), (Box {436, 400, 328, 72}));
    evas_object_move(target, 700, 100);
    EXPECT_EQ(boxOf(bubble), (Box {636, 200, 328, 72}));
    evas_object_del(target);
    toolkit::settle();
    EXPECT_FALSE(evas_object_visible_get(bubble));
    EXPECT_FALSE(elm_flux_object_tooltip_show(bubble));
}

} // namespace
