/// Owners for the C handles of GLib and GIO.
#ifndef DAEMON_SIM_HANDLES_H
#define DAEMON_SIM_HANDLES_H

#include <gio/gio.h>

#include <memory>
#include <type_traits>

namespace DaemonSim {

template <typename T, auto Free>
using CHandle = std::unique_ptr<T, std::integral_constant<decltype(Free), Free>>;

using GStr = CHandle<char, g_free>;
using StrvPtr = CHandle<char*, g_strfreev>;
using ErrorPtr = CHandle<GError, g_error_free>;
using VariantPtr = CHandle<GVariant, g_variant_unref>;
using LoopPtr = CHandle<GMainLoop, g_main_loop_unref>;
using NodeInfoPtr = CHandle<GDBusNodeInfo, g_dbus_node_info_unref>;
using ConnectionPtr = CHandle<GDBusConnection, g_object_unref>;
using InvocationPtr = CHandle<GDBusMethodInvocation, g_object_unref>;
using MessagePtr = CHandle<GDBusMessage, g_object_unref>;
using CancellablePtr = CHandle<GCancellable, g_object_unref>;

} // namespace DaemonSim

#endif
