// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The one window of the application on the screen.
#pragma once

#include "app/DisplayLoss.h"
#include "flux/Backdrop.h"
#include "flux/Dimming.h"
#include "flux/Exposure.h"
#include "flux/FocusReadout.h"
#include "flux/KeyGuard.h"
#include "flux/Leftovers.h"
#include "flux/Look.h"
#include "flux/Lowering.h"
#include "flux/Placement.h"
#include "flux/PressGate.h"
#include "flux/WarmFonts.h"
#include "flux/WindowHost.h"

namespace orbis::flux {

/// Holds together what a managed window has, each of which is a thing of its own, and passes on to them what
/// happens. Lives from elm_flux_manager_init() to _fini(), or to the window's own end. Main loop only.
class Manager final : public WindowHost {
public:
    explicit Manager(Evas_Object* window);
    ~Manager();

    void windowSignal(std::string_view emission) override;
    bool isDimmed() const override { return m_dimming.isWanted(); }
    void ensureScale() override { m_placement.ensureScale(); }
    void topPopupChanged(const Evas_Object* window) override;
    void popupGone() override;
    void pictureChanges() override { m_pressGate.pictureChanges(); }
    void focusMoved() override { m_readout.somethingChanged(); }
    void focusLeft() override { m_readout.focusLeft(); }
    void textsChanged() override { m_readout.somethingChanged(); }
    void givesUp(Evas_Object* popup, int left) override { m_readout.givesUp(popup, left); }

    void lowered();
    void raised();

private:
    static void on_windowDeleted(void*, Evas*, Evas_Object*, void*);
    static void on_windowShown(void* data, Evas*, Evas_Object*, void*);
    static void on_windowState(void*, Evas*, Evas_Object*, void*);
    static void on_windowFocus(void* data, Evas_Object*, void*);

    FocusReadout m_readout;
    KeyGuard m_keyGuard;
    Leftovers m_leftovers;
    WarmFonts m_fonts;
    app::DisplayLoss m_displayLoss;
    PressGate m_pressGate; // knows the guard, so it goes first
    Dimming m_dimming;
    Backdrop m_backdrop;
    Exposure m_exposure;
    LookWatch m_look;
    Lowering m_lowering;
    Placement m_placement; // made last, because it changes the window
};

} // namespace orbis::flux
