// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The thread that talks to the speech service, without the rest of the program.
#include "flux/Speech.h"
#include "Folders.h"
#include "SpeechServer.h"
#include "Wait.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <optional>

namespace {

using orbis::flux::Speech;
using tv::SpeechServer;
using tv::waitUntil;
using Lines = std::vector<std::string>;

class Spoken : public testing::Test {
protected:
    void SetUp() override
    {
        setenv("SPEECHD_ADDRESS", ("unix_socket:" + m_socket).c_str(), 1);
        setenv("SPEECHD_CMD", "/nonexistent", 1);
    }
    void TearDown() override
    {
        unsetenv("SPEECHD_ADDRESS");
        unsetenv("SPEECHD_CMD");
    }

    const tv::Folders m_folders;
    const std::string m_socket = (m_folders.root() / "speech").string();
};

TEST_F(Spoken, IsTheNewestOfWhatCameAtOnceAndNeverTwoAtATime)
{
    const SpeechServer service(m_socket);
    const auto hears = [&](const std::string& line) {
        return waitUntil([&] {
            const Lines told = service.told();
            return !told.empty() && told.back() == line;
        });
    };
    std::optional<Speech> speech(std::in_place);
    speech->say({"first", "en"});
    ASSERT_TRUE(hears("> first"));
    for (int i = 0; i < 1000; ++i) {
        speech->say({std::to_string(i), "en"});
        if (i % 3 == 0)
            speech->silence();
    }
    speech->say({".5 metres", "pt-br"});
    ASSERT_TRUE(hears("> ..5 metres")) << testing::PrintToString(service.told());
    bool isSpeaking = false;
    for (const std::string& line : service.told()) {
        const bool isText = line[0] == '>';
        EXPECT_FALSE(isText && isSpeaking) << "spoken over something else: " << line;
        isSpeaking = isText || (isSpeaking && line != "CANCEL SELF");
    }
    speech.reset();
    EXPECT_TRUE(hears("CANCEL SELF")) << "it goes on without us";
}

TEST_F(Spoken, IsNothingThatWouldLeaveTheMachine)
{
    setenv("SPEECHD_ADDRESS", "inet_socket:192.0.2.1:6560", 1);
    const orbis::flux::SpeechService service;
    EXPECT_EQ(service.socket, "");
    EXPECT_NE(service.problem, "");
    setenv("SPEECHD_ADDRESS", "nonsense:", 1);
    Speech speech;
    speech.say({"one", "en"});
    speech.silence();
}

} // namespace
