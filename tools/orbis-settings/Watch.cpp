// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Commands.h"

#include "vconf.h"

#include <Ecore.h>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Why the loop ended.
struct Outcome {
    int status = kSuccess;
};

void on_changed(keynode_t* node, void* data)
{
    if (printLine(lineOf(vconf_keynode_get_name(node))))
        return;
    // A reader that has seen enough is the ordinary end.
    if (errno != EPIPE)
        static_cast<Outcome*>(data)->status = failure("cannot write to standard output", errno);
    ecore_main_loop_quit();
}

Eina_Bool on_exitSignal(void*, int, void*)
{
    ecore_main_loop_quit();
    return ECORE_CALLBACK_DONE;
}

Eina_Bool on_readerGone(void*, Ecore_Fd_Handler*)
{
    ecore_main_loop_quit();
    return ECORE_CALLBACK_CANCEL;
}

/// Without a change to report there is no write that would fail: the pipe itself tells of its end.
Ecore_Fd_Handler* watchReader()
{
    struct stat status = {};
    if (fstat(STDOUT_FILENO, &status) != 0 || !(S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode)))
        return nullptr;
    return ecore_main_fd_handler_add(STDOUT_FILENO, ECORE_FD_ERROR, on_readerGone, nullptr, nullptr, nullptr);
}

/// @return whether each key is watched; standard error is told of the first that is not
bool watchAll(const std::set<std::string>& keys, Outcome& outcome)
{
    for (const std::string& key : keys) {
        errno = 0;
        if (vconf_notify_key_changed(key.c_str(), on_changed, &outcome) != VCONF_OK) {
            failure("cannot watch " + key, errno);
            return false;
        }
    }
    return true;
}

} // namespace

int watch(const Arguments& list)
{
    signal(SIGPIPE, SIG_IGN);
    setenv("ECORE_NO_SYSTEM_MODULES", "1", 1); // they would open the system bus
    // The first watch starts the toolkit, and knows how where there is no home directory.
    const std::set<std::string> keys(list.begin(), list.end());
    Outcome outcome;
    if (!watchAll(keys, outcome)) {
        outcome.status = kFailure;
    } else {
        ecore_init();
        ecore_event_handler_add(ECORE_EVENT_SIGNAL_EXIT, on_exitSignal, nullptr);
        watchReader();
        ecore_main_loop_begin();
        ecore_shutdown();
    }
    for (const std::string& key : keys)
        vconf_ignore_key_changed(key.c_str(), on_changed);
    return outcome.status;
}
