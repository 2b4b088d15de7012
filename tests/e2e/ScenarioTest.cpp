// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Whole sessions of the simulator that comes with the program, played with real keys. Where a scenario
/// pauses the viewer looks at the screen; the pauses themselves are left out.
#include "Cards.h"
#include "TvTest.h"

#include <algorithm>
#include <set>

namespace {

using tv::below;
using tv::confirmation;
using Look = std::vector<tv::Card>; ///< the popups at one moment, lowest first

struct Session {
    const char* scenario;
    std::vector<Look> looks; ///< one a pause
};

const tv::Card kPin = tv::pinCard("Anna's phone", "0427");
const tv::Card kLastPin = tv::pinCard("Berta's phone", "3333");
const tv::Card kTestUnderQuestion = below(tv::kNetworkTestCard);
const tv::Card kSignInUnderQuestion = below(tv::kSignInCard);

const Session kSessions[] = {
    {"first-session",
        {{tv::kGuideCard}, {kPin}, {tv::kAccessPointsCard}, {tv::kTermsCard}, {tv::kFailedCard}}},
    {"success",
        {{tv::kGuideCard}, {kPin}, {tv::kAccessPointsCard}, {tv::kNetworkTestCard}, {tv::kSignInCard},
            {tv::kTermsCard}, {}, {tv::kOwnedCard}}},
    {"wifi-failure", {{kPin}, {tv::kAccessPointsCard}, {tv::kNetworkTestCard}, {tv::kFailedCard}}},
    {"sign-in-failure", {{tv::kNetworkTestCard}, {tv::kSignInCard}, {tv::kFailedCard}, {tv::kFailedCard}}},
    {"cancel-at-guide", {{tv::kGuideCard}, {tv::withFocusOn("Continue with TV remote", tv::kGuideCard)}}},
    {"cancel-at-pin", {{tv::kGuideCard}, {kPin}}},
    {"cancel-at-access-points", {{tv::kGuideCard}, {tv::kAccessPointsCard}, {kPin}, {tv::kAccessPointsCard}}},
    {"cancel-at-network-test", {{kPin}, {tv::kNetworkTestCard}, {kTestUnderQuestion, confirmation("Yes")}}},
    {"cancel-at-sign-in",
        {{tv::kSignInCard}, {kSignInUnderQuestion, confirmation("Yes")},
            {kSignInUnderQuestion, confirmation("No")}, {tv::kSignInCard},
            {kSignInUnderQuestion, confirmation("Yes")}}},
    {"cancel-at-terms", {{tv::kSignInCard}, {tv::kTermsCard}}},
    {"owned-during-popup",
        {{kPin}, {tv::kOwnedCard}, {tv::kOwnedQuestion}, {tv::kOwnedCard}, {tv::kOwnedQuestion},
            {tv::withFocusOn("Yes", tv::kOwnedQuestion)}}},
    {"quick-succession", {{kLastPin}, {kLastPin}}},
    {"daemon-restart", {{kPin}, {kPin}, {tv::kNetworkTestCard}, {tv::kTermsCard}}},
};

std::filesystem::path scenarioFolder()
{
    return std::filesystem::path(tv::TvBox::binary("..")) / "share/tessel/scenarios";
}

class AScenario : public tv::TvTest, public testing::WithParamInterface<std::pair<Session, const char*>> { };

TEST_P(AScenario, ShowsTheViewerWhatItSaysAndEnds)
{
    const std::string kPresses = "viewer press ";
    const auto& [session, via] = GetParam();
    box.bringDaemon({"--with-viewer", "--scenario", session.scenario, "--via", via});
    box.program = box.launch();
    auto look = session.looks.begin();
    int stops = 0;
    for (std::string event; !(event = box.daemon->next()).empty();) {
        SCOPED_TRACE(event);
        EXPECT_NE(event.rfind("error", 0), 0U);
        if (event == "viewer looks") {
            ASSERT_NE(look, session.looks.end()) << "the scenario pauses more often than this test looks";
            ASSERT_TRUE(box.shows(*look++));
            box.daemon->tell("");
        } else if (event.rfind(kPresses, 0) == 0) {
            ASSERT_TRUE(box.press({event.substr(kPresses.size())}));
            box.daemon->tell("");
        } else if (event.rfind("received StopTessel", 0) == 0) {
            ++stops;
            EXPECT_TRUE(tv::waitUntil([&] { return box.settings.getInt(tv::kStartMode) == 5; }));
            const bool atPin = std::prev(look)->front().title == "PIN";
            EXPECT_EQ(box.settings.getInt(tv::kReady), atPin ? std::optional {1} : std::nullopt);
        }
    }
    EXPECT_EQ(box.daemon->waitForExit(), 0) << testing::PrintToString(box.daemon->output());
    EXPECT_EQ(box.daemon->errors(), std::vector<std::string> {});
    EXPECT_EQ(look, session.looks.end());
    EXPECT_TRUE(box.program->endsWith(0));
    EXPECT_TRUE(box.screenIsPlain());
    const auto text = tv::readFile(scenarioFolder() / (session.scenario + std::string(".scenario")));
    EXPECT_EQ(stops, text.find("\nwait StopTessel") != std::string::npos ? 1 : 0);
    EXPECT_EQ(box.program->complaints(), std::vector<std::string> {});
}

/// Every session over the bus; those whose requests are all that there are also through the store.
std::vector<std::pair<Session, const char*>> sessionsAndWays()
{
    std::vector<std::pair<Session, const char*>> result;
    for (const Session& session : kSessions) {
        const std::string name = session.scenario;
        result.emplace_back(session, "bus");
        if (name == "success" || name == "wifi-failure" || name == "owned-during-popup")
            result.emplace_back(session, "settings");
    }
    return result;
}

INSTANTIATE_TEST_SUITE_P(Played, AScenario, testing::ValuesIn(sessionsAndWays()), [](const auto& played) {
    std::string name = played.param.first.scenario + std::string("_") + played.param.second;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
});

TEST(TheScenarios, AreAllPlayed)
{
    std::set<std::string> shipped;
    for (const auto& file : std::filesystem::directory_iterator(scenarioFolder()))
        shipped.insert(file.path().stem());
    std::set<std::string> played;
    for (const Session& session : kSessions)
        played.insert(session.scenario);
    EXPECT_EQ(played, shipped);
}

} // namespace
