// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Motion.h"

#include <Ecore.h>

namespace orbis::flux {

namespace {

/// Longer than any motion of the theme, seconds.
constexpr double kLongestMotion = 0.25;

int s_turning = 0;
double s_smooth = 0; ///< the toolkit's own time between two looks; 0 as long as it is in force
Ecore_Timer* s_motion = nullptr;

void choose()
{
    const bool isSlow = s_turning > 0 && !s_motion;
    if (isSlow && s_smooth == 0) {
        s_smooth = ecore_animator_frametime_get();
        ecore_animator_frametime_set(Turning::kStep);
    } else if (!isSlow && s_smooth > 0) {
        ecore_animator_frametime_set(s_smooth);
        s_smooth = 0;
    }
}

Eina_Bool on_rest(void*)
{
    s_motion = nullptr;
    choose();
    return ECORE_CALLBACK_CANCEL;
}

} // namespace

Turning::Turning()
{
    ++s_turning;
    choose();
}

Turning::~Turning()
{
    if (--s_turning == 0 && s_motion) {
        ecore_timer_del(s_motion);
        s_motion = nullptr;
    }
    choose();
}

void moveSmoothly()
{
    if (s_turning == 0) // it is smooth already
        return;
    if (s_motion)
        ecore_timer_reset(s_motion);
    else
        s_motion = ecore_timer_add(kLongestMotion, on_rest, nullptr);
    choose();
}

} // namespace orbis::flux
