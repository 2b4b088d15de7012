// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Screen.h"

#include "Wait.h"
#include "base/GlibHandles.h"

#include <gio/gunixsocketaddress.h>

namespace tv {

namespace {

/// One line of the probe's answer.
void take(const std::string& name, const std::string& value, Screen& screen)
{
    if (name == "window")
        screen.visible = value == "1";
    else if (name == "leftover")
        screen.leftover = std::stoi(value);
    else if (name == "pictures")
        screen.pictures = std::stol(value);
    else if (name == "pixels")
        screen.pixels = std::stol(value);
    else if (name == "popup")
        screen.cards.push_back({value, {}, {}, {}});
    else if (name == "text" && !value.empty())
        screen.cards.back().texts.push_back(value);
    else if (name == "button")
        screen.cards.back().buttons.push_back(value);
    else if (name == "focus")
        screen.cards.back().focus = value;
}

} // namespace

bool Screen::shows(const std::vector<Card>& expected) const
{
    return leftover == 0 && visible != expected.empty() && cards == expected;
}

std::string describe(const std::vector<Card>& cards)
{
    std::string text;
    for (const Card& card : cards) {
        text += "\n  \"" + card.title + "\"";
        for (const std::string& one : card.texts)
            text += " / " + one;
        for (const std::string& button : card.buttons)
            text += button == card.focus ? " [>" + button + "<]" : " [" + button + "]";
    }
    return text;
}

std::string Screen::description() const
{
    return (visible ? "window" : "no window") + std::string(", left over ") + std::to_string(leftover)
        + describe(cards);
}

std::optional<Screen> askProbe(const std::string& socket)
{
    const base::GObjectPtr<GSocketClient> client(g_socket_client_new());
    g_socket_client_set_timeout(client.get(), static_cast<guint>(kLimit / std::chrono::seconds(1)));
    const base::GObjectPtr<GSocketAddress> address(g_unix_socket_address_new(socket.c_str()));
    const base::GObjectPtr<GSocketConnection> connection(
        g_socket_client_connect(client.get(), G_SOCKET_CONNECTABLE(address.get()), nullptr, nullptr));
    if (!connection)
        return std::nullopt;
    const base::GObjectPtr<GDataInputStream> answer(
        g_data_input_stream_new(g_io_stream_get_input_stream(G_IO_STREAM(connection.get()))));
    std::optional<Screen> screen;
    while (const base::GStr raw {g_data_input_stream_read_line(answer.get(), nullptr, nullptr, nullptr)}) {
        const std::string line = raw.get();
        const size_t blank = line.find(' ');
        if (!screen)
            screen.emplace();
        take(line.substr(0, blank), line.substr(blank + 1), *screen);
    }
    return screen;
}

} // namespace tv
