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

TEST_F(TheBusEnds, SayTheStopIsLostWithoutAProxy)
{
    TesselDbusClient client(application());
    journal::clear();
    client.stopTessel(true, false);
    EXPECT_EQ(journal::lines(), (Calls {"I Stop Tessel", "I Entry", "E No Proxy Object found"}));
    CTesselUI::stopTesselRequest(true, true);
    EXPECT_EQ(setting("db/menu/network/tessel_startmode"), "5") << "there is no client at all yet";
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
