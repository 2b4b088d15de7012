// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "TvTest.h"

#include <iostream>

namespace tv {

void TvTest::SetUpTestSuite()
{
    if (!s_bus)
        s_bus = std::make_unique<PrivateBus>();
    if (!s_display)
        s_display = std::make_unique<Display>();
}

void TvTest::TearDown()
{
    if (HasFailure())
        std::cout << box.report();
    // What a case has ended, or a failed one may have left in any state, is there again for the next.
    s_bus->goOn();
    if (HasFailure() || !s_bus->isUp())
        s_bus->restart();
    if (HasFailure() || !s_display->isUp())
        s_display->start();
}

testing::AssertionResult TvTest::endedByViewer(bool readySet)
{
    if (auto ended = box.program->endsWith(0); !ended)
        return ended;
    const std::vector<std::string> expected {"ServerStarted true", "StopTessel true false"};
    if (box.daemon->calls() != expected)
        return testing::AssertionFailure() << "the daemon did not receive exactly one stop by the viewer";
    return isMarkedAsStopped(readySet);
}

testing::AssertionResult TvTest::isMarkedAsStopped(bool readySet)
{
    if (box.settings.getInt(kStartMode) != 5)
        return testing::AssertionFailure() << "the start-mode key is not 5";
    return testing::AssertionResult((box.settings.getInt(kReady) == 1) == readySet)
        << "the ready key is " << (readySet ? "not " : "") << "1";
}

} // namespace tv
