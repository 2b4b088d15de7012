// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/* The smallest set-up daemon: shows a PIN, hears how it ended and sends the user interface home.
 *
 * Usage: daemon PHONE PIN        docs/daemon.md explains every step.
 * cc daemon.c -o daemon $(pkg-config --cflags --libs orbis-platform gio-2.0)
 */
#include <gio/gio.h>
#include <stdio.h>
#include <stdlib.h>
#include <vconf.h>

#define UI "com.norvale.orbis.tessel.ui"
#define UI_PATH "/com/norvale/orbis/tessel/ui"
#define DAEMON "com.norvale.orbis.tessel.daemon"
#define DAEMON_PATH "/com/norvale/orbis/tessel/daemon"

static const char kInterface[] =
    "<node><interface name='" DAEMON "'>"
    "<method name='ServerStarted'><arg type='b' direction='in'/><arg type='i' direction='out'/></method>"
    "<method name='StopTessel'><arg type='b' direction='in'/><arg type='b' direction='in'/>"
    "<arg type='i' direction='out'/></method>"
    "</interface></node>";

static GMainLoop* s_loop;
static char** s_texts; /* the phone's name and the PIN */
static gboolean s_seen; /* whether the user interface has been there */

static void on_call(GDBusConnection* bus, const char* sender, const char* path, const char* interface,
    const char* method, GVariant* arguments, GDBusMethodInvocation* call, void* data)
{
    gboolean first = TRUE;
    char* printed = g_variant_print(arguments, FALSE);
    printf("%s %s\n", method, printed);
    g_free(printed);
    g_variant_get_child(arguments, 0, "b", &first);
    /* At once: the user interface stands still until then. */
    g_dbus_method_invocation_return_value(call, g_variant_new("(i)", 0));
    if (g_str_equal(method, "StopTessel") && !first) /* nobody pressed anything: it stays until it is told */
        vconf_set_int("db/menu/network/tessel_startmode", 100);
}

static void on_answer(GObject* bus, GAsyncResult* result, void* data)
{
    GError* error = NULL;
    GVariant* answer = g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &error);
    printf(answer ? "shown\n" : "not shown: %s\n", error ? error->message : "");
    g_clear_error(&error);
    g_clear_pointer(&answer, g_variant_unref);
}

/* Called also when it was there first. Not to be called synchronously: it may be waiting for us. */
static void on_ui_there(GDBusConnection* bus, const char* name, const char* owner, void* data)
{
    s_seen = TRUE;
    g_dbus_connection_call(bus, UI, UI_PATH, UI, "ShowPinPopup",
        g_variant_new("(ss)", s_texts[0], s_texts[1]), G_VARIANT_TYPE("(i)"), G_DBUS_CALL_FLAGS_NO_AUTO_START,
        -1, NULL, on_answer, NULL);
}

static void on_ui_gone(GDBusConnection* bus, const char* name, void* data)
{
    if (s_seen)
        g_main_loop_quit(s_loop);
}

static void on_bus(GDBusConnection* bus, const char* name, void* data)
{
    static const GDBusInterfaceVTable s_calls = {on_call, NULL, NULL, {NULL}};
    GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(kInterface, NULL);
    g_dbus_connection_register_object(bus, DAEMON_PATH, node->interfaces[0], &s_calls, NULL, NULL, NULL);
    g_dbus_node_info_unref(node);
}

static void on_name_lost(GDBusConnection* bus, const char* name, void* data)
{
    fprintf(stderr, "%s cannot be had\n", name);
    exit(1);
}

int main(int argc, char** argv)
{
    if (argc != 3) {
        fprintf(stderr, "Usage: %s PHONE PIN\n", argv[0]);
        return 2;
    }
    setvbuf(stdout, NULL, _IOLBF, 0);
    s_texts = argv + 1;
    s_loop = g_main_loop_new(NULL, FALSE);
    g_bus_own_name(G_BUS_TYPE_SYSTEM, DAEMON, G_BUS_NAME_OWNER_FLAGS_DO_NOT_QUEUE, on_bus, NULL, on_name_lost,
        NULL, NULL);
    g_bus_watch_name(
        G_BUS_TYPE_SYSTEM, UI, G_BUS_NAME_WATCHER_FLAGS_NONE, on_ui_there, on_ui_gone, NULL, NULL);
    g_main_loop_run(s_loop);
    return 0;
}
