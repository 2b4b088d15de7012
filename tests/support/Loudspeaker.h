// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A real speech service, and a recording of what comes out of it.
#ifndef TESSEL_TESTS_LOUDSPEAKER_H
#define TESSEL_TESTS_LOUDSPEAKER_H

#include "Folders.h"
#include "Process.h"

#include <gtest/gtest.h>

namespace tv {

/// speech-dispatcher with eSpeak NG on a sound server of its own, whose only output goes nowhere but into a
/// file.
class Loudspeaker {
public:
    /// @param folders  where all of it lies; must outlive this
    /// @param socket   path where programs find the service
    /// @throws std::runtime_error when one of the programs cannot be started
    Loudspeaker(const Folders& folders, const std::string& socket);

    /// Waits until the service can be asked and the recording runs.
    testing::AssertionResult isReady() const;
    /// @return the tenths of a second that have been recorded
    size_t tenths() const { return loudness().size(); }
    /// @return how many tenths since @p begin one could hear
    size_t loudTenths(size_t begin = 0) const;
    /// Waits until nothing has been heard for @p silence tenths, since @p begin at the earliest.
    bool fallsSilent(size_t begin, size_t silence) const;

private:
    std::vector<int> loudness() const;

    std::filesystem::path m_folder;
    std::string m_socket;
    std::vector<std::string> m_environment;
    std::optional<Process> m_soundServer;
    std::optional<Process> m_recorder;
    std::optional<Process> m_service;
};

} // namespace tv

#endif
