// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/SpeechConnection.h"

#include "base/Handles.h"
#include "files/FileDescriptor.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <glib.h>
#include <string_view>
#include <utility>

namespace orbis::flux {

namespace {

constexpr const char* kClient = "orbis";
constexpr const char* kPurpose = "read-out";

/// A service that runs answers at once.
constexpr int kGreetingMs = 2000;

enum class Listener {
    None,
    Service,
    Silent, ///< takes no connection, or does not answer
    Other, ///< not a speech service
};

bool isAnswer(std::string_view line)
{
    constexpr size_t kDigits = 3;
    if (line.size() <= kDigits || (line[kDigits] != ' ' && line[kDigits] != '-'))
        return false;
    return line[0] >= '1' && line[0] <= '9' && g_ascii_isdigit(line[1]) && g_ascii_isdigit(line[2]);
}

/// Who answers at the socket. The library waits for an answer without a limit, and ends the process at one
/// that it does not know.
Listener whoListens(const std::string& path)
{
    constexpr std::string_view kGoodbye = "QUIT\r\n";
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path)
        return Listener::None;
    path.copy(address.sun_path, path.size());
    const files::FileDescriptor end(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!end)
        return Listener::Silent;
    if (connect(end.get(), reinterpret_cast<sockaddr*>(&address), sizeof address) != 0)
        return errno == EAGAIN ? Listener::Silent : Listener::None;
    pollfd readable {end.get(), POLLIN, 0};
    if (send(end.get(), kGoodbye.data(), kGoodbye.size(), MSG_NOSIGNAL) < 0
        || poll(&readable, 1, kGreetingMs) != 1)
        return Listener::Silent;
    char answer[64];
    const ssize_t length = recv(end.get(), answer, sizeof answer, 0);
    return length > 0 && isAnswer({answer, static_cast<size_t>(length)}) ? Listener::Service
                                                                         : Listener::Other;
}

/// @return what the library says of a failure, which may have several lines
std::string lineOf(const char* message)
{
    std::string line = message ? message : "";
    std::replace_if(
        line.begin(), line.end(), [](char c) { return g_ascii_iscntrl(c) != 0; }, ' ');
    return line.substr(0, line.find_last_not_of(' ') + 1);
}

} // namespace

SpeechService::SpeechService()
    : user(g_get_user_name())
{
    char* error = nullptr;
    const base::CHandle<SPDConnectionAddress, SPDConnectionAddress__free> address(
        spd_get_default_address(&error));
    const base::MallocStr message(error);
    // What is said may be a code: it does not leave the machine.
    if (!address || address->method != SPD_METHOD_UNIX_SOCKET || !address->unix_socket_name)
        problem = message ? lineOf(message.get()) : "its address is not a local socket";
    else
        socket = address->unix_socket_name;
}

SpeechConnection::SpeechConnection(SpeechService service, const sigset_t& signals)
    : m_service(std::move(service))
    , m_signals(signals)
    , m_problem(m_service.problem)
{
}

bool SpeechConnection::open()
{
    if (isOpen() || m_service.socket.empty())
        return isOpen();
    switch (whoListens(m_service.socket)) {
    case Listener::Service:
        return connect(false);
    case Listener::None:
        if (std::exchange(m_mayStart, false))
            return connect(true);
        m_problem = "it is not there";
        return false;
    case Listener::Silent:
        m_problem = "it does not answer";
        return false;
    case Listener::Other:
        m_problem = "it is not a speech service";
        return false;
    }
    return false;
}

bool SpeechConnection::connect(bool startsService)
{
    // A service that is started inherits the signals that this thread has blocked.
    sigset_t blocked;
    if (startsService)
        pthread_sigmask(SIG_SETMASK, &m_signals, &blocked);
    SPDConnectionAddress address {SPD_METHOD_UNIX_SOCKET, m_service.socket.data(), nullptr, 0, nullptr};
    char* error = nullptr;
    m_connection.reset(spd_open2(
        kClient, kPurpose, m_service.user.c_str(), SPD_MODE_SINGLE, &address, startsService ? 1 : 0, &error));
    const base::MallocStr message(error);
    if (startsService)
        pthread_sigmask(SIG_SETMASK, &blocked, nullptr);
    if (!isOpen())
        m_problem = message ? lineOf(message.get()) : "it ended the conversation";
    else
        m_mayStart = true;
    return isOpen();
}

/// The library's own functions for single commands end the process at an answer they do not know, such as the
/// first part of one from a service that dies.
bool SpeechConnection::send(const std::string& command)
{
    if (!isOpen())
        return false;
    const base::MallocStr answer(
        spd_send_data(m_connection.get(), (command + "\r\n").c_str(), SPD_WAIT_REPLY));
    if (!answer || !isAnswer(answer.get())) {
        m_connection.reset();
        m_problem = "it ended the conversation";
        return false;
    }
    return answer.get()[0] == '2';
}

bool SpeechConnection::say(const Utterance& utterance)
{
    // Without a voice for the language its default one is better than silence.
    send("SET SELF LANGUAGE " + utterance.language);
    // Of this priority one utterance waits for the other; of the usual one it takes its place.
    if (!send("SET SELF PRIORITY MESSAGE") || !send("SPEAK"))
        return false;
    // A dot alone would end the text.
    const char* escape = utterance.text.compare(0, 1, ".") == 0 ? "." : "";
    return send(escape + utterance.text + "\r\n.");
}

bool SpeechConnection::cancel()
{
    return send("CANCEL SELF");
}

} // namespace orbis::flux
