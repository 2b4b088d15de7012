#!/bin/bash
# SPDX-FileCopyrightText: 2026 The Tessel UI authors
# SPDX-License-Identifier: Apache-2.0

# Runs as a service of the systemd that is booted in the bare root: has the unit started, seen and ended, and ended in bad
# ways. Speaks to whoever looks at the display through files in /root/unit; "well" is made at the end.
set -eux
folder=/root/unit
mkdir -p $folder
exec >$folder/log 2>&1
trap 'systemctl poweroff --force --force' EXIT
: >$folder/booted

as_daemon() {
    setpriv --reuid=tessel-daemon --regid="$(id -g tessel-daemon)" --init-groups "$@"
}

# Looks for at most 20 seconds.
until_true() {
    local round
    for ((round = 0; round < 200; round++)); do
        ! "$@" || return 0
        sleep 0.1
    done
    false
}

is() { # PROPERTY VALUE
    [ "$(systemctl show -P "$1" tessel-ui)" = "$2" ]
}

serves() {
    busctl call org.freedesktop.DBus / org.freedesktop.DBus GetNameOwner s com.norvale.orbis.tessel.ui
}

show_pin() {
    as_daemon busctl call com.norvale.orbis.tessel.ui /com/norvale/orbis/tessel/ui com.norvale.orbis.tessel.ui \
        ShowPinPopup ss "Anna's phone" 0427
}

# Between its end and what is made of that, the unit is active with no process.
runs_again() {
    is ActiveState active && ! is MainPID "$pid" && ! is MainPID 0
}

systemctl start dbus.socket
systemctl start tessel-ui
until_true serves
[ "$(show_pin)" = "i 0" ]
: >$folder/shown
until_true test -e $folder/seen

pid=$(systemctl show -P MainPID tessel-ui)
[ "$(stat -c %U /proc/"$pid")" = tessel-ui ]
grep -q 'CapBnd:.*0000000000000000' /proc/"$pid"/status
grep -q 'NoNewPrivs:.*1' /proc/"$pid"/status
# What it must not do, in the namespaces that it has.
as_unit() {
    nsenter --target "$pid" --mount -- "$@"
}
if as_unit touch /usr/apps/org.orbis.tessel-UI/config/new; then
    false
fi
as_unit touch /tmp/inside
[ ! -e /tmp/inside ]
[ "$(readlink /proc/"$pid"/ns/net)" != "$(readlink /proc/self/ns/net)" ]
# The log is the journal's, with the program's name.
journalctl -u tessel-ui --no-pager | grep -q 'tessel-ui\[.*Call ShowPinPopup method'

as_daemon orbis-settings set -t int db/menu/network/tessel_startmode 100
until_true is ActiveState inactive
is Result success

# Back after a crash, but not for ever: five starts a minute. On a slow machine the minute is over in between.
ends_again() {
    is ActiveState failed || runs_again
}
systemctl reset-failed tessel-ui || true # already forgotten
systemctl start tessel-ui
crashes=0
until is ActiveState failed; do
    until_true serves
    pid=$(systemctl show -P MainPID tessel-ui)
    kill -SEGV "$pid"
    crashes=$((crashes + 1))
    [ "$crashes" -le 15 ]
    until_true ends_again
done
[ "$crashes" -ge 5 ]
: >$folder/well
