#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Tessel UI authors
# SPDX-License-Identifier: Apache-2.0

"""The smallest set-up daemon: shows a PIN, hears how it ended and sends the user interface home.

Usage: daemon.py PHONE PIN        Needs python3-gi and orbis-settings. docs/daemon.md explains every step.
"""
import subprocess
import sys

from gi.repository import Gio, GLib

UI, UI_PATH = "com.norvale.orbis.tessel.ui", "/com/norvale/orbis/tessel/ui"
DAEMON, DAEMON_PATH = "com.norvale.orbis.tessel.daemon", "/com/norvale/orbis/tessel/daemon"
INTERFACE = f"""<node><interface name="{DAEMON}">
  <method name="ServerStarted"><arg type="b" direction="in"/><arg type="i" direction="out"/></method>
  <method name="StopTessel"><arg type="b" direction="in"/><arg type="b" direction="in"/>
                            <arg type="i" direction="out"/></method>
</interface></node>"""

loop = GLib.MainLoop()
seen = False  # whether the user interface has been there


def on_call(_bus, _sender, _path, _interface, method, arguments, call):
    call.return_value(GLib.Variant("(i)", (0,)))  # at once: the user interface stands still until then
    print(method, *arguments.unpack(), flush=True)
    if method == "StopTessel" and not arguments[0]:  # nobody pressed anything: it stays until it is told
        command = ["orbis-settings", "set", "-t", "int", "db/menu/network/tessel_startmode", "100"]
        subprocess.run(command, check=True)


def on_answer(bus, result):
    try:
        print("shown, answer", *bus.call_finish(result), flush=True)
    except GLib.Error as error:
        print("not shown:", error.message, flush=True)


def on_ui_there(bus, _name, _owner):
    """Called also when it was there first. Not to be called synchronously: it may be waiting for us."""
    global seen
    seen = True
    bus.call(UI, UI_PATH, UI, "ShowPinPopup", GLib.Variant("(ss)", sys.argv[1:3]), GLib.VariantType("(i)"),
             Gio.DBusCallFlags.NO_AUTO_START, -1, None, on_answer)


def on_ui_gone(_bus, _name):
    if seen:
        loop.quit()


def on_bus(bus, _name):
    node = Gio.DBusNodeInfo.new_for_xml(INTERFACE)
    bus.register_object(DAEMON_PATH, node.interfaces[0], on_call, None, None)


if len(sys.argv) != 3:
    sys.exit(__doc__)
Gio.bus_own_name(Gio.BusType.SYSTEM, DAEMON, Gio.BusNameOwnerFlags.DO_NOT_QUEUE, on_bus, None,
                 lambda _bus, name: sys.exit(f"{name} cannot be had"))
Gio.bus_watch_name(Gio.BusType.SYSTEM, UI, Gio.BusNameWatcherFlags.NONE, on_ui_there, on_ui_gone)
loop.run()
