// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/ForgottenMemory.h"

#include <cstdlib>

namespace orbis::flux {

namespace {

bool isForgetful()
{
    return evas_version->major == 1 && evas_version->minor == 26 && evas_version->micro == 3;
}

/// The last that is told of an object, which has no data any more by then.
void on_gone(void* record, Evas*, Evas_Object*, void*)
{
    free(record);
}

} // namespace

void freeWithGroup(Evas_Object* group)
{
    void* record = group && isForgetful() ? evas_object_smart_data_get(group) : nullptr;
    if (record)
        evas_object_event_callback_add(group, EVAS_CALLBACK_FREE, on_gone, record);
}

} // namespace orbis::flux
