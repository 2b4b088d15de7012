// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The widget factory that the shared library hands out to other screens, and its focus chains.
#include "Common_Widget_Function.h"
#include "Fixtures.h"

#include <algorithm>

namespace {

class TheFactory : public WindowTest {
protected:
    static bool fills(const Evas_Object* object)
    {
        double x = 0, y = 0, alignX = 0, alignY = 0;
        evas_object_size_hint_weight_get(object, &x, &y);
        evas_object_size_hint_align_get(object, &alignX, &alignY);
        return x == 1.0 && y == 1.0 && alignX == -1.0 && alignY == -1.0;
    }
};

TEST_F(TheFactory, MakesNothingWithoutAParent)
{
    const Evas_Object* const made[] = {createLayout(nullptr, "dim", 0, 0, 1, 1),
        createPopup(nullptr, "default"), createImage(nullptr, "a.png", "part"), createBox(nullptr),
        createIcon(nullptr, "a.png"), createLabel(nullptr, "default", "text"),
        createButton(nullptr, "default", nullptr, "text", nullptr)};
    EXPECT_EQ(std::count(std::begin(made), std::end(made), nullptr), 7);
    EXPECT_EQ(journal::count("E User passed data is null"), 7);
    EXPECT_FALSE(journal::has("I END"));
}

TEST_F(TheFactory, PlacesALayoutAsGivenAndScalesItsSize)
{
    elm_config_scale_set(1.5);
    Evas_Object* placed = createLayout(m_window, "dim", 30, 40, 101, 77);
    EXPECT_EQ(toolkit::boxOf(placed), (toolkit::Box {30, 40, 151, 115})) << "cut, not rounded";
    elm_config_scale_set(1.0);
    EXPECT_TRUE(fills(placed));
    const char* group = nullptr;
    elm_layout_file_get(placed, nullptr, &group);
    EXPECT_STREQ(group, "dim");
    const toolkit::Box untouched = toolkit::boxOf(elm_layout_add(m_window));
    EXPECT_EQ(toolkit::boxOf(createLayout(m_window, "dim", -1, 40, -1, 77)), untouched);
    EXPECT_EQ(toolkit::boxOf(createLayout(m_window, "no such group", 30, -1, 101, -1)), untouched);
    SetHigh_ContrastBg(placed); // the sanitizers look whether there is room for its message
    SetHigh_ContrastBg(nullptr);
}

TEST_F(TheFactory, NotesTheViewersKeys)
{
    for (Evas_Object* object :
        {createLayout(m_window, "dim", 0, 0, 500, 500), createPopup(m_window, "default")}) {
        show(object);
        evas_object_focus_set(object, EINA_TRUE);
        TesselUI::time_flag = false;
        toolkit::press(m_window, "Left");
        EXPECT_TRUE(TesselUI::time_flag);
    }
}

TEST_F(TheFactory, MakesButtonsForTheRemoteAndThePointer)
{
    int clicks = 0;
    const auto onClick = [](void* count, Evas_Object*, void*) { ++*static_cast<int*>(count); };
    Evas_Object* first = createButton(m_window, "default", onClick, "First", &clicks);
    Evas_Object* second = createButton(m_window, "default", nullptr, "Second", nullptr);
    EXPECT_STREQ(elm_object_text_get(first), "First");
    EXPECT_TRUE(fills(first));
    EXPECT_STREQ(elm_object_text_get(createLabel(m_window, "marker", "Some text")), "Some text");
    evas_object_geometry_set(first, 0, 0, 200, 100);
    evas_object_geometry_set(second, 0, 200, 200, 100);
    toolkit::settle();
    evas_event_feed_mouse_move(evas_object_evas_get(m_window), 100, 250, 1000, nullptr);
    EXPECT_EQ(focused(), second) << "pointing at a button focuses it";
    elm_object_focus_set(first, EINA_TRUE);
    for (const char* key : {"Return", "XF86Back", "XF86Close", "Escape"})
        toolkit::press(m_window, key);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(
        journal::missing({"D Exit Key is Pressed,Exiting...", "D Return Key is Pressed,Exiting..."}), "");
    EXPECT_FALSE(journal::has("T exit"));
}

/// Where each button leads in these directions: an index, or "-" for nowhere.
std::string leads(
    const std::vector<Evas_Object*>& chain, std::initializer_list<Elm_Focus_Direction> directions)
{
    std::string result;
    for (const auto direction : directions) {
        for (const Evas_Object* button : chain) {
            const auto* next = button ? elm_object_focus_next_object_get(button, direction) : nullptr;
            const auto found = std::find(chain.begin(), chain.end(), next);
            result += next && found != chain.end() ? std::to_string(found - chain.begin()) : "-";
        }
    }
    return result;
}

TEST_F(TheFactory, ChainsButtonsInTwoDirectionsOnlyAndSkipsGaps)
{
    const struct {
        void (*chain)(Evas_Object**, int);
        const char* buttons; ///< one each; '-' is a gap
        const char* upright; ///< where down and up lead
        const char* level; ///< where right and left lead
    } rows[] = {
        {set_focus_chain_up_down, "b", "00", "--"},
        {set_focus_chain_up_down, "b-bb", "--303--2", "--------"},
        {set_focus_chain_left_right, "bbb", "------", "120201"},
        {single_chain_set_focus_LEFTRIGHT, "b-b", "------", "0-20-2"},
        {single_chain_set_focus_DOWNUP, "bb", "0101", "----"},
    };
    for (const auto& [makeChain, buttons, upright, level] : rows) {
        std::vector<Evas_Object*> chain;
        for (const char place : std::string(buttons))
            chain.push_back(place == '-' ? nullptr : createButton(m_window, "default", nullptr, "", nullptr));
        makeChain(nullptr, 0);
        makeChain(chain.data(), -1);
        makeChain(chain.data(), static_cast<int>(chain.size()));
        EXPECT_EQ(leads(chain, {ELM_FOCUS_DOWN, ELM_FOCUS_UP}), upright) << buttons;
        EXPECT_EQ(leads(chain, {ELM_FOCUS_RIGHT, ELM_FOCUS_LEFT}), level) << buttons;
    }
}

} // namespace
