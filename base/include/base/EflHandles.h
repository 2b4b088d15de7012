// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Owners of the handles of the toolkit.
#pragma once

#include "base/Handles.h"

#include <Ecore_Evas.h>
#include <Elementary.h>

namespace base {

using ObjectPtr = CHandle<Evas_Object, evas_object_del>;
using CanvasPtr = CHandle<Ecore_Evas, ecore_evas_free>;
using JobPtr = CHandle<Ecore_Job, ecore_job_del>;
using CursorPtr = CHandle<Evas_Textblock_Cursor, evas_textblock_cursor_free>;
using TextblockStylePtr = CHandle<Evas_Textblock_Style, evas_textblock_style_free>;
using BufferPtr = CHandle<Eina_Strbuf, eina_strbuf_free>;

} // namespace base
