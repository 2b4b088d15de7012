// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include <Ecore.h>
#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    setenv("ECORE_NO_SYSTEM_MODULES", "1", 1);
    setenv("EINA_LOG_LEVEL", "0", 1);
    ecore_init();
    // The loop would reap the tests' own children and keep their results for itself.
    signal(SIGCHLD, SIG_DFL);
    const int result = RUN_ALL_TESTS();
    // Whatever held the loop alive beyond the tests has leaked.
    return result != 0 || ecore_shutdown() != 0;
}
