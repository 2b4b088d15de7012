// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The program when it is asked for too much at once, and when the machine has nothing left to give it.
#include "Cards.h"
#include "TvTest.h"

#include <csignal>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iostream>

#include <sys/resource.h>

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
        clockid_t clock {};
        timespec time {};
        EXPECT_EQ(clock_getcpuclockid(box.program->pid(), &clock), 0);
        clock_gettime(clock, &time);
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
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

TEST_F(AFlood, CostsWithItsNumberIsServedInOrderAndLetsSettingsAndSignalsThrough)
{
    ASSERT_TRUE(box.start());
    costOf(40); // whatever the first popups need
    const double few = costOf(60);
    const size_t mark = box.program->mark();
    const double many = costOf(240);
    EXPECT_LT(many, 8 * few) << "60 calls cost " << few << " s, 240 " << many << " s";
    std::cout << "    60 calls cost " << few << " s, 240 " << many << " s\n";
    std::vector<std::string> order;
    for (size_t i = 0; i < 240; ++i)
        order.push_back("Pin = " + std::to_string(i));
    EXPECT_TRUE(box.program->logsInOrder(order, mark));
    EXPECT_EQ(box.daemon->replies(), std::vector<std::string>(answers(), tv::kTaken));

    const size_t all = answers() + 1500;
    const size_t some = answers() + 20;
    send(1500);
    ASSERT_TRUE(waitUntil([&] { return answers() > some; }));
    ASSERT_TRUE(box.setStartMode(99));
    ASSERT_LT(answers(), all) << "the calls are over before the setting was seen";
    box.program->signal(SIGTERM);
    // A second on a machine that has nothing else to do; without turns in between it takes minutes.
    EXPECT_EQ(box.program->waitForExit(tv::Milliseconds(4000)), 0);
    ASSERT_TRUE(waitUntil([&] { return answers() == all; }));
    EXPECT_NE(box.daemon->replies().back(), tv::kTaken) << "a call that was not served counts as served";
#ifndef __SANITIZE_ADDRESS__ // with which it is too slow for the time that it has to tidy up
    EXPECT_TRUE(box.program->logged("In CTesselUI::Main after loop"));
#endif
    EXPECT_TRUE(box.screenIsPlain());
}

class AClockThatIsSet : public tv::TvTest { };

TEST_F(AClockThatIsSet, ChangesNeitherCountdownsNorWhatIsAskedForNext)
{
    constexpr std::chrono::hours kDay {24};
    box.bringClock();
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.show(tv::kPinRequest));
    int left = 58;
    for (const auto ahead : {400 * kDay, -400 * kDay}) {
        const std::string tick = "++PBC Timer Entered [" + std::to_string(left--) + "]";
        ASSERT_TRUE(box.program->waitForLog(tick));
        box.setClock(ahead);
        const auto from = std::chrono::steady_clock::now();
        const std::string next = "++PBC Timer Entered [" + std::to_string(left--) + "]";
        ASSERT_TRUE(box.program->waitForLog(next));
        const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - from;
        EXPECT_GT(passed.count(), 0.5);
        EXPECT_LT(passed.count(), 5) << "a second, on a busy machine";
        EXPECT_EQ(box.program->count("++PBC Timer Entered *"), static_cast<size_t>(60 - left));
    }
    // Requests and the answer are files, with times of before and after.
    ASSERT_TRUE(box.settings.setText(tv::kRequest, R"({"page":"tnc"})"));
    EXPECT_TRUE(box.shows({tv::kTermsCard}));
    box.setClock(kDay);
    ASSERT_TRUE(box.show(tv::kPinRequest));
    ASSERT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(endedByViewer(true));
}

class WithLittleLeft : public tv::TvTest {
protected:
    std::filesystem::path process() const { return "/proc/" + std::to_string(box.program->pid()); }

    /// Bounds what the program may have from now on, and waits a while. @return whether it still runs
    bool lives(__rlimit_resource resource, rlim_t bound, const std::function<void()>& meanwhile) const
    {
        rlimit before {};
        prlimit(box.program->pid(), resource, nullptr, &before);
        const rlimit now {bound, before.rlim_max};
        EXPECT_EQ(prlimit(box.program->pid(), resource, &now, nullptr), 0);
        meanwhile();
        const bool goesOn = tv::stays([&] { return box.program->running(); }, tv::Milliseconds(1000));
        prlimit(box.program->pid(), resource, &before, nullptr);
        return goesOn;
    }
};

TEST_F(WithLittleLeft, ItCostsNoMoreThanTheRequestsOfThatTime)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizers look at an object's type through a pipe, and need more addresses than "
                    "any bound leaves";
#endif
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.show(tv::kPinRequest));
    const auto open = std::distance(
        std::filesystem::directory_iterator(process() / "fd"), std::filesystem::directory_iterator());
    ASSERT_TRUE(lives(RLIMIT_NOFILE, static_cast<rlim_t>(open - 4), [&] {
        for (const tv::ShownRequest& request : tv::kRequests)
            EXPECT_TRUE(box.request(request.method, request.texts));
        EXPECT_TRUE(box.settings.setText(tv::kRequest, R"({"page":"tnc"})"));
    })) << "no descriptor was left";
    ASSERT_TRUE(box.settings.setText(tv::kRequest, R"({"page":"tnc"})"));
    EXPECT_TRUE(box.shows({tv::kTermsCard}));

    rlim_t pages = 0;
    std::ifstream(process() / "statm") >> pages;
    ASSERT_TRUE(lives(RLIMIT_AS, pages * 4096 + (rlim_t {24} << 20), [&] {
        const std::string huge(size_t {15} << 20, 'x');
        EXPECT_TRUE(
            box.settings.setText(tv::kRequest, R"({"page":"pin","pin":"1","mobilename":")" + huge + "\"}"));
    })) << "no memory was left for a value";
    ASSERT_TRUE(box.show(tv::kPinRequest));
    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(endedByViewer(true));
}

} // namespace
