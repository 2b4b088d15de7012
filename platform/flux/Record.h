// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Private data of a styled widget, kept on its toolkit object.
#pragma once

#include <Elementary.h>

namespace orbis::flux {

/// The key of popups' records, for who only asks whether something is one.
inline constexpr const char* kPopupKey = "orbis.flux.popup";

/// A record type R names the key it is kept under (R::kKey) and the object it belongs to (R::object).
/// The record is made with attachRecord() and goes with the object, before the widgets inside are deleted:
/// its destructor takes back whatever of it is registered elsewhere. recordOf() gives null for a null or
/// deleted object and for one that is another kind of widget.
template <typename R>
R* recordOf(const Evas_Object* object)
{
    return object ? static_cast<R*>(evas_object_data_get(object, R::kKey)) : nullptr;
}

template <typename R>
void on_recordOwnerDeleted(void* data, Evas*, Evas_Object* object, void*)
{
    evas_object_data_del(object, R::kKey);
    delete static_cast<R*>(data);
}

template <typename R>
R* attachRecord(Evas_Object* object)
{
    auto* record = new R;
    record->object = object;
    evas_object_data_set(object, R::kKey, record);
    evas_object_event_callback_add(object, EVAS_CALLBACK_DEL, on_recordOwnerDeleted<R>, record);
    return record;
}

} // namespace orbis::flux
