/// Callbacks from C code when memory is short: each gives up by itself and the program goes on.
#include "Fixtures.h"
#include "Memory.h"
#include "TesselUI.h"
#include "vconf.h"

#include <gio/gio.h>

namespace {

constexpr std::size_t kLarge = 2000; ///< bytes; only texts from outside are as large

using namespace TesselUI;

class ShortMemory : public ApplicationTest {
protected:
    void TearDown() override
    {
        memory::plan() = {};
        ApplicationTest::TearDown();
    }

    /// Lets the first large allocation of @p act fail, then the second, until none does.
    void failEach(const std::function<void()>& act)
    {
        int round = 0;
        do {
            memory::plan() = {kLarge, round++, false};
            act();
            memory::plan().left = -1;
            ASSERT_LT(round, 200);
        } while (memory::plan().failures > 0);
        EXPECT_GT(round, 2) << "nothing failed";
    }
};

TEST_F(ShortMemory, TakesARequestAndNothingElse)
{
    start();
    const std::string name(3000, 'n');
    const std::string json = R"({"page":"pin","pin":"0042","mobilename":")" + name + "\"}";
    vconf_set_str(TESSEL_VCONF, json.c_str());
    failEach([] { CTesselUI::m_OnMethodPopup(nullptr, nullptr); });

    GDBusConnection* bus = g_bus_get_sync(G_BUS_TYPE_SYSTEM, nullptr, nullptr);
    failEach([&] {
        std::string answer;
        g_dbus_connection_call(
            bus, "com.norvale.orbis.tessel.ui", "/com/norvale/orbis/tessel/ui", "com.norvale.orbis.tessel.ui",
            "ShowNetworkTest", g_variant_new("(ss)", name.c_str(), name.c_str()), nullptr,
            G_DBUS_CALL_FLAGS_NONE, -1, nullptr,
            [](GObject* source, GAsyncResult* result, gpointer data) {
                const tv::VariantPtr reply {
                    g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr)};
                const tv::GText text {reply ? g_variant_print(reply.get(), FALSE) : g_strdup("an error")};
                *static_cast<std::string*>(data) = text.get();
            },
            &answer);
        EXPECT_TRUE(toolkit::runUntil([&] { return !answer.empty(); }));
        EXPECT_EQ(answer, "(0,)");
    });
    g_object_unref(bus);
    toolkit::settle();
    ASSERT_NE(toolkit::topPopup(m_window), nullptr);
    EXPECT_EQ(toolkit::titleOf(*toolkit::topPopup(m_window)), text("COM_TV_SID_TESSEL"));
    EXPECT_TRUE(journal::has("E serve gave up: std::bad_alloc"));
    EXPECT_TRUE(journal::has("E m_OnMethodPopup gave up: std::bad_alloc"));
}

} // namespace
