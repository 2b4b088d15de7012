// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Placement.h"

#include "flux/WindowSystem.h"

#include <Ecore_X.h>

#include <algorithm>
#include <cstdlib>

namespace orbis::flux {

namespace {

/// The window system's layer for windows that stay above others, as Elementary numbers them.
constexpr int kLayerAbove = 6;

/// The screen that layouts are designed on, pixels.
constexpr int kDesignWidth = 1920;
constexpr int kDesignHeight = 1080;

} // namespace

Placement::Placement(Evas_Object* window)
    : m_window(window)
{
    elm_win_borderless_set(m_window, EINA_TRUE);
    if (isWayland(m_window))
        elm_win_maximized_set(m_window, EINA_TRUE);
    else
        elm_win_layer_set(m_window, kLayerAbove);
    fitWindow();
    watchScreen();
}

Placement::~Placement()
{
    if (m_screenWatch)
        ecore_event_handler_del(m_screenWatch);
    evas_object_event_callback_del_full(m_window, EVAS_CALLBACK_RESIZE, on_windowResized, this);
}

/// The screen's size in pixels, as far as the window system has told it yet.
Placement::Size Placement::screenSize() const
{
    Size size {};
    elm_win_screen_size_get(m_window, nullptr, nullptr, &size.width, &size.height);
    return size;
}

/// To ask the X server takes a round trip; it tells by itself when the size changes.
void Placement::ensureScale()
{
    if (!m_screenWatch || m_scaledTo.width == 0)
        fitScale();
}

/// Sizes are designed for 1080 lines. A person's own ELM_SCALE is left alone.
void Placement::fitScale()
{
    const Size screen = screenSize();
    if (screen.width <= 1 || screen.height <= 1
        || (screen.width == m_scaledTo.width && screen.height == m_scaledTo.height))
        return;
    // Without a window system the screen is whatever size the window was given.
    if (m_scaledTo.width > 0 && !isX11(m_window) && !isWayland(m_window))
        return;
    m_scaledTo = screen;
    if (!getenv("ELM_SCALE"))
        elm_config_scale_set(std::min(screen.width / static_cast<double>(kDesignWidth),
            screen.height / static_cast<double>(kDesignHeight)));
}

void Placement::fitWindow()
{
    fitScale();
    const bool isKnown = m_scaledTo.width > 0;
    evas_object_geometry_set(m_window, 0, 0, isKnown ? m_scaledTo.width : kDesignWidth,
        isKnown ? m_scaledTo.height : kDesignHeight);
}

/// On Wayland the compositor sizes the window itself, having told the screen's size before.
void Placement::watchScreen()
{
    if (isWayland(m_window))
        evas_object_event_callback_add(m_window, EVAS_CALLBACK_RESIZE, on_windowResized, this);
    if (!isX11(m_window))
        return;
    ecore_x_event_mask_set(ecore_x_window_root_first_get(), ECORE_X_EVENT_MASK_WINDOW_CONFIGURE);
    m_screenWatch = ecore_event_handler_add(ECORE_X_EVENT_WINDOW_CONFIGURE, on_screenResized, this);
}

Eina_Bool Placement::on_screenResized(void* data, int, void* eventInfo)
{
    const auto* event = static_cast<Ecore_X_Event_Window_Configure*>(eventInfo);
    if (event->win == ecore_x_window_root_first_get())
        static_cast<Placement*>(data)->fitWindow();
    return ECORE_CALLBACK_PASS_ON;
}

void Placement::on_windowResized(void* data, Evas*, Evas_Object*, void*)
{
    static_cast<Placement*>(data)->fitScale();
}

} // namespace orbis::flux
