/// The widget factory that the shared library hands out, and its focus chains.
#include "Common_Widget_Function.h"
#include "Paths.h"
#include "PopupTest.h"

#include <array>

namespace {

class TheFactory : public WindowTest {
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        TesselUI::time_flag = false;
    }
    /// @return whether the viewer's activity was noted, and forgets it
    static bool activity() { return std::exchange(TesselUI::time_flag, false); }
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
    const std::function<Evas_Object*()> calls[] = {
        [] { return createLayout(nullptr, "dim", 0, 0, 1, 1); },
        [] { return createPopup(nullptr, "default"); },
        [] { return createImage(nullptr, "a.png", "part"); },
        [] { return createBox(nullptr); },
        [] { return createIcon(nullptr, "a.png"); },
        [] { return createLabel(nullptr, "default", "text"); },
        [] { return createButton(nullptr, "default", nullptr, "text", nullptr); },
    };
    for (const auto& call : calls) {
        journal::clear();
        EXPECT_EQ(call(), nullptr);
        EXPECT_EQ(programLines(), (std::vector<std::string> {"I START", "E User passed data is null"}));
    }
}

TEST_F(TheFactory, PlacesALayoutAsGivenScalesItsSizeAndTellsItTheContrastColour)
{
    const double scale = elm_config_scale_get();
    elm_config_scale_set(1.5);
    Evas_Object* placed = createLayout(m_window, "dim", 30, 40, 101, 77);
    EXPECT_EQ(toolkit::boxOf(placed), (toolkit::Box {30, 40, 151, 115})) << "cut, not rounded";
    elm_config_scale_set(scale);
    EXPECT_TRUE(fills(placed));
    EXPECT_TRUE(elm_object_focus_allow_get(placed));
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

    ASSERT_TRUE(elm_layout_file_set(placed, CONTRAST_THEME, "contrast"));
    std::vector<int> received;
    const auto onMessage = [](void* numbers, Evas_Object*, Edje_Message_Type, int id, void* message) {
        const auto* set = static_cast<Edje_Message_Int_Set*>(message);
        auto& result = *static_cast<std::vector<int>*>(numbers) = {id};
        result.insert(result.end(), set->val, set->val + set->count);
    };
    edje_object_message_handler_set(elm_layout_edje_get(placed), onMessage, &received);
    SetHigh_ContrastBg(placed);
    toolkit::settle();
    // The message's number, how many numbers came, and the numbers.
    EXPECT_EQ(received, (std::vector<int> {1, 4, 15, 24, 39, 255}));
    SetHigh_ContrastBg(nullptr);
}

TEST_F(TheFactory, NotesTheViewersActivity)
{
    Evas_Object* layout = createLayout(m_window, "dim", 0, 0, 500, 500);
    elm_layout_file_set(layout, CONTRAST_THEME, "contrast"); // the backdrop lets the pointer through
    Evas_Object* popup = createPopup(m_window, "default");
    EXPECT_STREQ(elm_object_style_get(popup), "default");
    for (Evas_Object* object : {layout, popup}) {
        show(object);
        EXPECT_FALSE(activity()) << "nobody touched anything";
        evas_object_focus_set(object, EINA_TRUE);
        toolkit::press(m_window, "Left");
        EXPECT_TRUE(activity());
        evas_event_feed_mouse_move(evas_object_evas_get(m_window), 100, 100, 1000, nullptr);
        EXPECT_EQ(activity(), object == layout);
        evas_object_del(object);
    }
    TesselUI::Reset_Time();
    TesselUI::Reset_Time_Flag(nullptr, nullptr, nullptr, nullptr);
    EXPECT_TRUE(activity());
}

TEST_F(TheFactory, ReportsPicturesItCannotLoadAndStillReturnsThem)
{
    for (const std::string& name :
        {std::string("no-such-picture.png"), std::string(), std::string(1000, 'x')}) {
        journal::clear();
        Evas_Object* image = createImage(m_window, name.c_str(), "part");
        EXPECT_EQ(journal::missing({"I START", "E Failed to Set image Path", "", "I END"}), "") << name;
        EXPECT_TRUE(evas_object_visible_get(image));
        Evas_Object* icon = createIcon(m_window, name.c_str());
        EXPECT_EQ(journal::missing({"I START", "E Failed to Set File in Create Icon", "I END"}), "") << name;
        EXPECT_FALSE(evas_object_visible_get(icon));
    }
    journal::clear();
    EXPECT_FALSE(evas_object_visible_get(createImage(m_window, nullptr, "part")));
    EXPECT_EQ(programLines(), (std::vector<std::string> {"I START", "I END"}));
}

TEST_F(TheFactory, MakesButtonsForTheRemoteAndThePointer)
{
    int clicks = 0;
    const auto onClick = [](void* count, Evas_Object*, void*) { ++*static_cast<int*>(count); };
    Evas_Object* first = createButton(m_window, "default", onClick, "First", &clicks);
    Evas_Object* second = createButton(m_window, "default", nullptr, "Second", nullptr);
    EXPECT_STREQ(elm_object_text_get(first), "First");
    EXPECT_TRUE(fills(first));
    EXPECT_TRUE(fills(createBox(m_window)));
    EXPECT_STREQ(elm_object_text_get(createLabel(m_window, "marker", "Some text")), "Some text");
    evas_object_geometry_set(first, 0, 0, 200, 100);
    evas_object_geometry_set(second, 0, 200, 200, 100);
    toolkit::settle();
    evas_event_feed_mouse_move(evas_object_evas_get(m_window), 100, 250, 1000, nullptr);
    EXPECT_EQ(focused(), second) << "pointing at a button focuses it";
    elm_object_focus_set(first, EINA_TRUE);
    toolkit::press(m_window, "Return");

    const std::pair<const char*, std::vector<std::string>> keys[] = {
        {"XF86Back", {"D Exit Key is Pressed,Exiting..."}},
        {"XF86Close", {"D Return Key is Pressed,Exiting..."}},
        {"Escape", {}},
    };
    for (const auto& [key, lines] : keys) {
        journal::clear();
        toolkit::press(m_window, key);
        EXPECT_EQ(programLines(), lines) << "nothing more, and no exit";
    }
    EXPECT_EQ(clicks, 1);
}

class AFocusChain : public WindowTest {
protected:
    using Chain = std::vector<Evas_Object*>;

    Chain buttons(size_t count)
    {
        Chain result(count);
        for (Evas_Object*& button : result)
            button = createButton(m_window, "default", nullptr, "", nullptr);
        return result;
    }
    /// Per button, where down, up, right and left lead: an index, or "-" for nowhere.
    static std::string leads(const Chain& chain)
    {
        std::string result;
        for (Elm_Focus_Direction direction :
            {ELM_FOCUS_DOWN, ELM_FOCUS_UP, ELM_FOCUS_RIGHT, ELM_FOCUS_LEFT}) {
            for (const Evas_Object* button : chain) {
                const auto* next = button ? elm_object_focus_next_object_get(button, direction) : nullptr;
                const auto found = std::find(chain.begin(), chain.end(), next);
                result += next && found != chain.end() ? std::to_string(found - chain.begin()) : "-";
            }
            result += direction == ELM_FOCUS_LEFT ? "" : " ";
        }
        return result;
    }
};

TEST_F(AFocusChain, LeadsInItsTwoDirectionsOnlyAndSkipsGaps)
{
    const struct {
        void (*chain)(Evas_Object**, int);
        const char* buttons; ///< one each; '-' is a gap
        const char* leads;
    } rows[] = {
        {set_focus_chain_up_down, "b", "0 0 - -"},
        {set_focus_chain_up_down, "bb", "10 10 -- --"},
        {set_focus_chain_up_down, "bbbb", "1230 3012 ---- ----"},
        {set_focus_chain_up_down, "b-bb", "--30 3--2 ---- ----"},
        {set_focus_chain_left_right, "b", "- - 0 0"},
        {set_focus_chain_left_right, "bbb", "--- --- 120 201"},
        {set_focus_chain_left_right, "---", "--- --- --- ---"},
        {single_chain_set_focus_LEFTRIGHT, "bbb", "--- --- 012 012"},
        {single_chain_set_focus_LEFTRIGHT, "---", "--- --- --- ---"},
        {single_chain_set_focus_DOWNUP, "bb", "01 01 -- --"},
    };
    for (const auto& row : rows) {
        const std::string places = row.buttons;
        Chain chain = buttons(places.size());
        std::transform(chain.begin(), chain.end(), places.begin(), chain.begin(),
            [](Evas_Object* button, char place) { return place == '-' ? nullptr : button; });
        for (int none : {0, -1})
            row.chain(chain.data(), none);
        row.chain(nullptr, 0);
        EXPECT_EQ(leads(chain).find_first_not_of("- "), std::string::npos) << "of no buttons";
        row.chain(chain.data(), static_cast<int>(chain.size()));
        EXPECT_EQ(leads(chain), row.leads) << row.buttons;
    }
}

} // namespace
