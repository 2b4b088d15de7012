// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "SpeechServer.h"

#include <stdexcept>

#include <gio/gunixsocketaddress.h>

namespace tv {

SpeechServer::SpeechServer(const std::string& path, Manner manner)
    : m_path(path)
    , m_manner(manner)
{
    unlink(path.c_str());
    const base::GObjectPtr<GSocketAddress> address(g_unix_socket_address_new(path.c_str()));
    if (!g_socket_listener_add_address(m_listener.get(), address.get(), G_SOCKET_TYPE_STREAM,
            G_SOCKET_PROTOCOL_DEFAULT, nullptr, nullptr, nullptr))
        throw std::runtime_error("the stand-in for the speech service cannot listen");
    m_thread = std::thread([this] {
        while (const base::GObjectPtr<GSocketConnection> guest {
            g_socket_listener_accept(m_listener.get(), nullptr, m_end.get(), nullptr)}) {
            ++m_visits;
            converse(G_IO_STREAM(guest.get()));
        }
    });
}

SpeechServer::~SpeechServer()
{
    g_cancellable_cancel(m_end.get());
    m_thread.join();
    unlink(m_path.c_str());
}

std::vector<std::string> SpeechServer::told() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_told;
}

void SpeechServer::converse(GIOStream* guest)
{
    const base::GObjectPtr<GDataInputStream> input(
        g_data_input_stream_new(g_io_stream_get_input_stream(guest)));
    g_data_input_stream_set_newline_type(input.get(), G_DATA_STREAM_NEWLINE_TYPE_CR_LF);
    bool isText = false; // what comes is a text, up to a line with a dot
    while (
        const base::GStr line {g_data_input_stream_read_line(input.get(), nullptr, m_end.get(), nullptr)}) {
        const std::string answer = answerTo(line.get(), isText);
        if (m_manner == Manner::IsSilent)
            continue;
        g_output_stream_write_all(g_io_stream_get_output_stream(guest), answer.data(), answer.size(), nullptr,
            m_end.get(), nullptr);
        if (answer == "2" || line.get() == std::string("QUIT"))
            return;
    }
}

std::string SpeechServer::answerTo(const std::string& line, bool& isText)
{
    if (m_manner == Manner::Babbles)
        return "all is well\r\n\r\n";
    if (isText && line == ".") {
        isText = false;
        return m_manner == Manner::DiesInItsAnswer ? "2" : "225-1\r\n225 OK MESSAGE QUEUED\r\n";
    }
    if (!isText && line == "SPEAK") {
        isText = true;
        return "230 OK RECEIVING DATA\r\n";
    }
    if (isText || !(line == "QUIT" || line.rfind("SET SELF CLIENT_NAME", 0) == 0)) {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_told.push_back((isText ? "> " : "") + line);
    }
    return isText ? "" : "200 OK\r\n";
}

} // namespace tv
