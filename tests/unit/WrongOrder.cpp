// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A program that is linked with the toolkit before the platform; run by FluxWindowTest.
#include "elm_flux.h"

int main(int argc, char** argv)
{
    elm_init(argc, argv);
    Evas_Object* window = elm_win_add(nullptr, "test", ELM_WIN_BASIC);
    elm_flux_manager_init(window);
    elm_object_signal_emit(window, "SetDim", "");
    elm_flux_manager_fini();
    elm_shutdown();
    return 0;
}
