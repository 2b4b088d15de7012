// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "wizard.h"

#include "names/Environment.h"
#include "names/Places.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int kCannotRun = 127; // as a shell has it
constexpr int kSignalBase = 128;

std::vector<char*> checkedArguments(int argc, char** argv)
{
    if (argc < 1 || !argv)
        throw std::invalid_argument("no arguments for the wizard");
    std::vector<char*> arguments(argv, argv + argc);
    for (const char* argument : arguments) {
        if (!argument)
            throw std::invalid_argument("a null argument for the wizard");
    }
    arguments.push_back(nullptr);
    return arguments;
}

int fail(const char* program, int error)
{
    fprintf(stderr, "cannot run the set-up wizard %s: %s\n", program, strerror(error));
    return kCannotRun;
}

constexpr int kPassedOn[] = {SIGTERM, SIGINT, SIGHUP};

volatile pid_t s_wizard = 0; ///< 0 while there is none

/// What a terminal sends goes to all of its programs, and so to the wizard, too.
void on_signal(int number, siginfo_t* info, void*)
{
    const int error = errno;
    if (s_wizard > 0 && info->si_code <= 0)
        kill(s_wizard, number);
    errno = error;
}

/// Passes the signals that ask for an end on to the wizard while it lives: the end is the wizard's to make.
/// They are held back until it is known whom to pass them on to.
class PassedOnSignals {
public:
    PassedOnSignals()
    {
        struct sigaction pass = {};
        pass.sa_sigaction = on_signal;
        pass.sa_flags = SA_SIGINFO;
        sigemptyset(&pass.sa_mask);
        sigset_t held;
        sigemptyset(&held);
        for (int number : kPassedOn)
            sigaddset(&held, number);
        pthread_sigmask(SIG_BLOCK, &held, &m_mask);
        for (std::size_t i = 0; i < std::size(kPassedOn); ++i)
            sigaction(kPassedOn[i], &pass, &m_former[i]);
    }
    ~PassedOnSignals()
    {
        s_wizard = 0;
        for (std::size_t i = 0; i < std::size(kPassedOn); ++i)
            sigaction(kPassedOn[i], &m_former[i], nullptr);
        letCome();
    }
    PassedOnSignals(const PassedOnSignals&) = delete;
    PassedOnSignals& operator=(const PassedOnSignals&) = delete;

    const sigset_t& callersMask() const { return m_mask; }

    void passOnTo(pid_t wizard)
    {
        s_wizard = wizard;
        letCome();
    }

private:
    void letCome() { pthread_sigmask(SIG_SETMASK, &m_mask, nullptr); }

    sigset_t m_mask {};
    struct sigaction m_former[std::size(kPassedOn)] = {};
};

/// What a program begins with: the caller's mask, and SIGPIPE as everybody expects it, whoever ignores it
/// here.
class StartAttributes {
public:
    explicit StartAttributes(const sigset_t& mask)
    {
        posix_spawnattr_init(&m_attributes);
        sigset_t standard;
        sigemptyset(&standard);
        sigaddset(&standard, SIGPIPE);
        posix_spawnattr_setsigdefault(&m_attributes, &standard);
        posix_spawnattr_setsigmask(&m_attributes, &mask);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    }
    ~StartAttributes() { posix_spawnattr_destroy(&m_attributes); }
    StartAttributes(const StartAttributes&) = delete;
    StartAttributes& operator=(const StartAttributes&) = delete;

    const posix_spawnattr_t* get() const { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes {};
};

} // namespace

int Wizard::StartWizardApp(int argc, char** argv, const char* appId, CWizardAppLazyHandler*)
{
    std::vector<char*> arguments = checkedArguments(argc, argv);
    if (!appId || !*appId)
        throw std::invalid_argument("no application id for the wizard");

    const char* chosen = std::getenv(orbis::names::kWizardVariable);
    const char* program = chosen && *chosen ? chosen : orbis::names::kWizard;
    PassedOnSignals signals;
    const StartAttributes attributes(signals.callersMask());
    pid_t process = 0;
    const int error = posix_spawnp(&process, program, nullptr, attributes.get(), arguments.data(), environ);
    if (error != 0)
        return fail(program, error);
    signals.passOnTo(process);

    int status = 0;
    while (waitpid(process, &status, 0) < 0) {
        if (errno != EINTR)
            return fail(program, errno);
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : kSignalBase + WTERMSIG(status);
}
