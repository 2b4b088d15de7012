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
        elm_config_scale_set(1.0);
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
    /// Appends an item of this size in units: a text, or a picture when there is none.
    static Evas_Object* append(Evas_Object* layout, double width, double height, const char* text = nullptr)
    {
        Evas_Object* item = text ? elm_flux_textbox_add(layout) : elm_flux_imagebox_add(layout);
        if (text)
            elm_flux_textbox_text_set(item, text);
        EXPECT_TRUE(elm_flux_layout_append(
            layout, item, elm_flux_unit_to_pixel(width), elm_flux_unit_to_pixel(height)));
        return item;
    }
    static Box cardOf(const Evas_Object* popup)
    {
        return boxOf(edje_object_part_object_get(elm_layout_edje_get(popup), "card"));
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
    Evas_Object* one = popup({"Yes", "No"});
    show(one);
    toolkit::press(m_window, "Left");
    EXPECT_EQ(focused(), button(one, 1)) << "a popup's buttons are a row, too";

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
    evas_object_del(upper);
    toolkit::settle();
    EXPECT_EQ(boxOf(lower).y, 74) << "the gap of a deleted item stays";
}

using AStyledPopup = AStyledLayout;

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
    elm_flux_popup_content_set(one, elm_flux_textbox_add(one), 100, 100);
    EXPECT_FALSE(elm_flux_textbox_text_set(content, "x")) << "the former content is still there";

    Evas_Object* later = elm_flux_button_add(one);
    EXPECT_TRUE(elm_flux_popup_button_set(one, later, 0));
    EXPECT_FALSE(elm_flux_button_text_set(yes, "x")) << "the former button is still there";
    for (int slot : {0, 1, 0}) { // where it is already, and to the other slot and back
        EXPECT_TRUE(elm_flux_popup_button_set(one, later, slot));
        EXPECT_EQ(button(one, slot), later);
        EXPECT_NE(button(one, 1 - slot), later);
    }
    EXPECT_TRUE(elm_flux_popup_item_remove(one, later));
    EXPECT_FALSE(evas_object_visible_get(later));
    EXPECT_TRUE(elm_flux_popup_button_set(one, later, 0)) << "removing deleted it";

    Evas_Object* other = popup({"Cancel", "Help"});
    Evas_Object* help = button(other, 1);
    EXPECT_FALSE(elm_flux_popup_button_set(other, later, 1)) << "it is in another popup";
    EXPECT_EQ(button(other, 1), help);
    EXPECT_EQ(button(one, 0), later);
    show(other);
    evas_object_del(button(other, 0));
    toolkit::settle();
    EXPECT_EQ(button(other, 0), nullptr) << "deleted from outside";
    EXPECT_EQ(focused(), help) << "the keys went with the button";
    EXPECT_TRUE(elm_flux_popup_button_set(one, nullptr, 0));
    EXPECT_FALSE(elm_flux_button_text_set(later, "x"));
}

using AnOpenPopup = AStyledLayout;

TEST_F(AnOpenPopup, LooksAfterAChangeOfTheScreenAsIfItWereMadeForIt)
{
    evas_object_resize(m_window, 1920, 1080);
    const auto filled = [this] {
        Evas_Object* one = popup({"Yes", "No"});
        Evas_Object* row = elm_flux_layout_add(one);
        append(row, 96, 18, "A text that is long enough to be wrapped where the card ends, and on");
        elm_flux_popup_content_set(one, row, elm_flux_unit_to_pixel(109), elm_flux_unit_to_pixel(33));
        show(one);
        return one;
    };
    const auto places = [this](Evas_Object* one) {
        const auto* text = toolkit::shown<toolkit::TextboxRecord>(m_window).back()->object;
        return std::vector<Box> {cardOf(one), boxOf(button(one, 0)), boxOf(button(one, 1)), boxOf(text)};
    };
    Evas_Object* open = filled();
    const auto large = places(open);
    elm_config_scale_set(800 / 1920.0);
    evas_object_resize(m_window, 800, 600);
    toolkit::settle();
    const auto followed = places(open);
    EXPECT_NE(followed, large);
    evas_object_hide(open);
    EXPECT_EQ(followed, places(filled()));
    evas_object_show(open);
    elm_config_scale_set(1.0);
    evas_object_resize(m_window, 1920, 1080);
    toolkit::settle();
    EXPECT_EQ(places(open), large);
}

TEST_F(AnOpenPopup, IsNeverNarrowerThanItsButtons)
{
    for (const auto& labels : {std::initializer_list<const char*> {"OK"}, {"Yes", "No"}}) {
        Evas_Object* narrow = popup(labels);
        Evas_Object* content = elm_flux_textbox_add(narrow);
        ASSERT_TRUE(elm_flux_popup_content_set(narrow, content, 100, 100));
        show(narrow);
        const Box around = cardOf(narrow);
        for (int slot = 0; slot < static_cast<int>(labels.size()); ++slot) {
            const Box inside = boxOf(button(narrow, slot));
            EXPECT_GE(inside.x, around.x);
            EXPECT_LE(inside.x + inside.width, around.x + around.width);
        }
        EXPECT_EQ(boxOf(content).width, 100) << "the content has another size than it was given";
        EXPECT_EQ(boxOf(content).x + 50, around.x + around.width / 2);
    }
}

class ATooltip : public AStyledLayout {
protected:
    Evas_Object* shownFor(Evas_Object* target)
    {
        Evas_Object* bubble = elm_flux_object_tooltip_add(target, m_window);
        elm_flux_object_tooltip_size_set(bubble, 328, 72);
        elm_flux_object_tooltip_text_set(bubble, "Hint");
        EXPECT_FALSE(evas_object_visible_get(bubble));
        EXPECT_TRUE(elm_flux_object_tooltip_show(bubble));
        EXPECT_TRUE(evas_object_visible_get(bubble));
        return bubble;
    }
};

TEST_F(ATooltip, FollowsItsTargetAndForgetsADeletedOne)
{
    Evas_Object* target = elm_flux_imagebox_add(m_window);
    evas_object_geometry_set(target, 500, 300, 200, 100);
    evas_object_del(shownFor(target)); // does not listen to the target any more
    Evas_Object* bubble = shownFor(target);
    EXPECT_EQ(boxOf(bubble), (Box {436, 400, 328, 72}));
    evas_object_move(target, 700, 100);
    EXPECT_EQ(boxOf(bubble), (Box {636, 200, 328, 72}));
    evas_object_del(target);
    toolkit::settle();
    EXPECT_FALSE(evas_object_visible_get(bubble));
    EXPECT_FALSE(elm_flux_object_tooltip_show(bubble));
}

TEST_F(ATooltip, NeverCoversAText)
{
    Evas_Object* stack = layout(ELM_FLUX_LAYOUT_VERTICAL, 151, 63);
    Evas_Object* above = append(stack, 151, 12, "above");
    Evas_Object* image = append(stack, 32, 38);
    Evas_Object* empty = append(stack, 151, 4, "");
    Evas_Object* below = append(stack, 151, 4, "below");
    toolkit::settle();
    Evas_Object* bubble = shownFor(image);
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
