// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Owners of the handles of GLib and GIO.
#pragma once

#include "base/Handles.h"

#include <gio/gio.h>

namespace base {

/// A reference that is held on an object.
template <typename T>
using GObjectPtr = CHandle<T, g_object_unref>;

using GStr = CHandle<char, g_free>; ///< from GLib
using StrvPtr = CHandle<char*, g_strfreev>;
using ErrorPtr = CHandle<GError, g_error_free>;
using VariantPtr = CHandle<GVariant, g_variant_unref>;
using LoopPtr = CHandle<GMainLoop, g_main_loop_unref>;
using NodeInfoPtr = CHandle<GDBusNodeInfo, g_dbus_node_info_unref>;
using MarkupParserPtr = CHandle<GMarkupParseContext, g_markup_parse_context_free>;
using OptionContextPtr = CHandle<GOptionContext, g_option_context_free>;

} // namespace base
