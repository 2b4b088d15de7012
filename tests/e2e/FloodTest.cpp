/// Calls that are sent at once: their cost grows with their number only, and the rest of the TV is heard
/// between them.
#include "TvTest.h"

#include <csignal>
#include <sstream>
#include <unistd.h>

namespace {

using tv::waitUntil;

constexpr tv::Milliseconds kPatience {120000};

class AFlood : public tv::TvTest {
protected:
    /// Sends calls that each replace the popup before, without waiting.
    void send(size_t count)
    {
        for (size_t i = 0; i < count; ++i)
            box.daemon->send("ShowPinPopup", {"Anna's phone", std::to_string(i)}, kPatience);
    }
    size_t answers() const { return box.daemon->replies().size(); }

    /// @return the seconds of processor time that the program has used
    double used() const
    {
        std::istringstream stat(tv::readFile("/proc/" + std::to_string(box.program->pid()) + "/stat"));
        std::string word;
        double ticks = 0;
        for (int field = 1; stat >> word && field <= 15; ++field) {
            if (field >= 14)
                ticks += std::stod(word);
        }
        return ticks / static_cast<double>(sysconf(_SC_CLK_TCK));
    }

    /// @return the processor time that @p count calls cost
    double costOf(size_t count)
    {
        const double before = used();
        const size_t all = answers() + count;
        send(count);
        EXPECT_TRUE(waitUntil([&] { return answers() == all; }, kPatience));
        return used() - before;
    }
};

TEST_F(AFlood, CostsWithTheNumberOfItsCallsAndIsServedInOrder)
{
    ASSERT_TRUE(box.start());
    costOf(50); // whatever the first popups need
    const double few = costOf(100);
    const size_t mark = box.program->mark();
    const double many = costOf(400);
    EXPECT_LT(many, 8 * few) << "100 calls cost " << few << " s, 400 " << many << " s";
    std::cout << "100 calls cost " << few << " s, 400 " << many << " s\n";
    RecordProperty("100_calls_ms", static_cast<int>(few * 1000));
    RecordProperty("400_calls_ms", static_cast<int>(many * 1000));

    std::vector<std::string> order;
    for (size_t i = 0; i < 400; ++i) {
        order.emplace_back("Call ShowPinPopup method");
        order.push_back("Pin = " + std::to_string(i));
    }
    EXPECT_TRUE(box.program->logsInOrder(order, mark));
    for (const tv::Reply& reply : box.daemon->replies())
        ASSERT_EQ(reply.value, "(0,)") << reply.error;
}

TEST_F(AFlood, LetsSettingsKeysAndSignalsThroughAndIsRefusedAtTheEnd)
{
    constexpr size_t kCalls = 1500;
    ASSERT_TRUE(box.start());
    send(kCalls);
    ASSERT_TRUE(waitUntil([&] { return answers() > 20; }));
    ASSERT_TRUE(box.setStartMode(99));
    ASSERT_LT(answers(), kCalls) << "the calls are over before the setting was seen";
    box.program->signal(SIGTERM);
    // A second on a machine that has nothing else to do; without turns in between it takes minutes.
    EXPECT_EQ(box.program->waitForExit(tv::Milliseconds(4000)), 0);
    ASSERT_TRUE(waitUntil([&] { return answers() == kCalls; }));
    EXPECT_EQ(box.daemon->replies().back().value, "") << "a call that was not served counts as served";
    EXPECT_TRUE(box.program->logged("In CTesselUI::Main after loop"));
    EXPECT_TRUE(box.screenIsPlain());
}

} // namespace
