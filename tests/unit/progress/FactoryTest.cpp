/// The widget factory that the shared library hands out.
#include "Common_Widget_Function.h"
#include "Paths.h"
#include "PopupTest.h"

#include <array>
#include <functional>

namespace {

using toolkit::settle;

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

TEST_F(TheFactory, PlacesALayoutAsGivenAndScalesItsSize)
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
}

TEST_F(TheFactory, NotesTheViewersActivity)
{
    Evas_Object* layout = createLayout(m_window, "dim", 0, 0, 500, 500);
    elm_layout_file_set(layout, CONTRAST_THEME, "contrast"); // the backdrop lets the pointer through
    evas_object_show(layout);
    settle();
    EXPECT_FALSE(activity()) << "nobody touched anything";
    elm_object_focus_set(layout, EINA_TRUE);
    toolkit::press(m_window, "Left");
    EXPECT_TRUE(activity());
    evas_event_feed_mouse_move(evas_object_evas_get(m_window), 100, 100, 1000, nullptr);
    EXPECT_TRUE(activity());
    evas_object_del(layout);

    Evas_Object* popup = createPopup(m_window, "default");
    EXPECT_STREQ(elm_object_style_get(popup), "default");
    evas_object_show(popup);
    settle();
    evas_object_focus_set(popup, EINA_TRUE);
    toolkit::press(m_window, "Left");
    EXPECT_TRUE(activity());
    evas_object_del(popup);
    TesselUI::Reset_Time();
    TesselUI::Reset_Time_Flag(nullptr, nullptr, nullptr, nullptr);
    EXPECT_TRUE(activity());
}

TEST_F(TheFactory, ReportsPicturesItCannotLoadAndStillReturnsThem)
{
    const std::string longName(1000, 'x');
    const char* cut = longName.c_str();
    for (const char* name : {"no-such-picture.png", "", cut}) {
        journal::clear();
        Evas_Object* image = createImage(m_window, name, "part");
        EXPECT_EQ(journal::missing({"I START", "E Failed to Set image Path", "", "I END"}), "") << name;
        EXPECT_TRUE(evas_object_visible_get(image));
        Evas_Object* icon = createIcon(m_window, name);
        EXPECT_EQ(journal::missing({"I START", "E Failed to Set File in Create Icon", "I END"}), "") << name;
        EXPECT_FALSE(evas_object_visible_get(icon));
    }
    journal::clear();
    Evas_Object* empty = createImage(m_window, nullptr, "part");
    ASSERT_NE(empty, nullptr);
    EXPECT_FALSE(evas_object_visible_get(empty));
    EXPECT_EQ(programLines(), (std::vector<std::string> {"I START", "I END"}));
}

TEST_F(TheFactory, MakesBoxesLabelsAndTimers)
{
    EXPECT_TRUE(fills(createBox(m_window)));
    Evas_Object* label = createLabel(m_window, nullptr, "Some text");
    EXPECT_STREQ(elm_object_text_get(label), "Some text");
    EXPECT_TRUE(evas_object_visible_get(label));
    label = createLabel(m_window, "marker", nullptr);
    EXPECT_STREQ(elm_object_style_get(label), "marker");

    int ticks = 0;
    const auto onTick = [](void* count) -> Eina_Bool { return ++*static_cast<int*>(count) < 3; };
    EXPECT_NE(createTimer(0.5, onTick, &ticks), nullptr);
    toolkit::advance(0.9, 0.1);
    EXPECT_EQ(ticks, 1);
    toolkit::advance(5, 0.1);
    EXPECT_EQ(ticks, 3) << "the callback says when it ends";
}

TEST_F(TheFactory, MakesButtonsForTheRemoteAndThePointer)
{
    int clicks = 0;
    const auto onClick = [](void* count, Evas_Object*, void*) { ++*static_cast<int*>(count); };
    Evas_Object* first = createButton(m_window, "default", onClick, "First", &clicks);
    Evas_Object* second = createButton(m_window, "default", nullptr, "Second", nullptr);
    EXPECT_STREQ(elm_object_text_get(first), "First");
    EXPECT_TRUE(evas_object_visible_get(first));
    EXPECT_TRUE(fills(first));
    evas_object_geometry_set(first, 0, 0, 200, 100);
    evas_object_geometry_set(second, 0, 200, 200, 100);
    settle();

    evas_event_feed_mouse_move(evas_object_evas_get(m_window), 100, 250, 1000, nullptr);
    EXPECT_EQ(focused(), second) << "pointing at a button focuses it";
    elm_object_focus_set(first, EINA_TRUE);
    toolkit::press(m_window, "Return");
    EXPECT_EQ(clicks, 1);

    const std::pair<const char*, const char*> keys[] = {{"XF86Back", "D Exit Key is Pressed,Exiting..."},
        {"XF86Close", "D Return Key is Pressed,Exiting..."}};
    for (const auto& [key, line] : keys) {
        journal::clear();
        toolkit::press(m_window, key);
        EXPECT_EQ(programLines(), std::vector<std::string> {line});
    }
    journal::clear();
    toolkit::press(m_window, "Escape");
    EXPECT_FALSE(journal::has("T exit"));
    EXPECT_EQ(programLines(), std::vector<std::string> {});
    EXPECT_EQ(clicks, 1);
}

TEST_F(TheFactory, TellsTheThemeTheContrastColour)
{
    Evas_Object* layout = elm_layout_add(m_window);
    ASSERT_TRUE(elm_layout_file_set(layout, CONTRAST_THEME, "contrast"));
    std::vector<int> received;
    const auto onMessage = [](void* data, Evas_Object*, Edje_Message_Type type, int id, void* message) {
        auto& numbers = *static_cast<std::vector<int>*>(data);
        const auto* set = static_cast<Edje_Message_Int_Set*>(message);
        numbers = {type == EDJE_MESSAGE_INT_SET ? 1 : 0, id};
        numbers.insert(numbers.end(), set->val, set->val + set->count);
    };
    edje_object_message_handler_set(elm_layout_edje_get(layout), onMessage, &received);
    SetHigh_ContrastBg(layout);
    settle();
    // Kind and number of the message, how many numbers came, and the numbers.
    EXPECT_EQ(received, (std::vector<int> {1, 1, 4, 15, 24, 39, 255}));
    SetHigh_ContrastBg(nullptr);
}

} // namespace
