// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What belongs to a styled popup.
#include "Fixtures.h"
#include "elm_flux.h"

namespace {

using toolkit::Box;
using toolkit::boxOf;

using AStyledPopup = WindowTest;

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

} // namespace
