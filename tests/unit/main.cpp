// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// One start of the toolkit, one private bus and one settings store for all cases.

#include "Folders.h"
#include "Journal.h"
#include "PrivateBus.h"
#include "app/GLibBridge.h"

#include <Efreet.h>
#include <Elementary.h>

#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <optional>

namespace {

/// Shows what the program logged during a case that failed.
class ShowJournal : public testing::EmptyTestEventListener {
    void OnTestEnd(const testing::TestInfo& info) override
    {
        if (!info.result()->Failed())
            return;
        constexpr size_t kMost = 40;
        const auto lines = journal::lines();
        for (size_t i = lines.size() > kMost ? lines.size() - kMost : 0; i < lines.size(); ++i)
            printf("    | %.200s\n", lines[i].c_str());
    }
};

void setEnvironment(const tv::Folders& folders, const tv::PrivateBus& bus)
{
    static std::vector<std::string> s_variables = folders.environment();
    s_variables.push_back("DBUS_SYSTEM_BUS_ADDRESS=" + bus.address());
    for (const char* variable : {"ELM_DISPLAY=buffer", "ELM_ENGINE=buffer", "ECORE_NO_SYSTEM_MODULES=1",
             "EINA_FREEQ_BYPASS=1", "EINA_LOG_LEVEL=0", "LC_ALL=C.UTF-8", "LANGUAGE=en"})
        s_variables.emplace_back(variable);
    for (std::string& variable : s_variables)
        putenv(variable.data());
    unsetenv("ELM_SCALE");
    unsetenv("ORBIS_SPEECH_LOG");
    setlocale(LC_ALL, "");
}

} // namespace

// Sanitizers report on standard output, because standard error is the journal.
extern "C" __attribute__((visibility("default"))) const char* __asan_default_options()
{
    return "log_path=stdout";
}
extern "C" __attribute__((visibility("default"))) const char* __ubsan_default_options()
{
    return "log_path=stdout";
}

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new ShowJournal);
    const tv::Folders folders;
    const tv::PrivateBus bus;
    setEnvironment(folders, bus);
    journal::open();
    efreet_cache_disable();
    elm_init(argc, argv);
    // The loop would reap the tests' own children and keep their results for itself.
    signal(SIGCHLD, SIG_DFL);
    std::optional<orbis::app::GLibBridge> bridge {std::in_place};
    const int result = RUN_ALL_TESTS();
    bridge.reset();
    elm_shutdown();
    return result;
}
