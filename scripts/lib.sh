# SPDX-FileCopyrightText: 2026 The Tessel UI authors
# SPDX-License-Identifier: Apache-2.0

# Shared by the scripts: a private machine in a temporary folder, with a system bus, a display and a settings
# store of its own, and an end that leaves nothing behind. To be sourced; the caller uses `set -eu`.
#
#   sandbox_start          temporary folders; cleanup on exit and on signals
#   bus_start              a private system bus
#   display_start          the present X display, else a virtual one with a window manager and a compositor
#   run_in_background NAME COMMAND...   a process that ends with the script; its id is in LAST_PID
#   run_stoppable COMMAND...            runs it to its end; a signal to the script ends it and all that it started
#   wait_until SECONDS COMMAND...       waits for a condition
#   progress TEXT                       on a terminal, a line that the next one takes away
#   run_logged FILE TEXT COMMAND...     a command with its output in the file; on a terminal the last line is shown
# shellcheck shell=bash

WORK_FOLDER=
LOG_FOLDER=
DISPLAY_KIND=
LAST_PID=
SETTLED=
STARTED_PIDS=()
STOPPABLE_PID=
PROGRESS=false

say() {
    progress_end
    printf '%s\n' "$*"
}

fail() {
    progress_end
    if [ -t 2 ] && [ "${TERM:-dumb}" != dumb ] && [ -z "${NO_COLOR:-}" ]; then
        printf '\033[1;31m%s:\033[0m %s\n' "${0##*/}" "$*" >&2
    else
        printf '%s: %s\n' "${0##*/}" "$*" >&2
    fi
    exit 1
}

is_watched() {
    [ -t 2 ] && [ "${TERM:-dumb}" != dumb ]
}

progress() {
    is_watched || return 0
    printf '\r\033[K%.78s' "$*" >&2
    PROGRESS=true
}

progress_end() {
    ! $PROGRESS || printf '\r\033[K' >&2
    PROGRESS=false
}

# Whoever watches a long build sees how far it is. What shows that ends with the script, whatever ends it.
run_logged() {
    local log=$1 text=$2 status=0 shows=
    shift 2
    if is_watched; then
        : >"$log"
        while is_alive $$; do
            progress "$text: $(tail -n 1 "$log")"
            sleep 0.5
        done &
        shows=$!
    fi
    "$@" >"$log" 2>&1 || status=$?
    if [ -n "$shows" ]; then
        kill "$shows" && wait "$shows" 2>/dev/null || true
        PROGRESS=true
        progress_end
    fi
    return "$status"
}

# ---- processes

run_in_background() {
    local name=$1
    shift
    : >"$LOG_FOLDER/$name.out" # now: the process itself may open it only after somebody looked into it
    "$@" >"$LOG_FOLDER/$name.out" 2>"$LOG_FOLDER/$name.log" </dev/null &
    LAST_PID=$!
    STARTED_PIDS+=("$LAST_PID")
}

# A signal's trap waits for a foreground process, but not for this one; and a compiler's parent need not pass on what
# ends it, so that they have a group of their own.
run_stoppable() {
    local status=0
    setsid "$@" </dev/null &
    STOPPABLE_PID=$!
    wait "$STOPPABLE_PID" || status=$?
    STOPPABLE_PID=
    return "$status"
}

is_alive() {
    kill -0 "$1" 2>/dev/null
}

has_ended() {
    ! is_alive "$1"
}

# Looks for the condition often enough for a person not to notice, for at most so many seconds.
wait_until() {
    local deadline=$((SECONDS + $1 + 1))
    shift
    until "$@"; do
        [ "$SECONDS" -lt "$deadline" ] || return 1
        sleep 0.05
    done
}

# Ends one process that this script started; harder after three seconds.
stop_process() {
    is_alive "$1" || return 0
    kill "$1" 2>/dev/null || return 0
    wait_until 3 has_ended "$1" || kill -KILL "$1" 2>/dev/null || true
}

# What was started but not noted yet when a signal came: the compositor goes into the background by itself, all others
# are jobs of this shell.
note_unnoted() {
    local pid
    if [ -e "$WORK_FOLDER/picom.started" ] && wait_until 2 has_line "$WORK_FOLDER/picom.pid"; then
        STARTED_PIDS+=("$(cat "$WORK_FOLDER/picom.pid")")
    fi
    for pid in $(jobs -p); do
        [[ " ${STARTED_PIDS[*]} " = *" $pid "* ]] || STARTED_PIDS+=("$pid")
    done
}

sandbox_cleanup() {
    local status=$? index
    trap '' INT TERM HUP
    trap - EXIT
    progress_end
    [ -z "$STOPPABLE_PID" ] || kill -- "-$STOPPABLE_PID" 2>/dev/null || true
    note_unnoted
    # The latest first: programs before the display and the bus they use.
    for ((index = ${#STARTED_PIDS[@]} - 1; index >= 0; index--)); do
        stop_process "${STARTED_PIDS[index]}"
    done
    [ -z "$WORK_FOLDER" ] || rm -rf "$WORK_FOLDER"
    exit "$status"
}

# From now on the script's end, by a signal too, leaves no process of its behind.
clean_up_at_exit() {
    trap sandbox_cleanup EXIT
    trap 'exit 129' HUP
    trap 'exit 130' INT
    trap 'exit 143' TERM
}

# A helper has said something, to the end of the line.
has_line() {
    [ -e "$1" ] && [ "$(wc -l <"$1")" -gt 0 ]
}

# ---- folders

# $1: where the logs of the helpers go; by default a folder that is removed at the end.
sandbox_start() {
    clean_up_at_exit
    WORK_FOLDER=$(mktemp -d "${TMPDIR:-/tmp}/tessel.XXXXXX")
    LOG_FOLDER=${1:-$WORK_FOLDER/logs}
    mkdir -p "$LOG_FOLDER" "$WORK_FOLDER"/{state,runtime,home}
    mkdir -m 700 "$WORK_FOLDER/xdg"

    # A present display lets its clients in by a file in the real home folder.
    if [ -z "${XAUTHORITY:-}" ] && [ -e "${HOME:-}/.Xauthority" ]; then
        export XAUTHORITY="$HOME/.Xauthority"
    fi
    export ORBIS_STATE_DIR="$WORK_FOLDER/state"
    export ORBIS_RUNTIME_DIR="$WORK_FOLDER/runtime"
    export HOME="$WORK_FOLDER/home"
    export XDG_RUNTIME_DIR="$WORK_FOLDER/xdg"
    export ECORE_NO_SYSTEM_MODULES=1
    # No session bus is needed; an address that cannot be used keeps libraries from starting one.
    export DBUS_SESSION_BUS_ADDRESS=disabled:
}

# ---- bus

bus_start() {
    cat >"$WORK_FOLDER/bus.conf" <<END
<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <listen>unix:path=$WORK_FOLDER/bus</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow user="*"/>
    <allow own="*"/>
    <allow send_destination="*" eavesdrop="true"/>
    <allow receive_sender="*" eavesdrop="true"/>
  </policy>
</busconfig>
END
    run_in_background bus dbus-daemon --config-file="$WORK_FOLDER/bus.conf" --nofork --nopidfile --print-address
    wait_until 10 has_line "$LOG_FOLDER/bus.out" || fail "the bus did not start: $(cat "$LOG_FOLDER/bus.log")"
    DBUS_SYSTEM_BUS_ADDRESS=$(head -n 1 "$LOG_FOLDER/bus.out")
    export DBUS_SYSTEM_BUS_ADDRESS
}

# ---- display

present_display_works() {
    [ -n "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ] && xdpyinfo >/dev/null 2>&1
}

# It owns the windows before it is ready for them: what is mapped in between stays without keys, or is not mapped.
manages_windows() {
    grep -qx ready "$LOG_FOLDER/openbox.out"
}

# SCREEN_SIZE: its pixels, 1920x1080 by default.
virtual_display_start() {
    run_in_background xvfb Xvfb -displayfd 1 -screen 0 "${SCREEN_SIZE:-1920x1080}x24" -nolisten tcp -noreset
    # The number is written once the server takes clients.
    wait_until 20 has_line "$LOG_FOLDER/xvfb.out" || fail "Xvfb did not start: $(tail -n 3 "$LOG_FOLDER/xvfb.log")"
    DISPLAY=:$(head -n 1 "$LOG_FOLDER/xvfb.out")
    export DISPLAY
    unset WAYLAND_DISPLAY XAUTHORITY

    run_in_background openbox openbox --startup 'echo ready'
    wait_until 20 manages_windows || fail "openbox did not start: $(tail -n 3 "$LOG_FOLDER/openbox.log")"

    # With a compositor the window's transparency is real. In the background mode picom's first process ends
    # when the compositor works, and the file then holds the id of the one that stays.
    : >"$WORK_FOLDER/picom.started"
    if ! picom --config /dev/null --backend xrender -b --write-pid-path "$WORK_FOLDER/picom.pid" \
        >"$LOG_FOLDER/picom.log" 2>&1; then
        fail "picom did not start: $(tail -n 3 "$LOG_FOLDER/picom.log")"
    fi
    wait_until 10 has_line "$WORK_FOLDER/picom.pid" || fail "picom did not say its process id"
    STARTED_PIDS+=("$(cat "$WORK_FOLDER/picom.pid")")
}

# Leaves "present" or "virtual" in DISPLAY_KIND. $1: "own" for a virtual one in any case.
display_start() {
    if [ "${1:-}" != own ] && present_display_works; then
        DISPLAY_KIND=present
    else
        # shellcheck disable=SC2034 # for the caller
        DISPLAY_KIND=virtual
        virtual_display_start
    fi
}

# Paints something like a film on the virtual screen, so that the dimming above it can be judged.
television_picture() {
    cat >"$WORK_FOLDER/picture.svg" <<'END'
<svg xmlns="http://www.w3.org/2000/svg" width="1920" height="1080" viewBox="0 0 1920 1080">
  <defs>
    <linearGradient id="sky" x1="0" y1="0" x2="0" y2="1">
      <stop offset="0" stop-color="#1d3f72"/><stop offset="0.55" stop-color="#e8895a"/>
      <stop offset="1" stop-color="#f7d9a0"/>
    </linearGradient>
    <linearGradient id="sea" x1="0" y1="0" x2="0" y2="1">
      <stop offset="0" stop-color="#c9805c"/><stop offset="1" stop-color="#16344f"/>
    </linearGradient>
  </defs>
  <rect width="1920" height="760" fill="url(#sky)"/>
  <circle cx="1340" cy="640" r="110" fill="#fff3cf"/>
  <path d="M0 640 L260 420 L470 600 L720 330 L1010 650 L1240 560 L1500 700 L1920 520 V770 H0 Z"
    fill="#37405f"/>
  <path d="M0 720 L380 610 L760 740 L1180 640 L1560 750 L1920 660 V780 H0 Z" fill="#232a45"/>
  <rect y="760" width="1920" height="320" fill="url(#sea)"/>
  <path d="M1180 800 H1500 M1240 850 H1440 M1150 905 H1530 M1280 960 H1400" stroke="#fff3cf"
    stroke-width="8" stroke-linecap="round" opacity="0.6"/>
</svg>
END
    rsvg-convert -o "$WORK_FOLDER/picture.png" "$WORK_FOLDER/picture.svg"
    hsetroot -cover "$WORK_FOLDER/picture.png" >/dev/null
}

# Writes the screen to a PNG file once it has not changed for longer than a motion or a hint takes to appear, or
# after some seconds when something on it keeps moving, such as a countdown; SETTLED says which. Fails when nothing can be written or the
# screen is still the one in $2. In microseconds, so that it takes no longer on a busy machine than it has to.
settled_screenshot() {
    local file=$1 before=${2:-} previous=$WORK_FOLDER/previous.png same=0 changed=0 round now still=0 moving=0
    SETTLED=false
    rm -f "$previous"
    for ((round = 0; round < 80; round++)); do
        now=${EPOCHREALTIME/[.,]/}
        scrot -o "$file" 2>/dev/null || return 1
        if [ -n "$before" ] && cmp -s "$file" "$before"; then
            same=0 still=$now
        elif cmp -s "$file" "$previous"; then
            same=$((same + 1))
        else
            same=0 still=$now changed=$((changed + 1))
            [ "$changed" -ne 1 ] || moving=$now
        fi
        if [ "$same" -ge 2 ] && [ $((now - still)) -ge 1500000 ]; then
            SETTLED=true
            break
        fi
        [ "$changed" -lt 4 ] || [ $((now - moving)) -lt 5000000 ] || break
        cp "$file" "$previous"
        [ "$round" -lt 8 ] || progress "looking at the screen"
        sleep 0.1
    done
    progress_end
    [ -z "$before" ] || ! cmp -s "$file" "$before"
}
