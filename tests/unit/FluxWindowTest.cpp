/// The managed window: its dim layer, and how it leaves the screen.
#include "Fixtures.h"
#include "elm_flux.h"

namespace {

constexpr const char* kDim = "elm/flux/dim/window";

class AManagedWindow : public WindowTest {
protected:
    bool visible() const { return evas_object_visible_get(m_window); }
    bool dimmed() const { return toolkit::showsGroup(m_window, kDim); }
};

TEST_F(AManagedWindow, DimsOnRequest)
{
    elm_object_signal_emit(m_window, "SetNormal", "");
    EXPECT_FALSE(dimmed());
    for (int round = 0; round < 2; ++round) {
        elm_object_signal_emit(m_window, "SetDim", "");
        elm_object_signal_emit(m_window, "SetDim", "");
        toolkit::settle();
        EXPECT_TRUE(dimmed());
        elm_object_signal_emit(m_window, "SetNormal", "");
        toolkit::settle();
        EXPECT_FALSE(dimmed());
    }
    for (const char* signal : {"SetDim2", "setdim", "", static_cast<const char*>(nullptr)})
        elm_object_signal_emit(m_window, signal, "");
    EXPECT_FALSE(dimmed());

    elm_object_signal_emit(m_window, "SetDim", "");
    evas_object_resize(m_window, 640, 360);
    Evas_Object* one = popup({"OK"});
    show(one);
    for (Evas_Object* object : toolkit::objects(m_window)) {
        const char* group = nullptr;
        if (std::string(evas_object_type_get(object)) == "edje")
            edje_object_file_get(object, nullptr, &group);
        if (group && std::string(group) == kDim) {
            EXPECT_EQ(toolkit::boxOf(object), (toolkit::Box {0, 0, 640, 360}));
        }
    }
    elm_object_signal_emit(one, "theme,dimmed,percent,50", ""); // other objects' signals arrive, too
    EXPECT_TRUE(evas_object_visible_get(one));
}

TEST_F(AManagedWindow, LeavesTheScreenWhenLowered)
{
    elm_win_lower(m_window);
    EXPECT_FALSE(visible()) << "with no popup up a blocking call may follow";
    elm_win_lower(m_window);
    evas_object_show(m_window);
    elm_win_raise(m_window);
    EXPECT_TRUE(visible());

    Evas_Object* one = popup({"OK"});
    show(one);
    elm_win_lower(m_window);
    EXPECT_TRUE(visible()) << "another popup usually follows at once";
    toolkit::settle();
    EXPECT_FALSE(visible());
}

TEST_F(AManagedWindow, StaysWhenItIsRaisedInTheSameTurn)
{
    show(popup({"OK"}));
    int hidden = 0;
    const auto onHide = [](void* count, Evas*, Evas_Object*, void*) { ++*static_cast<int*>(count); };
    evas_object_event_callback_add(m_window, EVAS_CALLBACK_HIDE, onHide, &hidden);
    elm_win_lower(m_window);
    evas_object_show(m_window);
    elm_win_raise(m_window);
    toolkit::settle();
    EXPECT_TRUE(visible());
    EXPECT_EQ(hidden, 0) << "it blinked";
}

TEST_F(AManagedWindow, LeavesOtherWindowsAlone)
{
    Evas_Object* other = elm_win_add(nullptr, "other", ELM_WIN_BASIC);
    evas_object_resize(other, 100, 100);
    evas_object_show(other);
    elm_win_lower(other);
    elm_object_signal_emit(other, "SetDim", "");
    toolkit::settle();
    EXPECT_TRUE(evas_object_visible_get(other));
    EXPECT_FALSE(dimmed());

    EXPECT_TRUE(elm_flux_manager_init(m_window)) << "once more is harmless";
    EXPECT_TRUE(elm_flux_manager_init(other)) << "the manager moves";
    elm_object_signal_emit(other, "SetDim", "");
    EXPECT_TRUE(toolkit::showsGroup(other, kDim));
    elm_win_lower(m_window);
    toolkit::settle();
    EXPECT_TRUE(visible());
    elm_win_lower(other);
    EXPECT_FALSE(evas_object_visible_get(other));
    evas_object_del(other);
}

TEST_F(AManagedWindow, IsLetGoInAnyOrder)
{
    show(popup({"OK"}));
    elm_object_signal_emit(m_window, "SetDim", "");
    elm_win_lower(m_window); // leaves a job behind
    elm_flux_manager_fini();
    elm_flux_manager_fini();
    toolkit::settle();
    EXPECT_TRUE(visible()) << "the manager acted after its end";
    EXPECT_FALSE(dimmed());

    ASSERT_TRUE(elm_flux_manager_init(m_window));
    elm_object_signal_emit(m_window, "SetDim", "");
    elm_win_lower(m_window);
    evas_object_del(m_window);
    toolkit::settle();
    elm_object_signal_emit(m_window, "SetNormal", "");
    elm_flux_manager_fini();
    EXPECT_TRUE(toolkit::windows().empty());
}

} // namespace
