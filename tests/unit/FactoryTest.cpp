/// The widget factory that the shared library hands out to other screens, and its focus chains.
#include "Common_Widget_Function.h"
#include "Fixtures.h"
#include "Paths.h"

#include <algorithm>
#include <array>

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
    const char* file = nullptr;
    const char* group = nullptr;
    elm_layout_file_get(placed, &file, &group);
    EXPECT_STREQ(file, TesselUI::kThemeFile);
    EXPECT_STREQ(group, "dim");
    const toolkit::Box untouched = toolkit::boxOf(elm_layout_add(m_window));
    const std::array<int, 4> partly[] = {{-1, 40, -1, 77}, {30, -1, 101, -1}, {-1, -1, -1, -1}};
    for (const auto& [x, y, width, height] : partly)
        EXPECT_EQ(toolkit::boxOf(createLayout(m_window, "dim", x, y, width, height)), untouched);
    EXPECT_NE(createLayout(m_window, "no such group", -1, -1, -1, -1), nullptr);
}

TEST_F(TheFactory, TellsALayoutTheColourOfHighContrast)
{
    Evas_Object* layout = createLayout(m_window, "dim", 0, 0, 1, 1);
    ASSERT_TRUE(elm_layout_file_set(layout, CONTRAST_THEME, "contrast"));
    std::vector<int> received;
    const auto onMessage = [](void* numbers, Evas_Object*, Edje_Message_Type, int, void* message) {
        const auto* set = static_cast<Edje_Message_Int_Set*>(message);
        static_cast<std::vector<int>*>(numbers)->assign(set->val, set->val + set->count);
    };
    edje_object_message_handler_set(elm_layout_edje_get(layout), onMessage, &received);
    SetHigh_ContrastBg(layout);
    toolkit::settle();
    EXPECT_EQ(received, (std::vector<int> {4, 15, 24, 39, 255})) << "how many came, and which";
    SetHigh_ContrastBg(nullptr);
}

TEST_F(TheFactory, NotesTheViewersActivity)
{
    const auto isNoted = [] { return std::exchange(TesselUI::time_flag, false); };
    Evas_Object* layout = createLayout(m_window, "dim", 0, 0, 500, 500);
    elm_layout_file_set(layout, CONTRAST_THEME, "contrast"); // the backdrop lets the pointer through
    show(layout);
    isNoted();
    evas_event_feed_mouse_move(evas_object_evas_get(m_window), 100, 100, 1000, nullptr);
    EXPECT_TRUE(isNoted());
    for (Evas_Object* object : {layout, createPopup(m_window, "default")}) {
        show(object);
        EXPECT_FALSE(isNoted()) << "nobody touched anything";
        evas_object_focus_set(object, EINA_TRUE);
        toolkit::press(m_window, "Left");
        EXPECT_TRUE(isNoted());
    }
}

TEST_F(TheFactory, ReportsPicturesItCannotLoadAndStillReturnsThem)
{
    for (const std::string& name : {std::string("no-such-picture.png"), std::string(1000, 'x')}) {
        journal::clear();
        EXPECT_TRUE(evas_object_visible_get(createImage(m_window, name.c_str(), "part")));
        EXPECT_FALSE(evas_object_visible_get(createIcon(m_window, name.c_str())));
        EXPECT_EQ(
            journal::missing({"E Failed to Set image Path", "E Failed to Set File in Create Icon"}), "");
    }
    EXPECT_FALSE(evas_object_visible_get(createImage(m_window, nullptr, "part")));
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

/// Per button, where down, up, right and left lead: an index, or "-" for nowhere.
std::string leads(const std::vector<Evas_Object*>& chain)
{
    std::string result;
    for (Elm_Focus_Direction direction : {ELM_FOCUS_DOWN, ELM_FOCUS_UP, ELM_FOCUS_RIGHT, ELM_FOCUS_LEFT}) {
        for (const Evas_Object* button : chain) {
            const auto* next = button ? elm_object_focus_next_object_get(button, direction) : nullptr;
            const auto found = std::find(chain.begin(), chain.end(), next);
            result += next && found != chain.end() ? std::to_string(found - chain.begin()) : "-";
        }
        result += direction == ELM_FOCUS_LEFT ? "" : " ";
    }
    return result;
}

TEST_F(TheFactory, ChainsButtonsInTwoDirectionsOnlyAndSkipsGaps)
{
    const struct {
        void (*chain)(Evas_Object**, int);
        const char* buttons; ///< one each; '-' is a gap
        const char* leads;
    } rows[] = {
        {set_focus_chain_up_down, "b", "0 0 - -"},
        {set_focus_chain_up_down, "bbbb", "1230 3012 ---- ----"},
        {set_focus_chain_up_down, "b-bb", "--30 3--2 ---- ----"},
        {set_focus_chain_left_right, "bbb", "--- --- 120 201"},
        {set_focus_chain_left_right, "---", "--- --- --- ---"},
        {single_chain_set_focus_LEFTRIGHT, "b-b", "--- --- 0-2 0-2"},
        {single_chain_set_focus_DOWNUP, "bb", "01 01 -- --"},
    };
    for (const auto& row : rows) {
        std::vector<Evas_Object*> chain;
        for (const char place : std::string(row.buttons))
            chain.push_back(place == '-' ? nullptr : createButton(m_window, "default", nullptr, "", nullptr));
        row.chain(nullptr, 0);
        row.chain(chain.data(), -1);
        EXPECT_EQ(leads(chain).find_first_not_of("- "), std::string::npos) << "of no buttons";
        row.chain(chain.data(), static_cast<int>(chain.size()));
        EXPECT_EQ(leads(chain), row.leads) << row.buttons;
    }
}

} // namespace
