#include "Processes.h"
#include "StoreFixture.h"

#include <filesystem>
#include <fstream>
#include <memory>

class AStorm : public StoreFixture { };

TEST_F(AStorm, OfWritersShowsNoHalfValueAndDeliversTheLast)
{
    // A text tells whether it is whole: it is one letter, from end to end, as often as that letter has it.
    const auto some = [](int number) {
        return std::string(
            1 + 400U * (static_cast<unsigned int>(number) % 26), static_cast<char>('a' + number % 26));
    };
    int bad = 0;
    std::string last;
    const Watch watch("memory/storm", [&] {
        last = text("memory/storm").value_or("");
        bad += last.empty() || last != some(last[0] - 'a');
    });
    std::vector<std::unique_ptr<Child>> writers;
    for (int writer = 0; writer < 4; ++writer) {
        writers.push_back(std::make_unique<Child>([=] {
            int failures = 0;
            for (int i = 0; i < 400; ++i)
                failures += vconf_set_str("memory/storm", some(writer + i).c_str()) != VCONF_OK;
            return failures;
        }));
    }
    for (const auto& writer : writers) {
        EXPECT_TRUE(runUntil([&] { return writer->wait(WNOHANG).has_value(); }, 120));
        EXPECT_EQ(writer->wait(WNOHANG), 0);
    }
    EXPECT_TRUE(runUntil([&] { return last == text("memory/storm"); }));
    EXPECT_EQ(bad, 0);
}

TEST_F(AStorm, DuringASleepOfTheWatcherLosesNothing)
{
    const int room = std::stoi(readFile("/proc/sys/fs/inotify/max_queued_events"));
    const Watch first("memory/first");
    const Watch second("memory/second");
    // The quickest events that fill its queue; like ones in a row would count as one.
    for (int i = 0; i < room + 100; ++i)
        std::ofstream(runtime() + (i % 2 ? "/memory/one" : "/memory/another"));
    vconf_set_str("memory/first", "last"); // the events of these are dropped
    vconf_set_str("memory/second", "last");
    EXPECT_TRUE(first.called() && second.called());
}
