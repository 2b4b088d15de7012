// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "log/Journal.h"

#include "files/FileDescriptor.h"

#include <cerrno>
#include <cstring>
#include <endian.h>
#include <fcntl.h>
#include <string>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace orbis::log {

namespace {

constexpr char kSocket[] = "/run/systemd/journal/socket";

/// A field with a line end in it has its length in eight bytes, the lowest first, in front of the value.
void append(std::string& record, std::string_view name, std::string_view value)
{
    record.append(name);
    if (value.find('\n') == std::string_view::npos) {
        record += '=';
    } else {
        const uint64_t length = htole64(value.size());
        record.append("\n").append(reinterpret_cast<const char*>(&length), sizeof length);
    }
    record.append(value).append("\n");
}

int journalSocket()
{
    static const int s_socket = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    return s_socket;
}

ssize_t send(const void* bytes, size_t size, const int* file)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, kSocket, sizeof kSocket);
    iovec part {const_cast<void*>(bytes), size};
    msghdr message = {};
    message.msg_name = &address;
    message.msg_namelen = sizeof address;
    message.msg_iov = &part;
    message.msg_iovlen = size > 0 ? 1 : 0;
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))] = {};
    if (file) {
        message.msg_control = control;
        message.msg_controllen = sizeof control;
        cmsghdr* header = CMSG_FIRSTHDR(&message);
        header->cmsg_level = SOL_SOCKET;
        header->cmsg_type = SCM_RIGHTS;
        header->cmsg_len = CMSG_LEN(sizeof(int));
        std::memcpy(CMSG_DATA(header), file, sizeof(int));
    }
    return sendmsg(journalSocket(), &message, MSG_DONTWAIT | MSG_NOSIGNAL);
}

/// What is too long for a datagram is left in memory, for the journal to read there.
ssize_t sendAsFile(const std::string& record)
{
    const files::FileDescriptor file(memfd_create("log-message", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    if (!file)
        return -1;
    size_t written = 0;
    while (written < record.size()) {
        const ssize_t count = write(file.get(), record.data() + written, record.size() - written);
        if (count <= 0)
            break;
        written += static_cast<size_t>(count);
    }
    constexpr int kSeals = F_SEAL_SEAL | F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_WRITE;
    if (written < record.size() || fcntl(file.get(), F_ADD_SEALS, kSeals) != 0)
        return -1;
    const int number = file.get();
    return send(nullptr, 0, &number);
}

} // namespace

int sendToJournal(std::string_view priority, std::string_view identifier, std::string_view message)
{
    std::string record;
    append(record, "PRIORITY", priority);
    append(record, "SYSLOG_IDENTIFIER", identifier);
    append(record, "MESSAGE", message);
    ssize_t sent = send(record.data(), record.size(), nullptr);
    if (sent < 0 && (errno == EMSGSIZE || errno == ENOBUFS))
        sent = sendAsFile(record);
    return sent < 0 ? -errno : 0;
}

} // namespace orbis::log
