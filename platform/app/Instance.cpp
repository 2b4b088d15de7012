#include "app/Instance.h"

#include "settings/Folders.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <utility>

namespace orbis::app {

namespace {

/// The largest set of parameters that is taken over, bytes: more than any launch carries, and less than the
/// system's limit for one datagram.
constexpr std::size_t kMaxMessage = std::size_t {128} * 1024;

/// The folder may lie deeper than a socket's name can say, so it is named through its descriptor.
sockaddr_un addressIn(int folder, const std::string& name)
{
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    snprintf(address.sun_path, sizeof address.sun_path, "/proc/self/fd/%d/%s", folder, name.c_str());
    return address;
}

std::string packed(const Instance::Parameters& parameters)
{
    std::string message;
    for (const std::string& parameter : parameters)
        message.append(parameter).push_back('\0');
    return message;
}

Instance::Parameters unpacked(const std::string& message)
{
    Instance::Parameters parameters;
    for (std::size_t begin = 0; begin < message.size();) {
        const std::size_t end = std::min(message.find('\0', begin), message.size());
        parameters.push_back(message.substr(begin, end - begin));
        begin = end + 1;
    }
    return parameters;
}

bool handOver(int folder, const std::string& name, const Instance::Parameters& parameters)
{
    const int peer = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (peer < 0)
        return false;
    const sockaddr_un address = addressIn(folder, name);
    const std::string message = packed(parameters);
    const bool sent = message.size() <= kMaxMessage
        && sendto(peer, message.data(), message.size(), MSG_DONTWAIT,
               reinterpret_cast<const sockaddr*>(&address), sizeof address)
            >= 0;
    close(peer);
    return sent;
}

} // namespace

Instance::~Instance()
{
    if (m_readable)
        ecore_main_fd_handler_del(m_readable);
    if (m_socket >= 0)
        close(m_socket);
    if (m_lock >= 0)
        close(m_lock);
}

Instance::Claim Instance::claim(const std::string& application, const Parameters& parameters)
{
    const std::string path = runtimeFolder() + "/app-control";
    const int folder = makeFolders(path) ? open(path.c_str(), O_DIRECTORY | O_PATH | O_CLOEXEC) : -1;
    if (folder < 0)
        return Claim::Unknown;
    const std::string socketName = application + ".socket";
    m_lock = openat(folder, (application + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    Claim result = Claim::Unknown;
    if (m_lock >= 0 && flock(m_lock, LOCK_EX | LOCK_NB) == 0) {
        result = Claim::First;
        bindSocket(folder, socketName);
    } else if (m_lock >= 0 && errno == EWOULDBLOCK) {
        if (!handOver(folder, socketName, parameters))
            fprintf(
                stderr, "%s runs already, but does not take the launch parameters\n", application.c_str());
        result = Claim::Handed;
    }
    close(folder);
    return result;
}

bool Instance::bindSocket(int folder, const std::string& name)
{
    m_socket = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (m_socket < 0)
        return false;
    unlinkat(folder, name.c_str(), 0); // left behind by an instance that was killed
    const sockaddr_un address = addressIn(folder, name);
    return bind(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

void Instance::listen(Handler handler)
{
    m_handler = std::move(handler);
    if (!m_handler && m_readable)
        ecore_main_fd_handler_del(std::exchange(m_readable, nullptr));
    if (m_handler && m_socket >= 0 && !m_readable)
        m_readable = ecore_main_fd_handler_add(m_socket, ECORE_FD_READ, on_readable, this, nullptr, nullptr);
}

Eina_Bool Instance::on_readable(void* data, Ecore_Fd_Handler*)
{
    auto* self = static_cast<Instance*>(data);
    std::string message(kMaxMessage, '\0');
    const ssize_t length = recv(self->m_socket, message.data(), message.size(), MSG_DONTWAIT);
    if (length < 0)
        return ECORE_CALLBACK_RENEW;
    message.resize(static_cast<std::size_t>(length));
    if (self->m_handler)
        self->m_handler(unpacked(message));
    return ECORE_CALLBACK_RENEW;
}

} // namespace orbis::app
