// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Screen.h"

#include "Bus.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include <poll.h>

#include <X11/Xatom.h>
#include <X11/Xutil.h>
#include <X11/extensions/XRes.h>
#include <X11/extensions/XTest.h>
#include <X11/extensions/Xdamage.h>

namespace bench {

namespace {

/// Windows come and go while they are looked at; what is asked of one that has gone is not answered.
int ignoreError(Display*, XErrorEvent*)
{
    return 0;
}

bool belongsTo(Display* display, Window window, pid_t process)
{
    Atom type = 0;
    int format = 0;
    unsigned long count = 0;
    unsigned long rest = 0;
    unsigned char* value = nullptr;
    const Atom atom = XInternAtom(display, "_NET_WM_PID", False);
    if (XGetWindowProperty(
            display, window, atom, 0, 1, False, XA_CARDINAL, &type, &format, &count, &rest, &value)
        != Success)
        return false;
    const bool does =
        count == 1 && *reinterpret_cast<unsigned long*>(value) == static_cast<unsigned long>(process);
    if (value)
        XFree(value);
    return does;
}

bool hasClass(Display* display, Window window, const std::string& name)
{
    XClassHint hint {};
    if (name.empty() || !XGetClassHint(display, window, &hint))
        return false;
    const bool has = hint.res_class == name;
    XFree(hint.res_name);
    XFree(hint.res_class);
    return has;
}

void visit(Display* display, Window parent, const std::function<void(Window)>& what)
{
    Window root = 0;
    Window above = 0;
    Window* children = nullptr;
    unsigned count = 0;
    if (!XQueryTree(display, parent, &root, &above, &children, &count))
        return;
    for (unsigned i = 0; i < count; ++i) {
        what(children[i]);
        visit(display, children[i], what);
    }
    if (children)
        XFree(children);
}

} // namespace

Screen::Screen()
    : m_display(XOpenDisplay(nullptr))
{
    int errorBase = 0;
    if (!m_display || !XDamageQueryExtension(m_display, &m_damageEvent, &errorBase))
        fail("there is no display, or it does not tell what is drawn");
    XSetErrorHandler(ignoreError);
}

Screen::~Screen()
{
    XCloseDisplay(m_display);
}

int Screen::width() const
{
    return DisplayWidth(m_display, DefaultScreen(m_display));
}

int Screen::height() const
{
    return DisplayHeight(m_display, DefaultScreen(m_display));
}

Window Screen::windowOf(pid_t process, const std::string& className) const
{
    Window largest = 0;
    int area = 1; // of one pixel are those that nobody is to see
    visit(m_display, DefaultRootWindow(m_display), [&](Window window) {
        XWindowAttributes attributes {};
        if (!(belongsTo(m_display, window, process) || hasClass(m_display, window, className))
            || !XGetWindowAttributes(m_display, window, &attributes) || attributes.c_class != InputOutput
            || attributes.width * attributes.height <= area)
            return;
        largest = window;
        area = attributes.width * attributes.height;
    });
    return largest;
}

bool Screen::isShown(Window window) const
{
    XWindowAttributes attributes {};
    return XGetWindowAttributes(m_display, window, &attributes) && attributes.map_state == IsViewable;
}

void Screen::watch(Window window)
{
    if (m_damage)
        XDamageDestroy(m_display, m_damage);
    m_damage = XDamageCreate(m_display, window, XDamageReportRawRectangles);
    XSync(m_display, False);
}

std::optional<Drawn> Screen::next()
{
    XEvent event;
    XNextEvent(m_display, &event);
    const auto* damage = reinterpret_cast<const XDamageNotifyEvent*>(&event);
    if (event.type != m_damageEvent + XDamageNotify || damage->damage != m_damage)
        return std::nullopt;
    const XRectangle& area = damage->area;
    return Drawn {now(), area.x, area.y, area.width, area.height};
}

std::vector<Drawn> Screen::observe(double seconds, const std::function<bool(const Drawn&)>& enough)
{
    constexpr double kMilliseconds = 1000;
    std::vector<Drawn> drawn;
    const double end = now() + seconds;
    while (now() < end) {
        if (!XPending(m_display)) {
            pollfd connection {ConnectionNumber(m_display), POLLIN, 0};
            poll(&connection, 1, std::max(1, static_cast<int>((end - now()) * kMilliseconds)));
            continue;
        }
        const auto one = next();
        if (!one)
            continue;
        drawn.push_back(*one);
        if (enough && enough(*one))
            break;
    }
    return drawn;
}

std::vector<Drawn> Screen::settle(double quietSeconds)
{
    std::vector<Drawn> all;
    for (;;) {
        const auto drawn = observe(quietSeconds, [](const Drawn&) { return true; });
        if (drawn.empty())
            return all;
        all.insert(all.end(), drawn.begin(), drawn.end());
    }
}

std::vector<unsigned> Screen::rows(Window window, const std::vector<int>& which) const
{
    std::vector<unsigned> pixels;
    XWindowAttributes attributes {};
    if (!isShown(window) || !XGetWindowAttributes(m_display, window, &attributes))
        return pixels;
    for (int row : which) {
        XImage* image = row < attributes.height
            ? XGetImage(m_display, window, 0, row, attributes.width, 1, AllPlanes, ZPixmap)
            : nullptr;
        if (!image)
            return {};
        for (int x = 0; x < attributes.width; ++x)
            pixels.push_back(static_cast<unsigned>(XGetPixel(image, x, 0)));
        XDestroyImage(image);
    }
    return pixels;
}

int Screen::resourcesOf(pid_t process) const
{
    int count = 0;
    int kinds = 0;
    XResType* types = nullptr;
    if (!XResQueryClientResources(m_display, windowOf(process), &kinds, &types))
        return 0;
    for (int i = 0; i < kinds; ++i)
        count += static_cast<int>(types[i].count);
    XFree(types);
    return count;
}

std::vector<int> Screen::busiestRows(Window window) const
{
    constexpr int kStep = 3;
    constexpr size_t kRows = 4;
    XWindowAttributes attributes {};
    XGetWindowAttributes(m_display, window, &attributes);
    std::vector<std::pair<int, int>> found; // changes and row
    for (int row = 0; row < attributes.height; row += kStep) {
        const auto pixels = rows(window, {row});
        int changes = 0;
        for (size_t x = 1; x < pixels.size(); ++x)
            changes += pixels[x] != pixels[x - 1];
        found.emplace_back(changes, row);
    }
    std::sort(found.rbegin(), found.rend());
    std::vector<int> best;
    for (size_t i = 0; i < found.size() && i < kRows; ++i)
        best.push_back(found[i].second);
    return best;
}

void Screen::press(const char* key)
{
    const KeyCode code = XKeysymToKeycode(m_display, XStringToKeysym(key));
    XTestFakeKeyEvent(m_display, code, True, CurrentTime);
    XTestFakeKeyEvent(m_display, code, False, CurrentTime);
    XFlush(m_display);
}

} // namespace bench
