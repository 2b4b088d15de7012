/// A server that lets everybody connect and never says a word.
#ifndef TESSEL_TESTS_SILENT_SOCKET_H
#define TESSEL_TESTS_SILENT_SOCKET_H

#include "Handles.h"
#include "Wait.h"

#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace tv {

class SilentSocket {
public:
    /// @throws std::runtime_error when there can be no socket at @p path
    explicit SilentSocket(std::filesystem::path path)
        : m_path(std::move(path))
        , m_socket(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        constexpr int kMostGuests = 8;
        sockaddr_un address {};
        address.sun_family = AF_UNIX;
        strncpy(address.sun_path, m_path.c_str(), sizeof address.sun_path - 1);
        if (bind(m_socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0
            || listen(m_socket.get(), kMostGuests) != 0)
            throw std::runtime_error("no socket at " + m_path.string());
    }
    const std::filesystem::path& path() const { return m_path; }

    /// Waits until one more has connected. @return whether one has
    bool waitForNextGuest()
    {
        m_guests.clear();
        return waitUntil([this] {
            pollfd knock {m_socket.get(), POLLIN, 0};
            if (poll(&knock, 1, 0) != 1)
                return false;
            m_guests.emplace_back(accept4(m_socket.get(), nullptr, nullptr, SOCK_CLOEXEC));
            return true;
        });
    }

private:
    std::filesystem::path m_path;
    Descriptor m_socket;
    std::vector<Descriptor> m_guests;
};

} // namespace tv

#endif
