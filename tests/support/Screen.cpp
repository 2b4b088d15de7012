#include "Screen.h"

#include "Process.h"

#include <sstream>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

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
        screen.pictures = std::stoi(value);
    else if (name == "drawn")
        std::istringstream(value) >> screen.drawn.x >> screen.drawn.y >> screen.drawn.width
            >> screen.drawn.height;
    else if (name == "popup")
        screen.cards.push_back({value, {}, {}, {}});
    else if (name == "text" && !value.empty())
        screen.cards.back().texts.push_back(value);
    else if (name == "button")
        screen.cards.back().buttons.push_back(value);
    else if (name == "focus")
        screen.cards.back().focus = value;
}

int connectTo(const std::string& path)
{
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    if (descriptor >= 0 && connect(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0)
        return descriptor;
    close(descriptor);
    return -1;
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
    const int descriptor = connectTo(socket);
    if (descriptor < 0)
        return std::nullopt;
    // The program may be waiting for a daemon that lives in this process.
    LineReader answer;
    answer.open(descriptor);
    if (!waitUntil([&] { return answer.isAtEnd(); }) || answer.lines().empty())
        return std::nullopt;
    Screen screen;
    for (const std::string& line : answer.lines()) {
        const size_t blank = line.find(' ');
        take(line.substr(0, blank), line.substr(blank + 1), screen);
    }
    return screen;
}

std::optional<Screen> askProbeWhenDrawn(const std::string& socket)
{
    return askProbe(socket + ".drawn");
}

} // namespace tv
