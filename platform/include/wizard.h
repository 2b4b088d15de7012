// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Set-up wizard: hands a launch over to the platform's set-up wizard.
#ifndef ORBIS_WIZARD_H
#define ORBIS_WIZARD_H

/// Hook for callers that load the wizard's parts on demand; this implementation has none to load.
class CWizardAppLazyHandler {
public:
    virtual ~CWizardAppLazyHandler() = default;
};

class Wizard {
public:
    /// Runs the program named by the environment variable ORBIS_WIZARD (by default
    /// /usr/apps/org.orbis.wizard/bin/wizard) with the given arguments and waits for its end.
    /// SIGTERM, SIGINT and SIGHUP are passed on to it meanwhile.
    /// @param argc     number of arguments, argv[0] included
    /// @param argv     borrowed; argv[0] is the caller's own name
    /// @param appId    borrowed; the calling application
    /// @param handler  borrowed, nullable
    /// @return the program's exit status, 128 + N when signal N ended it, or 127, with a message on
    ///         standard error, when it cannot be run
    /// @throws std::invalid_argument for argc below 1, a null argv, a null entry in it, or a null or
    ///         empty appId
    static int StartWizardApp(int argc, char** argv, const char* appId, CWizardAppLazyHandler* handler);
};

#endif
