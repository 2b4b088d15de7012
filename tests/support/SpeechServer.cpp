#include "SpeechServer.h"

#include <array>
#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace tv {

namespace {

bool beginsWith(const std::string& text, const std::string& begin)
{
    return text.compare(0, begin.size(), begin) == 0;
}

} // namespace

SpeechServer::SpeechServer(const std::string& path, Manner manner)
    : m_path(path)
    , m_manner(manner)
{
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    unlink(path.c_str());
    constexpr int kWaiting = 8;
    m_listening = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (pipe2(m_end, O_CLOEXEC) != 0
        || bind(m_listening, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0
        || listen(m_listening, kWaiting) != 0)
        throw std::runtime_error("the stand-in for the speech service cannot listen");
    m_thread = std::thread([this] { serve(); });
}

SpeechServer::~SpeechServer()
{
    close(m_end[1]);
    m_thread.join();
    close(m_end[0]);
    close(m_listening);
    for (const auto& [descriptor, conversation] : m_conversations)
        close(descriptor);
    unlink(m_path.c_str());
}

std::vector<std::string> SpeechServer::told() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_told;
}

void SpeechServer::serve()
{
    for (;;) {
        std::vector<pollfd> all {{m_end[0], POLLIN, 0}, {m_listening, POLLIN, 0}};
        for (const auto& [descriptor, conversation] : m_conversations)
            all.push_back({descriptor, POLLIN, 0});
        poll(all.data(), all.size(), -1);
        if (all[0].revents != 0)
            return;
        if (all[1].revents != 0) {
            ++m_visits;
            m_conversations[accept4(m_listening, nullptr, nullptr, SOCK_CLOEXEC)] = {};
        }
        for (size_t i = 2; i < all.size(); ++i) {
            if (all[i].revents != 0 && !takeFrom(all[i].fd, m_conversations[all[i].fd])) {
                m_conversations.erase(all[i].fd);
                close(all[i].fd);
            }
        }
    }
}

/// @return whether the conversation goes on
bool SpeechServer::takeFrom(int descriptor, Conversation& conversation)
{
    std::array<char, 4096> bytes {};
    const ssize_t count = recv(descriptor, bytes.data(), bytes.size(), 0);
    if (count <= 0)
        return false;
    conversation.rest.append(bytes.data(), static_cast<size_t>(count));
    for (size_t end; (end = conversation.rest.find("\r\n")) != std::string::npos;) {
        const std::string line = conversation.rest.substr(0, end);
        conversation.rest.erase(0, end + 2);
        const std::string answer = answerTo(line, conversation);
        if (m_manner == Manner::IsSilent)
            continue;
        if (!answer.empty() && send(descriptor, answer.data(), answer.size(), MSG_NOSIGNAL) < 0)
            return false;
        if (answer == "2" || line == "QUIT")
            return false;
    }
    return true;
}

std::string SpeechServer::answerTo(const std::string& line, Conversation& conversation)
{
    if (m_manner == Manner::Babbles)
        return "all is well\r\n\r\n";
    if (conversation.isText && line == ".") {
        conversation.isText = false;
        return m_manner == Manner::DiesInItsAnswer ? "2" : "225-1\r\n225 OK MESSAGE QUEUED\r\n";
    }
    const bool isText = conversation.isText;
    if (!isText && line == "SPEAK") {
        conversation.isText = true;
        return "230 OK RECEIVING DATA\r\n";
    }
    if (isText || !(line == "QUIT" || beginsWith(line, "SET SELF CLIENT_NAME"))) {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_told.push_back((isText ? "> " : "") + line);
    }
    return isText ? "" : "200 OK\r\n";
}

} // namespace tv
