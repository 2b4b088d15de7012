/// A daemon that does not answer as it should must not take the program, or the viewer's way out, with it.
#include "TvTest.h"

namespace {

using tv::Answer;
using tv::waitUntil;

class ADaemon : public tv::TvTest { };

TEST_F(ADaemon, ThatIsUnwillingIsServedAndLeavesTheEndOrderly)
{
    struct {
        Answer atStart;
        Answer atStop;
        bool isError; ///< whether the stop fails, rather than bring an unusable answer
    } const faults[] = {
        {Answer::Refusal, Answer::Refusal, true},
        {Answer::WrongType, Answer::WrongType, false},
        {Answer::Zero, Answer::Vanish, true},
    };
    for (const auto& fault : faults) {
        SCOPED_TRACE(static_cast<int>(fault.atStop));
        box.daemon->answer("ServerStarted", fault.atStart);
        box.daemon->answer("StopTessel", fault.atStop);
        box.daemon->forget();
        ASSERT_TRUE(box.settings.setInt(tv::kStartMode, 0) && box.settings.setInt(tv::kReady, 0));
        ASSERT_TRUE(box.start());
        ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
        const size_t mark = box.program->mark();
        EXPECT_TRUE(box.press({"Return"}));
        EXPECT_TRUE(endedByViewer(true));
        EXPECT_EQ(box.program->logged("DBUS call failed: *", mark), fault.isError);
        EXPECT_TRUE(
            box.program->logsInOrder({"Stop Tessel", "Stopping Tessel", "In CTesselUI::OnTerminate"}, mark));
    }
}

TEST_F(ADaemon, MayComeLater)
{
    const std::string bus = box.daemon->busAddress();
    box.daemon.reset();
    box.program = box.launch({"LAUNCH_MODE=POPUP"});
    ASSERT_TRUE(box.program->waitForLog("DBUS call failed: *"));

    box.daemon = std::make_unique<tv::Daemon>(bus);
    ASSERT_TRUE(waitUntil([&] { return box.daemon->findsUi(box.program->pid()); }));
    ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(box.program->endsWith(0));
    EXPECT_EQ(box.daemon->calls(), std::vector<std::string> {"StopTessel(true, false)"});
}

TEST_F(ADaemon, MayCallBackAtOnceAndGoAndComeAgain)
{
    constexpr size_t kCalls = 50;
    box.daemon->callBackAt("ServerStarted", kCalls);
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(waitUntil([&] { return box.daemon->replies().size() == kCalls; }));
    for (const tv::Reply& reply : box.daemon->replies())
        EXPECT_EQ(reply.value, "(0,)") << reply.error;

    // Killed with a popup up, and started again.
    ASSERT_TRUE(box.show("ShowTnCPopup"));
    const std::string bus = box.daemon->busAddress();
    box.daemon.reset();
    box.daemon = std::make_unique<tv::Daemon>(bus);
    EXPECT_TRUE(display().showsAnything());
    ASSERT_TRUE(box.show("ShowApListPopup"));
    display().key("Return");
    EXPECT_TRUE(box.program->endsWith(0));
    EXPECT_EQ(box.daemon->calls(), std::vector<std::string> {"StopTessel(true, false)"});
}

/// Another program of the bus that has the user interface's name.
class Squatter {
public:
    explicit Squatter(const std::string& bus)
    {
        const auto flags = static_cast<GDBusConnectionFlags>(
            G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
        m_connection.reset(
            g_dbus_connection_new_for_address_sync(bus.c_str(), flags, nullptr, nullptr, nullptr));
        call("RequestName", g_variant_new("(su)", kName, 0U));
    }
    void letGo() const { call("ReleaseName", g_variant_new("(s)", kName)); }

private:
    static constexpr const char* kName = "com.norvale.orbis.tessel.ui";

    void call(const char* method, GVariant* parameters) const
    {
        const tv::VariantPtr reply(g_dbus_connection_call_sync(m_connection.get(), "org.freedesktop.DBus",
            "/org/freedesktop/DBus", "org.freedesktop.DBus", method, parameters, nullptr,
            G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
        EXPECT_NE(reply, nullptr);
    }

    tv::ConnectionPtr m_connection;
};

TEST_F(ADaemon, IsServedOnceAnotherProgramLetsTheNameGo)
{
    const Squatter squatter(box.daemon->busAddress());
    box.program = box.launch({"LAUNCH_MODE=POPUP"});
    ASSERT_TRUE(waitUntil([&] { return box.daemon->received("ServerStarted(true)"); }));
    ASSERT_TRUE(box.program->waitForLog("End m_OnBusAcquired"));
    EXPECT_FALSE(box.daemon->findsUi(box.program->pid()));
    // The settings reach it meanwhile.
    ASSERT_TRUE(box.settings.setText(tv::kRequest, R"({"page":"tnc"})"));
    EXPECT_TRUE(box.program->waitForLog("showTncText popup"));

    squatter.letGo();
    ASSERT_TRUE(waitUntil([&] { return box.daemon->findsUi(box.program->pid()); }));
    ASSERT_TRUE(box.show("ShowApListPopup"));
    display().key("Return");
    EXPECT_TRUE(endedByViewer(false));
}

} // namespace
