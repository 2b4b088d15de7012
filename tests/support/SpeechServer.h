// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Stands for the machine's speech service: takes what it is told, and says nothing.
#ifndef TESSEL_TESTS_SPEECH_SERVER_H
#define TESSEL_TESTS_SPEECH_SERVER_H

#include "Handles.h"

#include <atomic>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace tv {

/// Listens in a thread of its own, so that it serves a test that is busy.
class SpeechServer {
public:
    enum class Manner {
        Answers,
        IsSilent, ///< takes everything and never answers
        Babbles, ///< answers what no speech service would
        DiesInItsAnswer, ///< to a text: ends the conversation within a line
    };

    /// @param path  of its socket; one that is there already is replaced
    /// @throws std::runtime_error when it cannot listen there
    explicit SpeechServer(const std::string& path, Manner manner = Manner::Answers);
    ~SpeechServer();
    SpeechServer(const SpeechServer&) = delete;
    SpeechServer& operator=(const SpeechServer&) = delete;

    void setManner(Manner manner) { m_manner = manner; }
    /// @return what it was told, in order: commands as they are written, and texts behind "> "; without what
    ///         only begins or ends a conversation or a text
    std::vector<std::string> told() const;
    /// @return how often somebody came to it
    int visits() const { return m_visits; }

private:
    void converse(GIOStream* guest);
    std::string answerTo(const std::string& line, bool& isText);

    std::string m_path;
    base::GObjectPtr<GSocketListener> m_listener {g_socket_listener_new()};
    base::GObjectPtr<GCancellable> m_end {g_cancellable_new()}; ///< ends the thread
    std::atomic<Manner> m_manner;
    std::atomic<int> m_visits {0};
    mutable std::mutex m_mutex; ///< of m_told
    std::vector<std::string> m_told;
    std::thread m_thread;
};

} // namespace tv

#endif
