// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The settings store as the program uses it, with keys that it knows.
#include "Processes.h"
#include "Watch.h"

#include <climits>
#include <map>
#include <memory>
#include <utility>

namespace {

constexpr const char* kRequest = "db/tessel/mobile_oobe"; // a text
constexpr const char* kStartMode = "db/menu/network/tessel_startmode"; // numbers
constexpr const char* kReady = "memory/menu/network/tessel_ocf_ready";

/// Puts back what the keys held.
class TheSettings : public testing::Test {
protected:
    TheSettings()
    {
        for (const char* key : {kStartMode, kReady}) {
            if (int value = 0; vconf_get_int(key, &value) == VCONF_OK)
                m_numbers[key] = value;
        }
    }
    ~TheSettings() override
    {
        for (const auto& [key, value] : m_numbers)
            vconf_set_int(key.c_str(), value);
        vconf_set_str(kRequest, m_request.value_or("").c_str());
    }

private:
    std::optional<std::string> m_request = text(kRequest);
    std::map<std::string, int> m_numbers;
};

using AWatch = TheSettings;

TEST_F(TheSettings, KeepValuesWithTheirTypeInEitherArea)
{
    for (const char* key : {kStartMode, kReady}) {
        for (const int value : {0, -1, INT_MAX, INT_MIN, 5}) {
            int read = 77;
            EXPECT_EQ(vconf_set_int(key, value), VCONF_OK);
            EXPECT_EQ(vconf_get_int(key, &read), VCONF_OK);
            EXPECT_EQ(read, value) << key;
        }
        EXPECT_EQ(text(key), std::nullopt) << "a number that is read as a text";
    }
    for (const std::string value : {R"({"page":"pin","pin":"0427"})", "12", "", "été 电视", "two\nlines"}) {
        EXPECT_EQ(vconf_set_str(kRequest, value.c_str()), VCONF_OK);
        EXPECT_EQ(text(kRequest), value);
        int read = 77;
        EXPECT_NE(vconf_get_int(kRequest, &read), VCONF_OK) << "a text that is read as a number";
        EXPECT_EQ(read, 77) << "failed readings leave the value alone";
    }
    EXPECT_EQ(text("db/orbis-conformance/none"), std::nullopt);
    int read = 77;
    EXPECT_NE(vconf_get_int("memory/orbis-conformance/none", &read), VCONF_OK);
    EXPECT_EQ(read, 77);
}

TEST_F(AWatch, HearsOfEveryWriteFromTheLoopAndReadsTheLastValue)
{
    int seen = 0;
    const Watch watch(kStartMode, [&] { vconf_get_int(kStartMode, &seen); });
    const Watch memory(kReady);
    vconf_set_int(kStartMode, 1);
    EXPECT_EQ(watch.calls(), 0) << "called from inside a write";
    EXPECT_TRUE(watch.called(1));
    vconf_set_int(kStartMode, 1);
    EXPECT_TRUE(watch.called(2)) << "the same value again";
    for (int i = 0; i <= 100; ++i)
        vconf_set_int(kStartMode, i);
    EXPECT_TRUE(runUntil([&] { return seen == 100; })) << "the last value of a burst";
    EXPECT_EQ(memory.calls(), 0) << "another key's";
    EXPECT_EQ(Child([] { return vconf_set_int(kReady, 1); }).wait(), 0);
    EXPECT_TRUE(memory.called()) << "another process's";
}

TEST_F(AWatch, MayEndItselfAndOthersAndBeginNewOnesInACallback)
{
    std::unique_ptr<Watch> added;
    Watch* other = nullptr;
    Watch* self = nullptr;
    Watch first(kStartMode, [&] {
        EXPECT_EQ(other->end(), VCONF_OK);
        EXPECT_EQ(self->end(), VCONF_OK);
        added = std::make_unique<Watch>(kStartMode);
    });
    Watch second(kStartMode, {}, Watch::also);
    const Watch last(kReady);
    other = &second;
    self = &first;
    vconf_set_int(kStartMode, 1);
    EXPECT_TRUE(first.called());
    vconf_set_int(kReady, 1);
    EXPECT_TRUE(last.called());
    vconf_set_int(kStartMode, 2);
    ASSERT_TRUE(added && added->called());
    EXPECT_EQ(first.calls(), 1);
    EXPECT_EQ(second.calls(), 0) << "ended before its turn";
    EXPECT_EQ(added->calls(), 1) << "only what came after it began";
}

} // namespace
