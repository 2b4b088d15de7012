/// The two ends of the bus, on a real bus with a daemon that behaves and misbehaves.
#include "DaemonThread.h"
#include "Fixtures.h"
#include "TesselDbusClient.h"
#include "TesselUI.h"
#include "TesselUIDbus.h"

#include <chrono>
#include <cstring>
#include <utility>

namespace {

using namespace TesselUI;
using Calls = std::vector<std::string>;

class TheBusEnds : public ApplicationTest {
protected:
    CTesselUI* application() { return CTesselUI::createInstance(); }
};

TEST_F(TheBusEnds, FindEachOtherBeforeTheDaemonIsTold)
{
    start();
    EXPECT_EQ(
        journal::missing({"I In CTesselUI::OnCreate", "I In CTesselUI::Instance created Successfully",
            "I Inside registerTesselVconf", "I Success to register VCONF_KEY_MOBILEOOBE callback",
            "I Success to register DEVICE_OWNED_VCONF callback",
            "I Success to register VCONFKEY_TESSEL_STARTMODE", "I In CreateWin", "I ENTRY",
            "I Start CTesselUIDbus::Create", "I End CTesselUIDbus::Create", "I Start ReconnectDbus",
            "I End ReconnectDbus", "I Start m_OnBusAcquired", "I Object registered Successfully",
            "I DBus server started = [true]", "I Proxy Not NUll", "I result:0", "I End m_OnBusAcquired"}),
        "");
    EXPECT_EQ(m_daemon->calls(), Calls {"ServerStarted(true)"});
    journal::clear();
    CTesselUI::OnTerminate(nullptr);
    EXPECT_EQ(journal::missing({"I In CTesselUI::OnTerminate", "I Inside deRegisterTesselVconf",
                  "I Success to register VCONF_KEY_MOBILEOOBE ignore",
                  "I Success to register DEVICE_OWNED_VCONF callback",
                  "I Success to Deregister VCONFKEY_TESSEL_STARTMODE callback", "I In CreateWin"}),
        "I In CreateWin");
}

TEST_F(TheBusEnds, AnswerEveryMethodWithZero)
{
    start();
    struct Method {
        const char* name;
        Calls arguments;
        const char* line; ///< the one of a popup that was not shown
        bool notShown;
    };
    const Method methods[] = {
        {"ShowPinPopup", {"Anna", "0042"}, "I Pin Popup Shown", false},
        {"ShowFailedPopup", {"sso"}, "D Failed Popup Shown", false},
        {"ShowTnCPopup", {}, "D Tnc  Popup Shown", false},
        {"ShowApListPopup", {}, "D AP List Popup Shown", false},
        {"ShowMobileGuide", {"0042"}, "I Mobile Guide PopupShown successfully", true},
        {"HidePopup", {}, "D Popup Hide", false},
    };
    for (const Method& method : methods) {
        journal::clear();
        EXPECT_EQ(m_daemon->request(method.name, method.arguments), "(0,)") << method.name;
        EXPECT_TRUE(journal::has("I Call " + std::string(method.name) + " method"));
        EXPECT_EQ(journal::has(method.line), method.notShown);
    }
    EXPECT_EQ(m_daemon->request("ShowPinPopup", {"Anna", "0042"}), "(0,)");
    EXPECT_TRUE(journal::has("I Set Meassge [0042] Mobile Name =  [Anna]")) << "the name comes first";
    toolkit::settle();
    EXPECT_NE(toolkit::topPopup(m_window), nullptr);
    EXPECT_EQ(m_daemon->request("ShowPinPopup", {"one text only"}).find("(0,)"), std::string::npos);
}

/// Calls of the service through an object of the test's own, which declares more than the real one.
class AnObjectOfItsOwn {
public:
    explicit AnObjectOfItsOwn(void* service)
        : m_connection(g_bus_get_sync(G_BUS_TYPE_SYSTEM, nullptr, nullptr))
        , m_description(g_dbus_node_info_new_for_xml(kXml, nullptr))
    {
        static const GDBusInterfaceVTable s_table {on_call, nullptr, nullptr, {}};
        m_id = g_dbus_connection_register_object(
            m_connection.get(), kPath, m_description->interfaces[0], &s_table, service, nullptr, nullptr);
    }
    AnObjectOfItsOwn(const AnObjectOfItsOwn&) = delete;
    AnObjectOfItsOwn& operator=(const AnObjectOfItsOwn&) = delete;
    ~AnObjectOfItsOwn() { g_dbus_connection_unregister_object(m_connection.get(), m_id); }

    /// How many calls came in and were not freed since.
    static inline int s_open = 0;

    /// @return the printed answer, or "" for none within @p limitMs
    std::string call(const char* method, GVariant* parameters, int limitMs)
    {
        std::string answer = "pending";
        g_dbus_connection_call(m_connection.get(), g_dbus_connection_get_unique_name(m_connection.get()),
            kPath, "test.Object", method, parameters, nullptr, G_DBUS_CALL_FLAGS_NONE, limitMs, nullptr,
            on_answer, &answer);
        EXPECT_TRUE(toolkit::runUntil([&] { return answer != "pending"; }));
        return answer;
    }

private:
    static constexpr const char* kPath = "/test/object";
    static constexpr const char* kXml = R"(<node><interface name="test.Object">
        <method name="NoSuchPopup"><arg type="i" direction="out"/></method>
        <method name="ShowPinPopup"><arg type="i" direction="in"/><arg type="i" direction="out"/></method>
        </interface></node>)";

    static void on_call(GDBusConnection* connection, const gchar* sender, const gchar* path,
        const gchar* interface, const gchar* method, GVariant* parameters, GDBusMethodInvocation* invocation,
        gpointer service)
    {
        ++s_open;
        g_object_weak_ref(
            G_OBJECT(invocation), [](gpointer, GObject*) { --s_open; }, nullptr);
        CTesselUIDbus::m_OnMethodCall(
            connection, sender, path, interface, method, parameters, invocation, service);
    }
    static void on_answer(GObject* source, GAsyncResult* result, gpointer data)
    {
        const tv::VariantPtr value {
            g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr)};
        const tv::GText printed {value ? g_variant_print(value.get(), TRUE) : nullptr};
        *static_cast<std::string*>(data) = printed ? printed.get() : "";
    }

    tv::ConnectionPtr m_connection;
    tv::NodeInfoPtr m_description;
    guint m_id = 0;
};

TEST_F(TheBusEnds, AnswerAnUnknownMethodAndOtherTypesWithZero)
{
    start();
    auto manager = std::make_shared<UIManager>();
    CTesselUIDbus service(manager, application());
    AnObjectOfItsOwn object(&service);
    EXPECT_EQ(object.call("NoSuchPopup", nullptr, 5000), "(0,)");
    EXPECT_TRUE(journal::has("E Method name did not match"));
    EXPECT_EQ(object.call("ShowPinPopup", g_variant_new("(i)", 7), 5000), "(0,)");
    EXPECT_TRUE(journal::has("I Pin = "));
    EXPECT_EQ(AnObjectOfItsOwn::s_open, 0);
}

TEST_F(TheBusEnds, LeaveACallWithoutAServiceUnanswered)
{
    start();
    AnObjectOfItsOwn object(nullptr);
    EXPECT_EQ(object.call("NoSuchPopup", nullptr, 300), "");
    EXPECT_TRUE(journal::has("E Cult not get Instance"));
    EXPECT_EQ(std::exchange(AnObjectOfItsOwn::s_open, 0), 0) << "the call itself has leaked";
}

TEST_F(TheBusEnds, IgnoreCallbacksOfObjectsThatAreGone)
{
    start();
    journal::clear();
    {
        TesselDbusClient gone(application());
    }
    EXPECT_TRUE(toolkit::runUntil([] { return journal::has("I Object ALreay Deleted"); }));
    EXPECT_FALSE(journal::has("I Start CTesselUIDbus::Create"));

    gpointer late = nullptr;
    {
        CTesselUIDbus service(std::make_shared<UIManager>(), application());
        EXPECT_TRUE(service.destroy());
        EXPECT_TRUE(service.destroy());
    }
    for (int id = 1; id < 1000; ++id) {
        if (!Cookie<CTesselUIDbus>::find(GINT_TO_POINTER(id)))
            late = GINT_TO_POINTER(id);
    }
    toolkit::settle();
    journal::clear();
    CTesselUIDbus::m_OnBusAcquired(nullptr, "name", late);
    EXPECT_EQ(journal::lines(), (Calls {"I Start m_OnBusAcquired", "E Could Not get Instance or deleted"}));
}

TEST_F(TheBusEnds, SayTheStopIsLostWithoutAProxy)
{
    TesselDbusClient client(application());
    journal::clear();
    client.stopTessel(true, false);
    EXPECT_EQ(journal::lines(), (Calls {"I Stop Tessel", "I Entry", "E No Proxy Object found"}));
    CTesselUI::stopTesselRequest(true, true);
    EXPECT_EQ(setting("db/menu/network/tessel_startmode"), "5") << "there is no client at all yet";
}

TEST_F(TheBusEnds, GoOnWhateverTheDaemonAnswers)
{
    struct Behaviour {
        tv::Answer answer;
        const char* line; ///< beginning
    };
    start();
    const Behaviour behaviours[] = {
        {tv::Answer::Refusal, "E DBUS call failed: "},
        {tv::Answer::WrongType, "I result:0"},
        {tv::Answer::Vanish, "E DBUS call failed: "},
    };
    for (const Behaviour& behaviour : behaviours) {
        m_daemon->answer("StopTessel", behaviour.answer);
        journal::clear();
        CTesselUI::stopTesselRequest(true, true);
        bool found = false;
        for (const std::string& line : journal::lines())
            found = found || line.compare(0, strlen(behaviour.line), behaviour.line) == 0;
        EXPECT_TRUE(found) << behaviour.line;
        EXPECT_TRUE(journal::has("I Stopping Tessel"));
    }
    EXPECT_EQ(m_daemon->calls().at(1), "StopTessel(true, false)") << "the second flag is not passed on";
}

TEST_F(TheBusEnds, WaitForADaemonThatDawdles)
{
    start();
    m_daemon->answerAfter("StopTessel", 0.5);
    const auto before = std::chrono::steady_clock::now();
    CTesselUI::stopTesselRequest(true, false);
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(450));
    EXPECT_TRUE(journal::has("I result:0"));
}

TEST_F(TheBusEnds, ReplaceTheServiceWithoutLosingTheName)
{
    start();
    journal::clear();
    application()->dbusClientObjectCreated(false);
    EXPECT_EQ(journal::lines().back(), "I END");
    EXPECT_FALSE(journal::has("I Start CTesselUIDbus::Create"));
    application()->dbusClientObjectCreated(true);
    EXPECT_TRUE(toolkit::runUntil([] { return journal::has("I End m_OnBusAcquired"); }));
    EXPECT_EQ(m_daemon->calls(), (Calls {"ServerStarted(true)", "ServerStarted(true)"}));
    EXPECT_EQ(m_daemon->request("ShowTnCPopup"), "(0,)");
    toolkit::settle();
    ASSERT_NE(toolkit::topPopup(m_window), nullptr);
    EXPECT_EQ(m_daemon->request("HidePopup"), "(0,)");
    EXPECT_EQ(toolkit::topPopup(m_window), nullptr);
    toolkit::runUntil([] { return false; }, 0.2);
    EXPECT_EQ(m_daemon->request("HidePopup"), "(0,)") << "the name went with the old service";
}

TEST_F(TheBusEnds, CopyNoMoreOfAValueThanThereIs)
{
    const tv::VariantPtr value {g_variant_ref_sink(g_variant_new("(i)", 0x01020304))};
    char out[8];
    memset(out, '#', sizeof out);
    CTesselUIDbus::getParams(value.get(), out, sizeof out);
    EXPECT_EQ(std::string(out + 4, 4), "####");
    memset(out, '#', sizeof out);
    CTesselUIDbus::getParams(value.get(), out, 2);
    EXPECT_EQ(std::string(out + 2, 6), "######");
    EXPECT_NE(std::string(out, 2), "##");
    CTesselUIDbus::getParams(value.get(), out, -1);
    CTesselUIDbus::getParams(nullptr, out, 4);
    CTesselUIDbus::getParams(value.get(), nullptr, 4);
}

} // namespace
