/// What is on the screen while language, screen and application change around it.
#include "Fixtures.h"
#include "elm_flux.h"

#include <map>

namespace {

using toolkit::Box;
using toolkit::boxOf;

class AnOpenPopup : public WindowTest {
protected:
    void TearDown() override
    {
        elm_config_mirrored_set(EINA_FALSE);
        elm_config_scale_set(1.0);
        WindowTest::TearDown();
    }

    /// A popup with two buttons, and a row with a spinner and a text.
    Evas_Object* filledPopup()
    {
        const auto px = elm_flux_unit_to_pixel;
        Evas_Object* popup = elm_flux_popup_add(m_window);
        elm_flux_popup_title_set(popup, "Title");
        Evas_Object* row = elm_flux_layout_add(popup);
        elm_flux_layout_type_set(row, ELM_FLUX_LAYOUT_HORIZONTAL);
        elm_flux_layout_gap_set(row, 1);
        elm_flux_layout_append(row, elm_flux_progressbar_add(row), px(12), px(12));
        Evas_Object* text = elm_flux_textbox_add(row);
        elm_flux_textbox_multiline_set(text, EINA_TRUE);
        elm_flux_textbox_align_set(text, ELM_FLUX_TEXTBOX_ALIGN_RIGHT);
        elm_flux_textbox_text_set(
            text, "A text that is long enough to be wrapped where the card ends, and on");
        elm_flux_layout_append(row, text, px(96), px(18));
        elm_flux_popup_content_set(popup, row, px(109), px(33));
        for (int slot : {0, 1}) {
            Evas_Object* button = elm_flux_button_add(popup);
            elm_flux_button_text_set(button, slot == 0 ? "Yes" : "No");
            elm_flux_popup_button_set(popup, button, slot);
        }
        show(popup);
        return popup;
    }

    /// @return where everything that is drawn of a popup is, by what draws it
    static std::map<std::string, Box> placesIn(Evas_Object* object, const std::string& path = "")
    {
        std::map<std::string, Box> places;
        if (!evas_object_visible_get(object))
            return places;
        places[path] = boxOf(object);
        const std::string kind = evas_object_type_get(object);
        if (kind == "elm_button")
            return places; // the focus may be growing in it
        Eina_List* members = evas_object_smart_members_get(object);
        int index = 0;
        void* member = nullptr;
        EINA_LIST_FREE(members, member)
        {
            auto* part = static_cast<Evas_Object*>(member);
            const char* type = evas_object_type_get(part);
            places.merge(placesIn(part, path + "/" + std::to_string(index++) + (type ? type : "")));
        }
        return places;
    }
    using Places = std::map<std::string, Box>;
    static void expectSame(const Places& actual, const Places& expected)
    {
        for (const auto& [what, place] : expected) {
            const auto found = actual.find(what);
            ASSERT_NE(found, actual.end()) << what << " is gone";
            ASSERT_EQ(found->second, place) << what;
        }
        EXPECT_EQ(actual.size(), expected.size());
    }
};

TEST_F(AnOpenPopup, KeepsItsDirectionAndItsButtonsWhenTheLanguageTurnsRound)
{
    for (bool mirrored : {false, true}) {
        SCOPED_TRACE(mirrored);
        elm_config_mirrored_set(mirrored);
        Evas_Object* open = filledPopup();
        const auto before = placesIn(open);
        const bool leftFirst = boxOf(button(open, 0)).x < boxOf(button(open, 1)).x;
        EXPECT_EQ(leftFirst, !mirrored);

        elm_config_mirrored_set(!mirrored);
        toolkit::settle();
        expectSame(placesIn(open), before);
        Evas_Object* confirmation = filledPopup();
        EXPECT_EQ(boxOf(button(confirmation, 0)).x < boxOf(button(confirmation, 1)).x, leftFirst);
        EXPECT_EQ(focused(), button(confirmation, 0));
        toolkit::press(m_window, leftFirst ? "Right" : "Left");
        EXPECT_EQ(focused(), button(confirmation, 1));
        evas_object_del(confirmation);
        evas_object_del(open);

        Evas_Object* next = filledPopup();
        EXPECT_NE(boxOf(button(next, 0)).x < boxOf(button(next, 1)).x, leftFirst);
        evas_object_del(next);
        toolkit::settle();
    }
}

TEST_F(AnOpenPopup, LooksAfterAChangeOfTheScreenAsIfItWereMadeForIt)
{
    evas_object_resize(m_window, 1920, 1080);
    for (const char* request : {"theme,undim", "theme,dimmed,percent,50"}) {
        SCOPED_TRACE(request);
        Evas_Object* open = filledPopup();
        elm_object_signal_emit(open, request, "");
        toolkit::settle();
        const auto large = placesIn(open);
        elm_config_scale_set(800 / 1920.0);
        evas_object_resize(m_window, 800, 600);
        toolkit::settle();
        const auto followed = placesIn(open);
        evas_object_hide(open);
        Evas_Object* fresh = filledPopup();
        elm_object_signal_emit(fresh, request, "");
        toolkit::settle();
        expectSame(followed, placesIn(fresh));
        evas_object_del(fresh);
        evas_object_show(open);
        elm_config_scale_set(1.0);
        evas_object_resize(m_window, 1920, 1080);
        toolkit::settle();
        expectSame(placesIn(open), large);
        evas_object_del(open);
        toolkit::settle();
    }
}

TEST_F(AnOpenPopup, IsNeverNarrowerThanItsButtons)
{
    for (const auto& labels : {std::initializer_list<const char*> {"OK"}, {"Yes", "No"}}) {
        Evas_Object* narrow = popup(labels);
        Evas_Object* content = elm_flux_textbox_add(narrow);
        ASSERT_TRUE(elm_flux_popup_content_set(narrow, content, 100, 100));
        show(narrow);
        const auto* card = edje_object_part_object_get(elm_layout_edje_get(narrow), "card");
        const Box around = boxOf(card);
        for (int slot = 0; slot < static_cast<int>(labels.size()); ++slot) {
            const Box inside = boxOf(button(narrow, slot));
            EXPECT_GE(inside.x, around.x);
            EXPECT_LE(inside.x + inside.width, around.x + around.width);
        }
        EXPECT_EQ(boxOf(content).width, 100) << "the content has another size than it was given";
        EXPECT_EQ(boxOf(content).x + 50, around.x + around.width / 2);
        evas_object_del(narrow);
    }
}

TEST_F(AnOpenPopup, KeepsAButtonThatIsOfferedToAnotherOne)
{
    Evas_Object* one = popup({"Yes", "No"});
    Evas_Object* other = popup({"Cancel"});
    Evas_Object* kept = button(one, 0);
    EXPECT_FALSE(elm_flux_popup_button_set(other, kept, 0));
    EXPECT_FALSE(elm_flux_popup_button_set(other, kept, 1));
    EXPECT_EQ(button(one, 0), kept);
    ASSERT_NE(button(other, 0), nullptr);
    EXPECT_EQ(button(other, 1), nullptr);
    evas_object_del(other);
    show(one);
    EXPECT_EQ(focused(), kept);
    EXPECT_TRUE(elm_flux_popup_item_remove(one, kept));
    EXPECT_TRUE(elm_flux_popup_button_set(one, kept, 0)) << "taken off and put back";
}

} // namespace
