#include "flux/Manager.h"

#include "app/WindowState.h"
#include "elm_flux.h"
#include "flux/FocusStack.h"
#include "flux/Theme.h"
#include "flux/Widget.h"
#include "flux/WindowSignal.h"
#include "flux/WindowSystem.h"

#include <Ecore_X.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <utility>

namespace orbis::flux {

namespace {

/// The window system's layer for windows that stay above others, as Elementary numbers them.
constexpr int kLayerAbove = 6;

/// The screen that layouts are designed on, pixels.
constexpr int kDesignWidth = 1920;
constexpr int kDesignHeight = 1080;

/// Owned, but by nobody that is destroyed when the process exits: what it uses is gone by then.
Manager* s_manager = nullptr;

/// Borrowed by the toolkit while it is set.
Elm_Win_Trap s_trap {};

} // namespace

Manager::Manager(Evas_Object* window)
    : m_window(window)
    , m_hidesWhenLowered(!isWayland(window))
    , m_keyGuard(std::make_unique<KeyGuard>(window))
    , m_leftovers(std::make_unique<Leftovers>(evas_object_evas_get(window)))
    , m_displayLoss(std::make_unique<app::DisplayLoss>(window))
    , m_pressGate(std::make_unique<PressGate>(window, *m_keyGuard))
{
    evas_object_event_callback_add(window, EVAS_CALLBACK_DEL, on_windowDeleted, this);
    evas_object_event_callback_add(window, EVAS_CALLBACK_RESIZE, on_windowResized, this);
    evas_object_event_callback_add(window, EVAS_CALLBACK_SHOW, on_windowShown, this);
    evas_object_event_callback_add(window, EVAS_CALLBACK_HIDE, on_windowState, this);
    evas_object_smart_callback_add(window, "focused", on_windowFocus, this);
    evas_object_smart_callback_add(window, "unfocused", on_windowFocus, this);
    placeWindow();
    watchScreen();
}

Manager::~Manager()
{
    detach();
}

/// Everything that refers to the window goes; called when the window does, or before.
void Manager::detach()
{
    if (!m_window)
        return;
    cancelHide();
    if (m_focusJob)
        ecore_job_del(std::exchange(m_focusJob, nullptr));
    evas_object_event_callback_del_full(m_window, EVAS_CALLBACK_DEL, on_windowDeleted, this);
    evas_object_event_callback_del_full(m_window, EVAS_CALLBACK_RESIZE, on_windowResized, this);
    evas_object_event_callback_del_full(m_window, EVAS_CALLBACK_SHOW, on_windowShown, this);
    evas_object_event_callback_del_full(m_window, EVAS_CALLBACK_HIDE, on_windowState, this);
    evas_object_smart_callback_del_full(m_window, "focused", on_windowFocus, this);
    evas_object_smart_callback_del_full(m_window, "unfocused", on_windowFocus, this);
    if (m_screenWatch)
        ecore_event_handler_del(std::exchange(m_screenWatch, nullptr));
    evas_object_del(std::exchange(m_dim, nullptr));
    m_pressGate.reset();
    m_keyGuard.reset();
    m_readout.reset();
    m_leftovers.reset();
    m_displayLoss.reset();
    m_window = nullptr;
    app::windowStateChanged(false, false);
}

Manager* Manager::of(const Evas_Object* window)
{
    return s_manager && window && s_manager->m_window == window ? s_manager : nullptr;
}

/// The screen's size in pixels, as far as the window system has told it yet.
Manager::Size Manager::screenSize() const
{
    Size size {};
    elm_win_screen_size_get(m_window, nullptr, nullptr, &size.width, &size.height);
    return size;
}

/// Sizes are designed for 1080 lines. A person's own ELM_SCALE is left alone. Some window systems tell the
/// screen's size only after the window was made, and it may change, so this is called again before a popup is
/// made.
void Manager::ensureScale()
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

void Manager::pictureChanges()
{
    m_pressGate->pictureChanges();
}

void Manager::placeWindow()
{
    elm_win_borderless_set(m_window, EINA_TRUE);
    if (isWayland(m_window))
        elm_win_maximized_set(m_window, EINA_TRUE);
    else
        elm_win_layer_set(m_window, kLayerAbove);
    fitWindow();
}

void Manager::fitWindow()
{
    ensureScale();
    const bool isKnown = m_scaledTo.width > 0;
    evas_object_geometry_set(m_window, 0, 0, isKnown ? m_scaledTo.width : kDesignWidth,
        isKnown ? m_scaledTo.height : kDesignHeight);
}

/// On Wayland the compositor sizes the window itself.
void Manager::watchScreen()
{
    if (!isX11(m_window))
        return;
    ecore_x_event_mask_set(ecore_x_window_root_first_get(), ECORE_X_EVENT_MASK_WINDOW_CONFIGURE);
    m_screenWatch = ecore_event_handler_add(ECORE_X_EVENT_WINDOW_CONFIGURE, on_screenResized, this);
}

Eina_Bool Manager::on_screenResized(void* data, int, void* eventInfo)
{
    const auto* event = static_cast<Ecore_X_Event_Window_Configure*>(eventInfo);
    if (event->win == ecore_x_window_root_first_get())
        static_cast<Manager*>(data)->fitWindow();
    return ECORE_CALLBACK_PASS_ON;
}

void Manager::windowSignal(std::string_view emission)
{
    if (emission != "SetDim" && emission != "SetNormal")
        return;
    m_isDimmed = emission == "SetDim";
    updateDim();
    FocusStack::instance().updateDims();
}

/// A popup may go without undimming, so a lowered window is not dimmed either: it may not be hidden.
void Manager::updateDim()
{
    if (!m_isDimmed || m_isLowered) {
        evas_object_hide(m_dim);
        return;
    }
    if (!m_dim) {
        m_dim = addThemedLayout(m_window, "dim", "window");
        on_windowResized(this, nullptr, m_window, nullptr);
    }
    evas_object_lower(m_dim);
    evas_object_show(m_dim);
}

void Manager::popupGone()
{
    m_leftovers->add();
}

void Manager::focusMoved()
{
    if (!m_focusJob)
        m_focusJob = ecore_job_add(on_focusJob, this);
}

void Manager::focusLeft()
{
    if (elm_win_focus_get(m_window))
        m_spoken = nullptr;
}

void Manager::on_focusJob(void* data)
{
    auto* self = static_cast<Manager*>(data);
    self->m_focusJob = nullptr;
    Evas_Object* focused = elm_object_focused_object_get(self->m_window);
    // The window getting the keys is no news: saying the name would interrupt what is being read.
    if (focused == self->m_spoken)
        return;
    if (!FocusStack::instance().empty() && evas_object_visible_get(self->m_window)) {
        self->m_spoken = focused;
        self->m_readout->speakFocused(focused);
    }
}

void Manager::popupsChanged()
{
    if (s_manager && s_manager->m_readout)
        s_manager->m_readout->stop();
}

/// While a popup is still up another one usually follows at once, and hiding in between would blink and
/// bounce the focus. When none is up, a blocking call may follow that would leave a stale picture.
void Manager::lowered()
{
    m_isLowered = true;
    updateDim();
    if (!evas_object_visible_get(m_window))
        return;
    if (!m_hidesWhenLowered)
        emptyNow();
    else if (FocusStack::instance().empty())
        hideNow();
    else if (!m_hideJob)
        m_hideJob = ecore_job_add(on_hideJob, this);
}

void Manager::raised()
{
    m_isLowered = false;
    updateDim();
    cancelHide();
}

void Manager::hideNow()
{
    cancelHide();
    evas_object_hide(m_window);
    m_readout->stop();
    syncWindowSystem(m_window);
}

/// A window that stays is emptied: what has gone from it is taken off the screen at once, for the same
/// reason.
void Manager::emptyNow()
{
    if (!FocusStack::instance().empty())
        return;
    elm_win_render(m_window);
    syncWindowSystem(m_window);
}

void Manager::cancelHide()
{
    if (m_hideJob)
        ecore_job_del(std::exchange(m_hideJob, nullptr));
}

void Manager::on_hideJob(void* data)
{
    auto* self = static_cast<Manager*>(data);
    self->m_hideJob = nullptr;
    self->hideNow();
}

void Manager::on_windowDeleted(void* data, Evas*, Evas_Object*, void*)
{
    static_cast<Manager*>(data)->detach();
}

void Manager::on_windowResized(void* data, Evas*, Evas_Object* window, void*)
{
    int width = 0;
    int height = 0;
    evas_object_geometry_get(window, nullptr, nullptr, &width, &height);
    evas_object_geometry_set(static_cast<Manager*>(data)->m_dim, 0, 0, width, height);
}

void Manager::on_windowShown(void* data, Evas*, Evas_Object* window, void*)
{
    static_cast<Manager*>(data)->m_keyGuard->windowShown();
    on_windowState(data, nullptr, window, nullptr);
}

void Manager::on_windowState(void*, Evas*, Evas_Object* window, void*)
{
    app::windowStateChanged(evas_object_visible_get(window), elm_win_focus_get(window));
}

void Manager::on_windowFocus(void* data, Evas_Object* window, void*)
{
    auto* self = static_cast<Manager*>(data);
    if (elm_win_focus_get(window))
        self->m_keyGuard->windowFocused();
    on_windowState(data, nullptr, window, nullptr);
}

Eina_Bool Manager::on_lower(void*, Evas_Object* window)
{
    Manager* manager = of(window);
    if (!manager)
        return EINA_TRUE;
    manager->lowered();
    return EINA_FALSE;
}

Eina_Bool Manager::on_raise(void*, Evas_Object* window)
{
    if (Manager* manager = of(window))
        manager->raised();
    return EINA_TRUE;
}

} // namespace orbis::flux

using namespace orbis::flux;

Eina_Bool elm_flux_manager_init(Evas_Object* win)
{
    if (!isUsable(win) || elm_object_top_widget_get(win) != win)
        return EINA_FALSE;
    if (Manager::of(win))
        return EINA_TRUE;
    ensureTheme();
    checkSearchOrder();
    delete std::exchange(s_manager, nullptr); // its last word is about the former window, not this one
    s_manager = new Manager(win);
    s_trap.version = ELM_WIN_TRAP_VERSION;
    s_trap.lower = Manager::on_lower;
    s_trap.raise = Manager::on_raise;
    elm_win_trap_set(&s_trap);
    return EINA_TRUE;
}

void elm_flux_manager_fini(void)
{
    elm_win_trap_set(nullptr);
    delete std::exchange(s_manager, nullptr);
}

Eina_Bool elm_flux_manager_rotation_disable(Evas_Object* win)
{
    if (!isUsable(win) || elm_object_top_widget_get(win) != win)
        return EINA_FALSE;
    elm_win_wm_rotation_preferred_rotation_set(win, 0);
    return EINA_TRUE;
}

void elm_flux_bg_grid_show(Eina_Bool)
{
    // There is no grid to show outside the designers' tools.
}
