/// The thread that talks to the speech service, without the rest of the program.
#include "flux/Speech.h"
#include "Folders.h"
#include "SpeechServer.h"
#include "Wait.h"

#include <algorithm>
#include <chrono>
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

Lines texts(const SpeechServer& service)
{
    Lines result = service.told();
    const auto isNoText = [](const std::string& line) { return line.compare(0, 2, "> ") != 0; };
    result.erase(std::remove_if(result.begin(), result.end(), isNoText), result.end());
    return result;
}

TEST_F(Spoken, IsTheNewestOfWhatCameAtOnceAndWhatBeginsWithADot)
{
    const SpeechServer service(m_socket);
    std::optional<Speech> owner(std::in_place);
    Speech& speech = *owner;
    speech.say({"first", "en"});
    ASSERT_TRUE(waitUntil([&] { return texts(service).size() == 1; }));
    for (int i = 0; i < 1000; ++i) {
        speech.say({std::to_string(i), "en"});
        if (i % 3 == 0)
            speech.silence();
    }
    speech.say({".5 metres", "pt-br"});
    ASSERT_TRUE(waitUntil([&] { return !texts(service).empty() && texts(service).back() == "> ..5 metres"; }))
        << testing::PrintToString(texts(service));
    const Lines told = service.told();
    EXPECT_EQ(told[told.size() - 3], "SET SELF LANGUAGE pt-br");
    bool isSpeaking = false;
    for (const std::string& line : told) {
        const bool isText = line[0] == '>';
        EXPECT_FALSE(isText && isSpeaking) << "spoken over something else: " << line;
        isSpeaking = isText || (isSpeaking && line != "CANCEL SELF");
    }
    owner.reset();
    EXPECT_TRUE(waitUntil([&] { return service.told().back() == "CANCEL SELF"; })) << "it goes on without us";
}

TEST_F(Spoken, IsNothingOfWhatWasSilencedWhileTheServiceWasStuck)
{
    std::optional<SpeechServer> service(std::in_place, m_socket, SpeechServer::Manner::IsSilent);
    std::optional<Speech> stuck(std::in_place);
    stuck->say({"one", "en"});
    ASSERT_TRUE(waitUntil([&] { return service->visits() > 0; }));
    stuck->say({"two", "en"});
    stuck->silence();
    const auto begin = std::chrono::steady_clock::now();
    stuck.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1)) << "its end is waited for";
    service.emplace(m_socket);
    Speech speech;
    speech.say({"three", "en"});
    EXPECT_TRUE(waitUntil([&] { return !texts(*service).empty(); }));
    EXPECT_EQ(texts(*service), Lines {"> three"});
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
