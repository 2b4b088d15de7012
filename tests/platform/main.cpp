#include <Ecore.h>
#include <csignal>
#include <cstdio>
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
    const int left = ecore_shutdown();
    if (left != 0)
        fprintf(stderr, "%d users of the main loop are left\n", left);
    return result != 0 || left != 0;
}
