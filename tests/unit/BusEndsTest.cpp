// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The two ends of the bus: late callbacks, the name, and a bus that goes at a bad moment.
#include "Cookie.h"
#include "Fixtures.h"
#include "TesselDbusClient.h"
#include "TesselUI.h"
#include "TesselUIDbus.h"

namespace {

using namespace TesselUI;

using TheBusEnds = ApplicationTest;

TEST_F(TheBusEnds, IgnoreCallbacksOfObjectsThatAreGone)
{
    start();
    journal::clear();
    {
        TesselDbusClient gone(CTesselUI::getInstance());
    }
    EXPECT_TRUE(toolkit::runUntil([] { return journal::has("I Object ALreay Deleted"); }));
    EXPECT_FALSE(journal::has("I Start CTesselUIDbus::Create"));

    const Cookie<CTesselUIDbus> before {nullptr};
    {
        CTesselUIDbus service(std::make_shared<UIManager>(), CTesselUI::getInstance());
        EXPECT_TRUE(service.destroy());
        EXPECT_TRUE(service.destroy());
    }
    toolkit::settle();
    journal::clear();
    CTesselUIDbus::m_OnBusAcquired(nullptr, "name", GINT_TO_POINTER(before.id() + 1));
    EXPECT_EQ(journal::lines(),
        (std::vector<std::string> {"I Start m_OnBusAcquired", "E Could Not get Instance or deleted"}));
}

TEST_F(TheBusEnds, HoldTheNameWithoutAGapUntilTheServiceGoes)
{
    start();
    const auto onVanished = [](GDBusConnection*, const char*, gpointer) {
        journal::note("the name is free");
    };
    const auto onAppeared = [](GDBusConnection*, const char*, const char*, gpointer) {
        journal::note("owned");
    };
    const guint watch = g_bus_watch_name(G_BUS_TYPE_SYSTEM, "com.norvale.orbis.tessel.ui",
        G_BUS_NAME_WATCHER_FLAGS_NONE, onAppeared, onVanished, nullptr, nullptr);
    ASSERT_TRUE(toolkit::runUntil([] { return journal::has("T owned"); }));
    for (int round = 0; round < 2; ++round) {
        journal::clear();
        CTesselUI::getInstance()->dbusClientObjectCreated(true);
        EXPECT_TRUE(toolkit::runUntil([] { return journal::has("I End m_OnBusAcquired"); }));
        toolkit::runUntil([] { return false; }, 0.2); // the library's own request
        EXPECT_FALSE(journal::has("T the name is free")) << "released with the former service";
    }
    CTesselUI::OnTerminate(nullptr);
    EXPECT_TRUE(toolkit::runUntil([] { return journal::has("T the name is free"); }));
    g_bus_unwatch_name(watch);
}

TEST_F(TheBusEnds, SurviveABusThatDiesBetweenProxyAndName)
{
    CTesselUI::OnCreate(nullptr);
    ASSERT_TRUE(toolkit::runUntil([] { return journal::has("I End ReconnectDbus"); }));
    ASSERT_FALSE(journal::has("I Start m_OnBusAcquired"));
    GDBusConnection* bus = g_bus_get_sync(G_BUS_TYPE_SYSTEM, nullptr, nullptr);
    g_dbus_connection_set_exit_on_close(bus, FALSE);
    g_dbus_connection_close_sync(bus, nullptr, nullptr);
    g_object_unref(bus);
    EXPECT_TRUE(toolkit::runUntil([] { return journal::count("I End m_OnBusAcquired") == 2; }))
        << "a bus that is there is tried again";
    EXPECT_EQ(journal::count("E The connection to the bus was closed"), 1);
    EXPECT_TRUE(journal::has("I The bus is back"));
}

} // namespace
