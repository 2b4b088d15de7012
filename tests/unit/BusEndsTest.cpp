/// The two ends of the bus: late callbacks, a stop without a peer, and values of any size.
#include "Cookie.h"
#include "Fixtures.h"
#include "TesselDbusClient.h"
#include "TesselUI.h"
#include "TesselUIDbus.h"

#include <cstring>

namespace {

using namespace TesselUI;
using Calls = std::vector<std::string>;

class TheBusEnds : public ApplicationTest {
protected:
    CTesselUI* application() { return CTesselUI::createInstance(); }
};

TEST_F(TheBusEnds, IgnoreCallbacksOfObjectsThatAreGone)
{
    start();
    journal::clear();
    {
        TesselDbusClient gone(application());
    }
    EXPECT_TRUE(toolkit::runUntil([] { return journal::has("I Object ALreay Deleted"); }));
    EXPECT_FALSE(journal::has("I Start CTesselUIDbus::Create"));

    const Cookie<CTesselUIDbus> before {nullptr};
    {
        CTesselUIDbus service(std::make_shared<UIManager>(), application());
        EXPECT_TRUE(service.destroy());
        EXPECT_TRUE(service.destroy());
    }
    toolkit::settle();
    journal::clear();
    CTesselUIDbus::m_OnBusAcquired(nullptr, "name", GINT_TO_POINTER(before.id() + 1));
    EXPECT_EQ(journal::lines(), (Calls {"I Start m_OnBusAcquired", "E Could Not get Instance or deleted"}));
}

/// The shared connection, for looking at the bus and taking it away.
class Bus {
public:
    Bus()
        : m_connection(g_bus_get_sync(G_BUS_TYPE_SYSTEM, nullptr, nullptr))
    {
        g_dbus_connection_set_exit_on_close(m_connection.get(), FALSE);
    }
    GDBusConnection* get() const { return m_connection.get(); }

    bool ownsTheName() const
    {
        const base::VariantPtr reply {
            g_dbus_connection_call_sync(m_connection.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                "org.freedesktop.DBus", "GetNameOwner", g_variant_new("(s)", "com.norvale.orbis.tessel.ui"),
                nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr)};
        const char* owner = "";
        if (reply)
            g_variant_get(reply.get(), "(&s)", &owner);
        return owner == std::string(g_dbus_connection_get_unique_name(m_connection.get()));
    }

private:
    base::GObjectPtr<GDBusConnection> m_connection;
};

TEST_F(TheBusEnds, HoldTheNameWithoutAGapUntilTheServiceGoes)
{
    const Bus bus;
    start();
    EXPECT_TRUE(bus.ownsTheName());
    for (int round = 0; round < 2; ++round) {
        journal::clear();
        application()->dbusClientObjectCreated(true);
        EXPECT_TRUE(bus.ownsTheName()) << "released with the former service";
        EXPECT_TRUE(toolkit::runUntil([&] {
            EXPECT_TRUE(bus.ownsTheName());
            return journal::has("I End m_OnBusAcquired");
        }));
    }
    toolkit::runUntil([] { return false; }, 0.2); // the library's own request
    EXPECT_TRUE(bus.ownsTheName());
    CTesselUI::OnTerminate(nullptr);
    EXPECT_FALSE(bus.ownsTheName());
}

TEST_F(TheBusEnds, SurviveABusThatDiesBetweenProxyAndName)
{
    CTesselUI::OnCreate(nullptr);
    ASSERT_TRUE(toolkit::runUntil([] { return journal::has("I End ReconnectDbus"); }));
    ASSERT_FALSE(journal::has("I Start m_OnBusAcquired"));
    {
        const Bus bus;
        g_dbus_connection_close_sync(bus.get(), nullptr, nullptr);
    }
    EXPECT_TRUE(toolkit::runUntil([] { return journal::count("I End m_OnBusAcquired") == 2; }))
        << "a bus that is there is tried again";
    EXPECT_EQ(journal::count("E The connection to the bus was closed"), 1);
    EXPECT_TRUE(journal::has("I The bus is back"));
    EXPECT_EQ(told(1), Calls {"ServerStarted true"});
    EXPECT_TRUE(Bus().ownsTheName());
}

TEST_F(TheBusEnds, CopyNoMoreOfAValueThanThereIs)
{
    const base::VariantPtr value {g_variant_ref_sink(g_variant_new("(i)", 0x01020304))};
    char out[8];
    memset(out, '#', sizeof out);
    for (int room : {2, 8}) {
        memset(out, '#', sizeof out);
        CTesselUIDbus::getParams(value.get(), out, room);
        const int copied = std::min(room, 4);
        EXPECT_EQ(std::string(out + copied, sizeof out - copied), std::string(sizeof out - copied, '#'));
        EXPECT_EQ(std::count(out, out + copied, '#'), 0);
    }
    CTesselUIDbus::getParams(value.get(), out, -1);
    CTesselUIDbus::getParams(nullptr, out, 4);
    CTesselUIDbus::getParams(value.get(), nullptr, 4);
}

} // namespace
