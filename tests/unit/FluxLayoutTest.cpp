/// Where the styled widgets put things.
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
    static Evas_Object* append(Evas_Object* layout, Evas_Object* item, double width, double height)
    {
        EXPECT_TRUE(elm_flux_layout_append(
            layout, item, elm_flux_unit_to_pixel(width), elm_flux_unit_to_pixel(height)));
        return item;
    }
    static Evas_Object* append(Evas_Object* layout, double width, double height)
    {
        return append(layout, elm_flux_imagebox_add(layout), width, height);
    }
    static Evas_Object* appendText(Evas_Object* layout, double width, double height)
    {
        return append(layout, elm_flux_textbox_add(layout), width, height);
    }
};

TEST_F(AStyledLayout, FillsARowExactlyInReadingOrder)
{
    for (bool mirrored : {false, true}) {
        elm_config_mirrored_set(mirrored);
        Evas_Object* row = layout(ELM_FLUX_LAYOUT_HORIZONTAL, 109, 10);
        elm_flux_layout_gap_set(row, 1);
        Evas_Object* spinner = append(row, 12, 10);
        Evas_Object* label = append(row, 96, 10);
        toolkit::settle();
        EXPECT_EQ(boxOf(spinner), (Box {100 + (mirrored ? 776 : 0), 50, 96, 80}));
        EXPECT_EQ(boxOf(label), (Box {100 + (mirrored ? 0 : 104), 50, 768, 80}));
    }
}

TEST_F(AStyledLayout, StacksWithGapAndPadding)
{
    Evas_Object* stack = layout(ELM_FLUX_LAYOUT_VERTICAL, 101, 33);
    elm_flux_layout_gap_set(stack, 1);
    Evas_Object* upper = append(stack, 101, 18);
    Evas_Object* lower = append(stack, 51, 14);
    toolkit::settle();
    EXPECT_EQ(boxOf(upper), (Box {100, 50, 808, 144}));
    EXPECT_EQ(boxOf(lower), (Box {100 + 200, 50 + 152, 408, 112})) << "centred across the stack";

    elm_flux_layout_padding_set(stack, 2, 4, 3, 0);
    toolkit::settle();
    EXPECT_EQ(boxOf(upper), (Box {116, 74, 808 - 48, 144}));
    EXPECT_EQ(boxOf(lower).y, 74 + 152);
    EXPECT_LE(boxOf(lower).y + boxOf(lower).height, 50 + 264) << "nothing leaves the layout";
}

TEST_F(AStyledLayout, ClosesTheGapOfADeletedItem)
{
    Evas_Object* stack = layout(ELM_FLUX_LAYOUT_VERTICAL, 101, 40);
    Evas_Object* first = appendText(stack, 101, 10);
    Evas_Object* second = append(stack, 101, 10);
    toolkit::settle();
    evas_object_del(first);
    toolkit::settle();
    EXPECT_EQ(boxOf(second).y, 50);
}

TEST_F(AStyledLayout, GoesInAnyOrderWithWhatHoldsIt)
{
    Evas_Object* one = popup({"OK"});
    Evas_Object* outer = elm_flux_layout_add(one);
    Evas_Object* inner = elm_flux_layout_add(outer);
    append(inner, 10, 10);
    elm_flux_layout_append(outer, inner, 100, 100);
    elm_flux_popup_content_set(one, outer, 400, 300);
    show(one);
    evas_object_del(inner);
    evas_object_del(one);
    toolkit::settle();
    EXPECT_FALSE(elm_flux_layout_gap_set(outer, 1));
}

class AStyledPopup : public AStyledLayout { };

TEST_F(AStyledPopup, CoversTheWindowWithItsCardInside)
{
    Evas_Object* small = elm_box_add(m_window);
    evas_object_geometry_set(small, 5, 5, 10, 10);
    Evas_Object* one = elm_flux_popup_add(small);
    Evas_Object* content = elm_flux_textbox_add(one);
    elm_flux_popup_content_set(one, content, 808, 224);
    show(one);
    EXPECT_EQ(boxOf(one), (Box {0, 0, 1920, 1080})) << "whatever the parent's size";
    EXPECT_EQ(boxOf(content).width, 808);
    EXPECT_EQ(boxOf(content).height, 224);
    EXPECT_EQ(boxOf(content).x + 404, 960);
    evas_object_resize(m_window, 1280, 720);
    toolkit::settle();
    EXPECT_EQ(boxOf(one), (Box {0, 0, 1280, 720}));
    evas_object_del(small);
    toolkit::settle();
    EXPECT_TRUE(elm_flux_popup_title_set(one, "t")) << "the popup went with a box it was made on";
}

TEST_F(AStyledPopup, ReplacesItsContentAndItsButtons)
{
    Evas_Object* one = popup({"Yes", "No"});
    Evas_Object* yes = button(one, 0);
    Evas_Object* content = elm_flux_textbox_add(one);
    show(one);
    elm_flux_popup_content_set(one, content, 100, 100);
    EXPECT_TRUE(elm_flux_popup_content_set(one, content, 300, 50)) << "again, at another size";
    toolkit::settle();
    EXPECT_EQ(boxOf(content).width, 300);
    Evas_Object* other = elm_flux_textbox_add(one);
    elm_flux_popup_content_set(one, other, 100, 100);
    EXPECT_FALSE(elm_flux_textbox_text_set(content, "x")) << "the former content is still there";

    Evas_Object* later = elm_flux_button_add(one);
    EXPECT_TRUE(elm_flux_popup_button_set(one, later, 0));
    EXPECT_FALSE(elm_flux_button_text_set(yes, "x")) << "the former button is still there";
    EXPECT_TRUE(elm_flux_popup_button_set(one, later, 0)) << "the same button once more";
    EXPECT_TRUE(elm_flux_button_text_set(later, "Later"));

    EXPECT_TRUE(elm_flux_popup_button_set(one, later, 1)) << "from slot to slot";
    EXPECT_EQ(button(one, 0), nullptr);
    EXPECT_EQ(button(one, 1), later);
    EXPECT_TRUE(elm_flux_popup_item_remove(one, later));
    EXPECT_TRUE(elm_flux_button_text_set(later, "kept")) << "removing deleted it";
    EXPECT_FALSE(evas_object_visible_get(later));
    EXPECT_FALSE(elm_flux_popup_item_remove(one, later));
    EXPECT_TRUE(elm_flux_popup_button_set(one, later, 0)) << "and back";
    toolkit::settle();
    EXPECT_TRUE(evas_object_visible_get(later));
    EXPECT_TRUE(elm_flux_popup_button_set(one, nullptr, 0));
    EXPECT_FALSE(elm_flux_button_text_set(later, "x"));
}

TEST_F(AStyledPopup, ForgetsAButtonThatIsDeletedFromOutside)
{
    Evas_Object* one = popup({"Yes", "No"});
    show(one);
    const int together = boxOf(button(one, 1)).width;
    evas_object_del(button(one, 0));
    toolkit::settle();
    EXPECT_EQ(button(one, 0), nullptr);
    ASSERT_NE(button(one, 1), nullptr);
    EXPECT_EQ(focused(), button(one, 1)) << "the keys went with the button";
    EXPECT_NE(boxOf(button(one, 1)).width, together);
    EXPECT_TRUE(elm_flux_popup_button_set(one, elm_flux_button_add(one), 0));
    evas_object_del(button(one, 1));
    evas_object_del(one);
    toolkit::settle();
}

TEST_F(AStyledPopup, PutsItsButtonsInReadingOrder)
{
    elm_config_mirrored_set(EINA_TRUE);
    Evas_Object* one = popup({"Yes", "No"});
    show(one);
    EXPECT_GT(boxOf(button(one, 0)).x, boxOf(button(one, 1)).x);
    toolkit::press(m_window, "Left");
    EXPECT_EQ(focused(), button(one, 1));
}

class ATooltip : public AStyledLayout {
protected:
    Evas_Object* bubbleFor(Evas_Object* target)
    {
        Evas_Object* bubble = elm_flux_object_tooltip_add(target, m_window);
        elm_flux_object_tooltip_size_set(bubble, 328, 72);
        elm_flux_object_tooltip_text_set(bubble, "Hint");
        return bubble;
    }
};

TEST_F(ATooltip, FollowsItsTargetAndForgetsADeletedOne)
{
    Evas_Object* target = elm_flux_imagebox_add(m_window);
    evas_object_geometry_set(target, 500, 300, 200, 100);
    Evas_Object* bubble = bubbleFor(target);
    EXPECT_FALSE(evas_object_visible_get(bubble));
    EXPECT_TRUE(elm_flux_object_tooltip_show(bubble));
    EXPECT_TRUE(evas_object_visible_get(bubble));
    EXPECT_EQ(boxOf(bubble), (Box {436, 400, 328, 72}));
    evas_object_move(target, 700, 100);
    EXPECT_EQ(boxOf(bubble), (Box {636, 200, 328, 72}));
    EXPECT_TRUE(elm_flux_object_tooltip_hide(bubble));
    EXPECT_FALSE(evas_object_visible_get(bubble));

    elm_flux_object_tooltip_show(bubble);
    evas_object_del(target);
    toolkit::settle();
    EXPECT_FALSE(evas_object_visible_get(bubble));
    EXPECT_FALSE(elm_flux_object_tooltip_show(bubble));
    EXPECT_TRUE(elm_flux_object_tooltip_size_set(bubble, 10, 10));
    evas_object_del(bubble);

    target = elm_flux_imagebox_add(m_window);
    bubble = bubbleFor(target);
    evas_object_del(bubble);
    toolkit::settle();
    evas_object_move(target, 1, 1); // nobody listens any more
    evas_object_del(target);
}

TEST_F(ATooltip, NeverCoversAText)
{
    Evas_Object* stack = layout(ELM_FLUX_LAYOUT_VERTICAL, 151, 63);
    Evas_Object* above = appendText(stack, 151, 12);
    Evas_Object* image = elm_flux_imagebox_add(stack);
    elm_flux_layout_append(stack, image, 256, 304);
    Evas_Object* empty = appendText(stack, 151, 4);
    Evas_Object* below = appendText(stack, 151, 4);
    elm_flux_textbox_text_set(above, "above");
    elm_flux_textbox_text_set(below, "below");
    toolkit::settle();
    Evas_Object* bubble = bubbleFor(image);
    elm_flux_object_tooltip_show(bubble);
    toolkit::settle();
    const Box hint = boxOf(bubble);
    EXPECT_LE(hint.y + hint.height, boxOf(below).y);
    EXPECT_GE(hint.y, boxOf(above).y + boxOf(above).height);
    EXPECT_GT(hint.y + hint.height, boxOf(image).y + boxOf(image).height) << "it hangs below its picture";

    elm_flux_textbox_text_set(empty, "now there is one");
    elm_flux_object_tooltip_show(bubble);
    EXPECT_LE(boxOf(bubble).y + boxOf(bubble).height, boxOf(empty).y);
}

} // namespace
