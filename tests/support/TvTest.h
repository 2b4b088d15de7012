// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The fixture of whole-program tests: one bus and one display for all of a run, a new box for every test.
#ifndef TESSEL_TESTS_TV_TEST_H
#define TESSEL_TESTS_TV_TEST_H

#include "TvBox.h"

#include <gtest/gtest.h>

namespace tv {

class TvTest : public testing::Test {
protected:
    static void SetUpTestSuite();

    TvTest() = default;
    /// Tells, after a failure, what the program logged and what the daemon received; starts the bus and the
    /// display afresh when the case has ended them.
    void TearDown() override;

    /// Success when the program told the daemon of the viewer's stop and ended as it should: the daemon
    /// received StopTessel(true, false), the start-mode key is 5, the ready key is as @p readySet says, the
    /// status 0.
    testing::AssertionResult endedByViewer(bool readySet);
    /// Success when both keys are as they are after a stop by the viewer.
    testing::AssertionResult isMarkedAsStopped(bool readySet);

    static Display& display() { return *s_display; }
    static PrivateBus& bus() { return *s_bus; }

    TvBox box {*s_bus, *s_display};

private:
    inline static std::unique_ptr<PrivateBus> s_bus;
    inline static std::unique_ptr<Display> s_display;
};

} // namespace tv

#endif
