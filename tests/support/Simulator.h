// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The set-up daemon's simulator that comes with the program, told what to do line by line.
#pragma once

#include "Process.h"

namespace tv {

class Simulator : public Process {
public:
    /// @param options  beside those that every test wants
    Simulator(const std::vector<std::string>& options, const std::vector<std::string>& environment)
        : Process(commandOf(options), environment)
    {
    }

    /// @return its next line, "" when it has ended or says nothing for longer than any scenario waits
    std::string next()
    {
        constexpr Milliseconds kLongestWait {30000};
        waitUntil([this] { return output().size() > m_read || !running(); }, kLongestWait);
        return output().size() > m_read ? output()[m_read++] : "";
    }

    /// @return whether @p line comes, whatever comes before it
    bool says(const std::string& line)
    {
        for (std::string each; !(each = next()).empty();) {
            if (each == line)
                return true;
        }
        return false;
    }

private:
    static std::vector<std::string> commandOf(const std::vector<std::string>& options)
    {
        std::vector<std::string> command {BIN_DIR "/tessel-daemon-sim", "--end-after-stop", "never"};
        command.insert(command.end(), options.begin(), options.end());
        return command;
    }

    size_t m_read = 0; ///< lines of its output
};

} // namespace tv
