#include "wizard.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int kCannotRun = 127; // as a shell has it
constexpr int kSignalBase = 128;
constexpr char kStandardWizard[] = "/usr/apps/org.orbis.wizard/bin/wizard";

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

/// Logging makes this process ignore SIGPIPE, and programs inherit that.
class PipeSignalDefault {
public:
    PipeSignalDefault()
    {
        sigset_t signals;
        sigemptyset(&signals);
        sigaddset(&signals, SIGPIPE);
        posix_spawnattr_init(&m_attributes);
        posix_spawnattr_setsigdefault(&m_attributes, &signals);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGDEF);
    }
    PipeSignalDefault(const PipeSignalDefault&) = delete;
    PipeSignalDefault& operator=(const PipeSignalDefault&) = delete;
    ~PipeSignalDefault() { posix_spawnattr_destroy(&m_attributes); }
    const posix_spawnattr_t* get() const { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes = {};
};

int fail(const char* program, int error)
{
    fprintf(stderr, "cannot run the set-up wizard %s: %s\n", program, strerror(error));
    return kCannotRun;
}

} // namespace

int Wizard::StartWizardApp(int argc, char** argv, const char* appId, CWizardAppLazyHandler*)
{
    std::vector<char*> arguments = checkedArguments(argc, argv);
    if (!appId || !*appId)
        throw std::invalid_argument("no application id for the wizard");

    const char* chosen = std::getenv("ORBIS_WIZARD");
    const char* program = chosen && *chosen ? chosen : kStandardWizard;
    pid_t process = 0;
    const PipeSignalDefault attributes;
    const int error = posix_spawnp(&process, program, nullptr, attributes.get(), arguments.data(), environ);
    if (error != 0)
        return fail(program, error);

    int status = 0;
    while (waitpid(process, &status, 0) < 0) {
        if (errno != EINTR)
            return fail(program, errno);
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : kSignalBase + WTERMSIG(status);
}
