// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Tests of a platform layer, whichever it is, by what the program needs of it: docs/porting.md tells. They
/// use its public headers only.
#include "Application.h"

#include <Elementary.h>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>

namespace {

void setDefault(const char* variable, const char* value)
{
    setenv(variable, value, 0);
}

} // namespace

int main(int argc, char** argv)
{
    // On a canvas in memory, unless the caller wants to see it.
    for (const char* variable : {"ELM_DISPLAY", "ELM_ENGINE"})
        setDefault(variable, "buffer");
    setDefault("ECORE_NO_SYSTEM_MODULES", "1");
    setDefault("EINA_LOG_LEVEL", "0");
    setDefault("LC_ALL", "C.UTF-8");
    // An application ends its process at times, so it has one of its own.
    if (argc > 1 && std::strcmp(argv[1], "--application") == 0) {
        argv[1] = argv[0];
        return runApplication(argc - 1, argv + 1);
    }
    testing::InitGoogleTest(&argc, argv);
    elm_init(argc, argv);
    // The loop would reap the tests' own children and keep their results for itself.
    signal(SIGCHLD, SIG_DFL);
    const int result = RUN_ALL_TESTS();
    elm_shutdown();
    return result;
}
