#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Tessel UI authors
# SPDX-License-Identifier: Apache-2.0

# Asks two buses, a strict and a generous one, what a bus policy lets each user do. Both ends of the set-up are there
# and run: the program, drawn into memory, and the simulator as the daemon. Needs root, to be the other users.
# Usage: policy.sh POLICY PROGRAM SIMULATOR USER DAEMON_USER OTHER_USER
set -eu
# shellcheck source=../../scripts/lib.sh
. "$(dirname "${BASH_SOURCE[0]}")/../../scripts/lib.sh"

[ $# -eq 6 ] || fail "wrong number of arguments"
policy=$1 program=$2 simulator=$3 user=$4 daemon_user=$5 other=$6
if [ "$(id -u)" -ne 0 ]; then
    say "Skipped: only root can act as the other users"
    exit 77
fi
for file in "$policy" "$program" "$simulator"; do
    setpriv --reuid="$other" --regid=nogroup --clear-groups test -r "$file" || {
        say "Skipped: $file cannot be read by other users"
        exit 77
    }
done

ui=com.norvale.orbis.tessel.ui
daemon=com.norvale.orbis.tessel.daemon
wrong=0 asked=0

as() { # USER COMMAND...
    local who=$1
    shift
    setpriv --reuid="$who" --regid="$(id -g "$who")" --clear-groups "$@"
}

# The rules around the policy: generous lets everyone do everything, strict is what a distribution ships.
start_bus() {
    local rules='<allow user="*"/><allow own="*"/><allow send_destination="*"/><allow receive_sender="*"/>'
    if [ "$1" = strict ]; then
        rules='<allow user="*"/><deny own="*"/><deny send_type="method_call"/><allow send_type="signal"/>
            <allow send_requested_reply="true" send_type="method_return"/>
            <allow send_requested_reply="true" send_type="error"/>
            <allow receive_type="method_call"/><allow receive_type="method_return"/>
            <allow receive_type="error"/><allow receive_type="signal"/>
            <allow send_destination="org.freedesktop.DBus" send_interface="org.freedesktop.DBus"/>'
    fi
    cat >"$WORK_FOLDER/$1.conf" <<END
<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <listen>unix:path=$WORK_FOLDER/$1</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">$rules</policy>
  <include>$policy</include>
</busconfig>
END
    run_in_background "bus-$1" dbus-daemon --config-file="$WORK_FOLDER/$1.conf" --nofork --nopidfile --print-address
    wait_until 10 has_line "$LOG_FOLDER/bus-$1.out" || fail "no bus: $(cat "$LOG_FOLDER/bus-$1.log")"
    DBUS_SYSTEM_BUS_ADDRESS=$(head -n 1 "$LOG_FOLDER/bus-$1.out")
    export DBUS_SYSTEM_BUS_ADDRESS
}

answer_to() { # USER DESTINATION PATH METHOD [ARGUMENT...]
    local who=$1 destination=$2 path=$3
    shift 3
    as "$who" dbus-send --system --print-reply --reply-timeout=20000 --dest="$destination" "$path" "$@" 2>&1
}

# expect allowed|denied WHAT USER DESTINATION PATH METHOD [ARGUMENT...]
expect() {
    local expected=$1 what=$2 answer found=allowed
    shift 2
    if ! answer=$(answer_to "$@"); then
        found=failed
        [[ $answer != *AccessDenied* ]] || found=denied
    fi
    asked=$((asked + 1))
    [ "$found" != "$expected" ] || return 0
    printf '%s bus: %s by %s is %s, not %s: %s\n' "$kind" "$what" "$1" "$found" "$expected" "${answer:0:200}"
    wrong=$((wrong + 1))
}

may_own() { # allowed|denied NAME USER
    expect "$1" "owning $2" "$3" org.freedesktop.DBus /org/freedesktop/DBus org.freedesktop.DBus.RequestName \
        "string:$2" uint32:4
}

is_owned() {
    as root dbus-send --system --print-reply --dest=org.freedesktop.DBus /org/freedesktop/DBus \
        org.freedesktop.DBus.GetNameOwner "string:$1" >/dev/null 2>&1
}

ask_all() {
    local who path=/com/norvale/orbis/tessel
    may_own allowed $ui "$user"
    may_own allowed $daemon "$daemon_user"
    for who in root "$other"; do
        may_own denied $ui "$who"
        may_own denied $daemon "$who"
    done
    may_own denied $ui "$daemon_user"
    may_own denied $daemon "$user"

    run_in_background "simulator-$kind" setpriv --reuid="$daemon_user" --regid="$(id -g "$daemon_user")" \
        --clear-groups "$simulator" --stay --end-after-stop never
    wait_until 20 is_owned $daemon || fail "no daemon: $(cat "$LOG_FOLDER/simulator-$kind.log")"
    run_in_background "program-$kind" setpriv --reuid="$user" --regid="$(id -g "$user")" --clear-groups \
        "$program" LAUNCH_MODE=POPUP
    wait_until 20 is_owned $ui || fail "no program: $(tail -n 5 "$LOG_FOLDER/program-$kind.log")"

    local introspect=org.freedesktop.DBus.Introspectable.Introspect destination
    local unique
    unique=$(answer_to root org.freedesktop.DBus /org/freedesktop/DBus org.freedesktop.DBus.GetNameOwner \
        string:$ui | sed -n 's/.*string "\(.*\)"/\1/p')
    for destination in $ui "$unique"; do # a caller may know the connection's own name
        for who in root "$daemon_user"; do
            expect allowed "a request to $destination" "$who" "$destination" $path/ui $ui.HidePopup
            expect allowed "a look at $destination" "$who" "$destination" $path/ui $introspect
        done
        expect denied "a request to $destination" "$other" "$destination" $path/ui $ui.HidePopup
        expect denied "a look at $destination" "$other" "$destination" $path/ui $introspect
        expect denied "a ping of $destination" "$other" "$destination" / org.freedesktop.DBus.Peer.Ping
    done
    for who in root "$user"; do
        expect allowed "a stop" "$who" $daemon $path/daemon $daemon.StopTessel boolean:true boolean:false
    done
    for who in "$other" "$daemon_user"; do
        expect denied "a stop" "$who" $daemon $path/daemon $daemon.StopTessel boolean:true boolean:false
        expect denied "a look at the daemon" "$who" $daemon $path/daemon $introspect
    done
}

sandbox_start
chmod 755 "$WORK_FOLDER"
chmod 777 "$WORK_FOLDER"/{state,runtime,home,xdg}
export ELM_ENGINE=buffer ELM_DISPLAY=buffer
for kind in strict generous; do
    start_bus "$kind"
    ask_all
    stop_process "$LAST_PID"
done
say "$asked questions, $wrong wrong answers"
[ "$wrong" -eq 0 ] && [ "$asked" -eq 56 ]
