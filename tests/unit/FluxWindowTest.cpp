/// The managed window: its dim layer, and how it leaves the screen.
#include "Fixtures.h"
#include "elm_flux.h"

#include <algorithm>
#include <unistd.h>

namespace {

class AManagedWindow : public WindowTest {
protected:
    bool visible() const { return evas_object_visible_get(m_window); }
    bool dimmed() const { return toolkit::shownGroup(m_window, "elm/flux/dim/window") != nullptr; }
};

TEST_F(AManagedWindow, LeavesTheScreenWhenLoweredUnlessItIsRaisedInTheSameTurn)
{
    elm_win_lower(m_window);
    EXPECT_FALSE(visible()) << "with no popup up a blocking call may follow";
    elm_win_lower(m_window);
    evas_object_show(m_window);
    elm_win_raise(m_window);
    show(popup({"OK"}));
    EXPECT_TRUE(visible());

    int hidden = 0;
    const auto onHide = [](void* count, Evas*, Evas_Object*, void*) { ++*static_cast<int*>(count); };
    evas_object_event_callback_add(m_window, EVAS_CALLBACK_HIDE, onHide, &hidden);
    elm_win_lower(m_window);
    evas_object_show(m_window);
    elm_win_raise(m_window);
    toolkit::settle();
    EXPECT_TRUE(visible());
    EXPECT_EQ(hidden, 0) << "it blinked";

    elm_win_lower(m_window);
    EXPECT_TRUE(visible()) << "another popup usually follows at once";
    toolkit::settle();
    EXPECT_FALSE(visible());
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
    elm_win_lower(m_window);
    evas_object_del(m_window);
    toolkit::settle();
    elm_object_signal_emit(m_window, "SetNormal", "");
    elm_flux_manager_fini();
    EXPECT_TRUE(toolkit::windows().empty());
}

TEST_F(AManagedWindow, SaysThatItsSignalsAreLostInAProgramLinkedInTheWrongOrder)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer has an order of its own";
#endif
    const tv::Process program({BIN_DIR "/wrong-order"}, {environ, environ + g_strv_length(environ)});
    EXPECT_EQ(program.waitForExit(), 0);
    const auto complaints = [](const std::vector<std::string>& lines) {
        return std::count_if(lines.begin(), lines.end(),
            [](const std::string& line) { return line.find("libraries come") != std::string::npos; });
    };
    EXPECT_EQ(complaints(program.errors()), 1);
    EXPECT_EQ(complaints(journal::lines()), 0) << "this one is linked as it should be";
}

} // namespace
