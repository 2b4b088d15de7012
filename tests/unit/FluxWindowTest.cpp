/// The managed window: its dim layer, and how it leaves the screen.
#include "Fixtures.h"
#include "Process.h"
#include "elm_flux.h"

#include <algorithm>
#include <unistd.h>

namespace {

using AManagedWindow = WindowTest;

TEST_F(AManagedWindow, LeavesTheScreenWhenLoweredUnlessItIsRaisedInTheSameTurn)
{
    show(popup({"OK"}));
    const auto onHide = [](void*, Evas*, Evas_Object*, void*) { journal::note("hidden"); };
    evas_object_event_callback_add(m_window, EVAS_CALLBACK_HIDE, onHide, nullptr);
    elm_win_lower(m_window);
    evas_object_show(m_window);
    elm_win_raise(m_window);
    toolkit::settle();
    EXPECT_TRUE(evas_object_visible_get(m_window));
    EXPECT_FALSE(journal::has("T hidden")) << "it blinked";
    elm_win_lower(m_window);
    toolkit::settle();
    EXPECT_FALSE(evas_object_visible_get(m_window));
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
