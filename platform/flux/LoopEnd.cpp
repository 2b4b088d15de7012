// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/LoopEnd.h"

// The loop's quit is a method of an object, which the toolkit lets one override.
#define EFL_BETA_API_SUPPORT 1
#include <Ecore.h>
#include <Efl_Core.h>

namespace orbis::flux {

namespace {

bool s_isAskedFor = false;

void on_quit(Eo* loop, void*, Eina_Value exitCode)
{
    s_isAskedFor = true;
    efl_loop_quit(efl_super(loop, EFL_OBJECT_OVERRIDE_CLASS), exitCode);
}

} // namespace

LoopEnd::LoopEnd()
{
    s_isAskedFor = false;
    // To take an override back leaks, so a loop keeps it.
    static const Eo* s_loop = nullptr;
    Eo* loop = efl_main_loop_get();
    if (loop == s_loop)
        return;
    EFL_OPS_DEFINE(operations, EFL_OBJECT_OP_FUNC(efl_loop_quit, on_quit));
    if (efl_object_override(loop, &operations))
        s_loop = loop;
}

bool LoopEnd::isAskedFor() const
{
    return s_isAskedFor;
}

} // namespace orbis::flux
