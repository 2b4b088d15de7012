/// Owners of C handles: the release function is part of the type.
#pragma once

#include <gio/gio.h>

#include <cstdlib>
#include <memory>
#include <type_traits>

namespace TesselUI {

template <typename T, auto Release>
using CHandle = std::unique_ptr<T, std::integral_constant<decltype(Release), Release>>;

using MallocStr = CHandle<char, std::free>; ///< from the settings store, strdup and the toolkit
using GStr = CHandle<char, g_free>; ///< from GLib
using VariantPtr = CHandle<GVariant, g_variant_unref>;
using ErrorPtr = CHandle<GError, g_error_free>;

} // namespace TesselUI
