// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/WindowSystem.h"

#include <Ecore_Evas.h>
#include <Ecore_X.h>
#include <X11/Xlib.h>
#include <wayland-client.h>

#include <string>
#include <utility>

/// As Ecore_Wl2.h declares them, which is no valid C++.
extern "C" {
struct _Ecore_Wl2_Display;
_Ecore_Wl2_Display* ecore_wl2_window_display_get(const Ecore_Wl2_Window* window);
wl_display* ecore_wl2_display_get(_Ecore_Wl2_Display* display);
void ecore_wl2_display_flush(_Ecore_Wl2_Display* display);
}

namespace orbis::flux {

namespace {

constexpr const char* kMarkProperty = "_ORBIS_DRAWN";

bool engineIs(const Evas_Object* window, const char* system)
{
    const Ecore_Evas* canvas = ecore_evas_ecore_evas_get(evas_object_evas_get(window));
    const char* name = canvas ? ecore_evas_engine_name_get(canvas) : nullptr;
    return name && std::string {name}.find(system) != std::string::npos;
}

Display* displayOf()
{
    return static_cast<Display*>(ecore_x_display_get());
}

_Ecore_Wl2_Display* compositorOf(const Evas_Object* window)
{
    const Ecore_Wl2_Window* surface = elm_win_wl_window_get(window);
    return surface ? ecore_wl2_window_display_get(surface) : nullptr;
}

/// Of the answers on Wayland, in the queue of the toolkit's events.
int answerEvent()
{
    static const int s_type = ecore_event_type_new();
    return s_type;
}

} // namespace

bool isX11(const Evas_Object* window)
{
    return engineIs(window, "x11");
}

bool isWayland(const Evas_Object* window)
{
    return engineIs(window, "wayland");
}

void syncWindowSystem(const Evas_Object* window)
{
    if (isX11(window)) {
        ecore_x_sync();
    } else if (_Ecore_Wl2_Display* compositor = isWayland(window) ? compositorOf(window) : nullptr) {
        // Not a round trip: that would serve other events inside of whatever asked for this.
        ecore_wl2_display_flush(compositor);
    }
}

bool mixesTransparency(const Evas_Object* window)
{
    constexpr int kWithAlpha = 32;
    XWindowAttributes attributes {};
    return XGetWindowAttributes(displayOf(), elm_win_xwindow_get(window), &attributes)
        && attributes.depth == kWithAlpha;
}

void setBackground(const Evas_Object* window, const Tint& colour)
{
    const auto part = [](int value, int shift) { return static_cast<unsigned long>(value) << shift; };
    XSetWindowBackground(displayOf(), elm_win_xwindow_get(window),
        part(colour.alpha, 24) | part(colour.red, 16) | part(colour.green, 8) | part(colour.blue, 0));
}

void clearToBackground(const Evas_Object* window, const Area& area)
{
    if (!area.isEmpty()) // a width of 0 would reach to the window's edge
        XClearArea(displayOf(), elm_win_xwindow_get(window), area.left, area.top,
            static_cast<unsigned>(area.right - area.left), static_cast<unsigned>(area.bottom - area.top),
            False);
}

void copyWithin(const Evas_Object* window, const Area& from, const Area& to)
{
    Display* display = displayOf();
    const Ecore_X_Window target = elm_win_xwindow_get(window);
    XGCValues values {};
    values.graphics_exposures = False;
    const GC context = XCreateGC(display, target, GCGraphicsExposures, &values);
    XCopyArea(display, target, target, context, from.left, from.top,
        static_cast<unsigned>(to.right - to.left), static_cast<unsigned>(to.bottom - to.top), to.left,
        to.top);
    XFreeGC(display, context);
    ecore_x_flush();
}

/// What the compositor's answer reaches: it may come after the mark's owner is gone.
struct DrawnMark::Ticket {
    static void on_done(void* data, wl_callback* callback, uint32_t)
    {
        wl_callback_destroy(callback);
        // Keys that came before the answer are in the queue already; it must not overtake them.
        ecore_event_add(answerEvent(), data, on_free, nullptr);
    }
    static void on_free(void*, void* ticket) { delete static_cast<Ticket*>(ticket); }

    const DrawnMark* owner; ///< only compared
};

DrawnMark::DrawnMark(Evas_Object* window, std::function<void()> arrived)
    : m_window(window)
    , m_arrived(std::move(arrived))
{
    if (isX11(window))
        m_handler = ecore_event_handler_add(ECORE_X_EVENT_WINDOW_PROPERTY, on_property, this);
    else if (isWayland(window))
        m_handler = ecore_event_handler_add(answerEvent(), on_answer, this);
}

DrawnMark::~DrawnMark()
{
    if (m_handler)
        ecore_event_handler_del(m_handler);
}

void DrawnMark::send()
{
    if (isX11(m_window)) {
        ++m_underWay;
        // Appending nothing to a property of its own tells the window so.
        XChangeProperty(displayOf(), elm_win_xwindow_get(m_window), ecore_x_atom_get(kMarkProperty),
            ECORE_X_ATOM_CARDINAL, 8, PropModeAppend, nullptr, 0);
        ecore_x_flush();
        return;
    }
    _Ecore_Wl2_Display* compositor = isWayland(m_window) ? compositorOf(m_window) : nullptr;
    if (!compositor) {
        m_arrived();
        return;
    }
    static const wl_callback_listener s_listener {Ticket::on_done};
    ++m_underWay;
    wl_callback_add_listener(
        wl_display_sync(ecore_wl2_display_get(compositor)), &s_listener, new Ticket {this});
    ecore_wl2_display_flush(compositor);
}

void DrawnMark::arrive()
{
    if (m_underWay > 0 && --m_underWay == 0)
        m_arrived();
}

Eina_Bool DrawnMark::on_property(void* data, int, void* eventInfo)
{
    auto* self = static_cast<DrawnMark*>(data);
    const auto* event = static_cast<Ecore_X_Event_Window_Property*>(eventInfo);
    if (event->win == elm_win_xwindow_get(self->m_window) && event->atom == ecore_x_atom_get(kMarkProperty))
        self->arrive();
    return ECORE_CALLBACK_PASS_ON;
}

Eina_Bool DrawnMark::on_answer(void* data, int, void* eventInfo)
{
    if (static_cast<Ticket*>(eventInfo)->owner == data)
        static_cast<DrawnMark*>(data)->arrive();
    return ECORE_CALLBACK_PASS_ON;
}

} // namespace orbis::flux
