/// The one window of the application on the screen.
#pragma once

#include "app/DisplayLoss.h"
#include "flux/KeyGuard.h"
#include "flux/Leftovers.h"
#include "flux/PressGate.h"
#include "flux/Readout.h"

#include <Elementary.h>

#include <memory>
#include <string_view>

namespace orbis::flux {

/// Gives the managed window its place, takes it off the screen when it is lowered, dims what is behind it on
/// request, and reads the focused widget out. Lives from elm_flux_manager_init() to _fini(), or to the
/// window's own end. Main loop only.
class Manager {
public:
    explicit Manager(Evas_Object* window);
    ~Manager();
    Manager(const Manager&) = delete;
    Manager& operator=(const Manager&) = delete;

    /// @return the manager of @p window, or null for any other object
    static Manager* of(const Evas_Object* window);

    /// A signal that the application emitted on the window; unknown ones are ignored.
    void windowSignal(std::string_view emission);

    /// @return whether the application asked for the picture behind the window to be dimmed
    bool isDimmed() const { return m_isDimmed; }

    /// Fits the toolkit's scale to the screen, as far as the screen's size is known.
    void ensureScale();

    /// A popup of the window has been deleted.
    void popupGone();
    /// What a press would act on is another thing from here on: what was pressed before that has been drawn
    /// does not count for it.
    void pictureChanges();

    /// The focus came to a button. Toolkit events of the kind also come in passing, so it is looked at
    /// once the loop is idle again.
    void focusMoved();

    /// The focus left a button. When the whole window lost the keys, the button still has the focus in it.
    void focusLeft();

    /// What is being read out is of a popup that went or is covered now.
    static void popupsChanged();

    /// Called by the toolkit instead of lowering (result false), and before raising, any window.
    static Eina_Bool on_lower(void*, Evas_Object* window);
    static Eina_Bool on_raise(void*, Evas_Object* window);

private:
    static void on_windowDeleted(void* data, Evas*, Evas_Object*, void*);
    static void on_windowResized(void* data, Evas*, Evas_Object*, void*);
    static void on_windowShown(void* data, Evas*, Evas_Object*, void*);
    static void on_windowState(void* data, Evas*, Evas_Object*, void*);
    static void on_windowFocus(void* data, Evas_Object*, void*);
    static Eina_Bool on_screenResized(void* data, int, void* eventInfo);
    static void on_hideJob(void* data);
    static void on_focusJob(void* data);

    struct Size {
        int width = 0;
        int height = 0;
    };

    Size screenSize() const;
    void placeWindow();
    void fitWindow();
    void watchScreen();
    void lowered();
    void raised();
    void updateDim();
    void hideNow();
    void emptyNow();
    void cancelHide();
    void detach();

    Evas_Object* m_window;
    Evas_Object* m_dim = nullptr; ///< child of the window; made when first needed
    Size m_scaledTo; ///< screen that the scale was chosen for; empty while none is known
    Ecore_Event_Handler* m_screenWatch = nullptr;
    bool m_isDimmed = false;
    bool m_isLowered = false; ///< since then nothing raised it
    Ecore_Job* m_hideJob = nullptr; ///< cleared by the job itself
    Ecore_Job* m_focusJob = nullptr; ///< cleared by the job itself
    bool m_hidesWhenLowered = true; ///< a window that cannot be mapped again is only emptied
    std::unique_ptr<KeyGuard> m_keyGuard;
    std::unique_ptr<Leftovers> m_leftovers;
    std::unique_ptr<app::DisplayLoss> m_displayLoss;
    std::unique_ptr<PressGate> m_pressGate; // knows the guard, so it goes first
    Evas_Object* m_spoken = nullptr; ///< borrowed, only compared: what was read out and still has the focus
    std::unique_ptr<Readout> m_readout = std::make_unique<Readout>(); ///< as long as the window
};

} // namespace orbis::flux
