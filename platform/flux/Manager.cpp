// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Manager.h"

#include "app/WindowState.h"
#include "elm_flux.h"
#include "flux/FocusStack.h"
#include "flux/Theme.h"
#include "flux/Widget.h"
#include "flux/WindowSignal.h"

#include <utility>

namespace orbis::flux {

namespace {

/// Owned, but by nobody that is destroyed when the process exits: what it uses is gone by then.
Manager* s_manager = nullptr;

/// Borrowed by the toolkit while it is set.
Elm_Win_Trap s_trap {};

void removeManager()
{
    if (!s_manager)
        return;
    WindowHost::appoint(nullptr);
    delete std::exchange(s_manager, nullptr);
    app::windowStateChanged(false, false);
}

/// Called by the toolkit instead of lowering (result false) any window.
Eina_Bool on_lower(void*, Evas_Object* window)
{
    if (!WindowHost::of(window))
        return EINA_TRUE;
    s_manager->lowered();
    return EINA_FALSE;
}

/// Called by the toolkit before raising any window.
Eina_Bool on_raise(void*, Evas_Object* window)
{
    if (WindowHost::of(window))
        s_manager->raised();
    return EINA_TRUE;
}

} // namespace

Manager::Manager(Evas_Object* window)
    : WindowHost(window)
    , m_readout(window)
    , m_keyGuard(window, [this] { m_readout.upOrDown(); })
    , m_leftovers(evas_object_evas_get(window))
    , m_fonts(window)
    , m_displayLoss(window)
    , m_pressGate(window, m_keyGuard)
    , m_dimming(window)
    , m_backdrop(window)
    , m_exposure(window)
    , m_look(window, [] { FocusStack::instance().updateDims(); })
    , m_lowering(window, [this] { m_readout.windowGone(); })
    , m_placement(window)
{
    evas_object_event_callback_add(window, EVAS_CALLBACK_DEL, on_windowDeleted, this);
    evas_object_event_callback_add(window, EVAS_CALLBACK_SHOW, on_windowShown, this);
    evas_object_event_callback_add(window, EVAS_CALLBACK_HIDE, on_windowState, this);
    evas_object_smart_callback_add(window, "focused", on_windowFocus, this);
    evas_object_smart_callback_add(window, "unfocused", on_windowFocus, this);
}

Manager::~Manager()
{
    evas_object_event_callback_del_full(m_window, EVAS_CALLBACK_DEL, on_windowDeleted, this);
    evas_object_event_callback_del_full(m_window, EVAS_CALLBACK_SHOW, on_windowShown, this);
    evas_object_event_callback_del_full(m_window, EVAS_CALLBACK_HIDE, on_windowState, this);
    evas_object_smart_callback_del_full(m_window, "focused", on_windowFocus, this);
    evas_object_smart_callback_del_full(m_window, "unfocused", on_windowFocus, this);
}

void Manager::windowSignal(std::string_view emission)
{
    if (emission != "SetDim" && emission != "SetNormal")
        return;
    m_dimming.setWanted(emission == "SetDim");
    FocusStack::instance().updateDims();
}

/// What is being read out is of a popup that went or is covered now, and what was pressed up to now was meant
/// for it.
void Manager::topPopupChanged(const Evas_Object* window)
{
    m_readout.topPopupChanged();
    if (window == m_window)
        m_pressGate.pictureChanges();
}

void Manager::popupGone()
{
    m_leftovers.add();
    m_fonts.popupGone();
}

void Manager::lowered()
{
    m_dimming.setLowered(true);
    m_lowering.lowered();
}

void Manager::raised()
{
    m_dimming.setLowered(false);
    m_lowering.raised();
}

void Manager::on_windowDeleted(void*, Evas*, Evas_Object*, void*)
{
    removeManager();
}

void Manager::on_windowShown(void* data, Evas*, Evas_Object* window, void*)
{
    auto* self = static_cast<Manager*>(data);
    self->m_keyGuard.windowShown();
    self->m_readout.somethingChanged();
    on_windowState(data, nullptr, window, nullptr);
}

void Manager::on_windowState(void*, Evas*, Evas_Object* window, void*)
{
    app::windowStateChanged(evas_object_visible_get(window), elm_win_focus_get(window));
}

void Manager::on_windowFocus(void* data, Evas_Object* window, void*)
{
    if (elm_win_focus_get(window))
        static_cast<Manager*>(data)->m_keyGuard.windowFocused();
    on_windowState(data, nullptr, window, nullptr);
}

} // namespace orbis::flux

using namespace orbis::flux;

Eina_Bool elm_flux_manager_init(Evas_Object* win)
{
    if (!isUsable(win) || elm_object_top_widget_get(win) != win)
        return EINA_FALSE;
    if (WindowHost::of(win))
        return EINA_TRUE;
    ensureTheme();
    checkSearchOrder();
    removeManager(); // its last word is about the former window, not this one
    s_manager = new Manager(win);
    WindowHost::appoint(s_manager);
    s_trap.version = ELM_WIN_TRAP_VERSION;
    s_trap.lower = on_lower;
    s_trap.raise = on_raise;
    elm_win_trap_set(&s_trap);
    return EINA_TRUE;
}

void elm_flux_manager_fini(void)
{
    elm_win_trap_set(nullptr);
    removeManager();
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
