// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "app/Launches.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <utility>

namespace orbis::app {

namespace {

/// The largest set of parameters that is taken over, bytes: more than any launch carries, and less than the
/// system's limit for one message.
constexpr std::size_t kMaxMessage = std::size_t {128} * 1024;

constexpr char kLaunch = 'L'; ///< a message's first byte: an empty message would look like the end
constexpr char kAccepted = 'A'; ///< the answer

/// Launches that are taken in at once; the others wait outside.
constexpr std::size_t kMostGuests = 16;
constexpr int kMostWaiting = 64;

/// The folder may lie deeper than a socket's name can say, so it is named through its descriptor.
sockaddr_un addressIn(int folder, const std::string& name)
{
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    snprintf(address.sun_path, sizeof address.sun_path, "/proc/self/fd/%d/%s", folder, name.c_str());
    return address;
}

files::FileDescriptor makeSocket(int flags)
{
    return files::FileDescriptor(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | flags, 0));
}

std::string packed(const LaunchParameters& parameters)
{
    std::string message(1, kLaunch);
    for (const std::string& parameter : parameters)
        message.append(parameter).push_back('\0');
    return message;
}

LaunchParameters unpacked(const std::string& message)
{
    LaunchParameters parameters;
    for (std::size_t begin = 1; begin < message.size();) {
        const std::size_t end = std::min(message.find('\0', begin), message.size());
        parameters.push_back(message.substr(begin, end - begin));
        begin = end + 1;
    }
    return parameters;
}

bool waitForAnswer(int peer, std::chrono::steady_clock::time_point deadline)
{
    using std::chrono::milliseconds;
    for (;;) {
        const auto left =
            std::chrono::duration_cast<milliseconds>(deadline - std::chrono::steady_clock::now()).count();
        pollfd answer {peer, POLLIN, 0};
        const int ready = poll(&answer, 1, static_cast<int>(std::max<long>(0, left)));
        if (ready > 0 || (ready == 0 && left <= 0))
            return ready > 0;
    }
}

} // namespace

Launches::~Launches()
{
    close();
}

bool Launches::open(int folder, const std::string& name)
{
    m_socket = makeSocket(SOCK_NONBLOCK);
    unlinkat(folder, name.c_str(), 0); // left behind by an instance that was killed
    const sockaddr_un address = addressIn(folder, name);
    return m_socket && bind(m_socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0
        && ::listen(m_socket.get(), kMostWaiting) == 0;
}

void Launches::listen()
{
    if (m_socket && !m_knocks)
        m_knocks = ecore_main_fd_handler_add(m_socket.get(), ECORE_FD_READ, on_knock, this, nullptr, nullptr);
}

void Launches::close()
{
    if (m_knocks)
        ecore_main_fd_handler_del(std::exchange(m_knocks, nullptr));
    for (const Guest& guest : m_guests) {
        if (guest.readable)
            ecore_main_fd_handler_del(guest.readable);
    }
    m_guests.clear();
    m_socket = files::FileDescriptor();
}

Eina_Bool Launches::on_knock(void* data, Ecore_Fd_Handler*)
{
    auto* self = static_cast<Launches*>(data);
    files::FileDescriptor connection(
        accept4(self->m_socket.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (!connection)
        return ECORE_CALLBACK_RENEW;
    // Whoever came first and has said nothing gives way.
    if (self->m_guests.size() >= kMostGuests) {
        ecore_main_fd_handler_del(self->m_guests.front().readable);
        self->m_guests.pop_front();
    }
    Guest& guest = self->m_guests.emplace_back(Guest {self, std::move(connection), nullptr, {}});
    guest.readable = ecore_main_fd_handler_add(
        guest.connection.get(), ECORE_FD_READ, on_message, &guest, nullptr, nullptr);
    return ECORE_CALLBACK_RENEW;
}

Eina_Bool Launches::on_message(void* data, Ecore_Fd_Handler*)
{
    auto* guest = static_cast<Guest*>(data);
    std::string message(kMaxMessage, '\0');
    const ssize_t length = recv(guest->connection.get(), message.data(), message.size(), MSG_DONTWAIT);
    if (length < 0 && (errno == EAGAIN || errno == EINTR))
        return ECORE_CALLBACK_RENEW;
    if (length > 0 && message[0] == kLaunch && guest->message.empty()) {
        message.resize(static_cast<std::size_t>(length));
        guest->message = std::move(message);
        return ECORE_CALLBACK_RENEW;
    }
    // It went away, or does not speak as launches do.
    std::list<Guest>& guests = guest->owner->m_guests;
    guests.remove_if([guest](const Guest& one) { return &one == guest; });
    return ECORE_CALLBACK_CANCEL;
}

bool Launches::serve(const Handler& handler)
{
    std::vector<std::string> accepted;
    for (auto guest = m_guests.begin(); guest != m_guests.end();) {
        if (guest->message.empty()) {
            ++guest;
            continue;
        }
        ecore_main_fd_handler_del(guest->readable);
        if (send(guest->connection.get(), &kAccepted, 1, MSG_DONTWAIT | MSG_NOSIGNAL) == 1)
            accepted.push_back(std::move(guest->message));
        guest = m_guests.erase(guest);
    }
    for (const std::string& message : accepted)
        handler(unpacked(message)); // may close()
    return !accepted.empty();
}

HandOver handOver(int folder, const std::string& name, const LaunchParameters& parameters,
    std::chrono::steady_clock::time_point deadline)
{
    const files::FileDescriptor peer = makeSocket(0);
    const sockaddr_un address = addressIn(folder, name);
    const std::string message = packed(parameters);
    if (!peer || message.size() > kMaxMessage)
        return HandOver::Impossible;
    if (connect(peer.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        return errno == EACCES || errno == EPERM ? HandOver::Impossible : HandOver::TurnedAway;
    if (send(peer.get(), message.data(), message.size(), MSG_NOSIGNAL) < 0)
        return HandOver::TurnedAway;
    if (!waitForAnswer(peer.get(), deadline))
        return HandOver::TooLate;
    char answer = '\0';
    return recv(peer.get(), &answer, 1, MSG_DONTWAIT) == 1 && answer == kAccepted ? HandOver::Accepted
                                                                                  : HandOver::TurnedAway;
}

} // namespace orbis::app
