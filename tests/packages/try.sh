# SPDX-FileCopyrightText: 2026 The Tessel UI authors
# SPDX-License-Identifier: Apache-2.0

# Runs what is installed in the bare root as a device would: the system bus with its installed policies, the program as
# its unit says, the daemon's user who asks, and a viewer. To be sourced by bare-root.sh.
# shellcheck shell=bash
# shellcheck disable=SC2154 # here, project and programs are the caller's

UI=com.norvale.orbis.tessel.ui
UI_PATH=/com/norvale/orbis/tessel/ui

# The value of a line of the installed unit.
of_unit() {
    sed -n "s/^$1=//p" "$ROOT/lib/systemd/system/tessel-ui.service"
}

# A process of the root that ends with this script.
start_inside() { # NAME USER COMMAND...
    local name=$1 user=$2
    shift 2
    run_in_background "$name" chroot "$ROOT" /usr/bin/setpriv --reuid="$user" \
        --regid="$(id_of "$user" g)" --init-groups \
        /usr/bin/env -i PATH=/usr/bin:/bin LC_ALL=C.UTF-8 "DISPLAY=$DISPLAY" HOME=/run/tessel-ui \
        XDG_RUNTIME_DIR=/run/tessel-ui XDG_CACHE_HOME=/run/tessel-ui/cache ORBIS_SPEECH_LOG=/run/tessel-ui/speech "$@"
}

id_of() { # USER u|g
    inside id "-$2" "$1"
}

as_user() { # USER COMMAND...
    local user=$1
    shift
    inside setpriv --reuid="$user" --regid="$(id_of "$user" g)" --init-groups "$@"
}

ask() { # USER METHOD [SIGNATURE ARGUMENT...]
    local user=$1
    shift
    as_user "$user" busctl --system --timeout=20 call $UI $UI_PATH $UI "$@"
}

serves() {
    as_user root busctl --system call org.freedesktop.DBus / org.freedesktop.DBus GetNameOwner s $UI >/dev/null 2>&1
}

has_said() { # FILE TEXT
    grep -qF -- "$2" "$1"
}

start_device() {
    virtual_display_start
    mkdir -p "$ROOT/run/dbus"
    run_in_background bus chroot "$ROOT" /usr/bin/dbus-daemon --system --nofork --nopidfile --print-address
    wait_until 10 has_line "$LOG_FOLDER/bus.out" || fail "no bus: $(cat "$LOG_FOLDER/bus.log")"
    # What systemd would do before it starts the unit.
    inside install -d -m 700 -o "$(of_unit User)" -g "$(of_unit Group)" /run/tessel-ui
    as_user tessel-daemon orbis-settings set -t int db/menu/system/accessibility/screenreader 1
    as_user tessel-daemon orbis-settings set -t string db/menu_widget/language en_GB
}

start_program() { # NAME
    local command
    read -ra command < <(of_unit ExecStart)
    start_inside "$1" "$(of_unit User)" "${command[@]}"
    wait_until 20 serves || fail "the program does not serve: $(tail -n 5 "$LOG_FOLDER/$1.log")"
}

# The daemon's user asks for a PIN, and it is seen; everyone else is refused.
try_requests() {
    local answer empty=$WORK_FOLDER/empty.png
    settled_screenshot "$empty"
    answer=$(ask tessel-daemon ShowPinPopup ss "Anna's phone" 0427) || fail "the daemon's user is refused"
    [ "$answer" = "i 0" ] || fail "the answer is $answer"
    settled_screenshot "$OUTPUT/pin.png" "$empty" || fail "no popup is seen"
    wait_until 10 has_said "$ROOT/run/tessel-ui/speech" " 0 4 2 7." ||
        fail "no PIN is read out: $(cat "$ROOT/run/tessel-ui/speech")"
    if answer=$(ask nobody HidePopup 2>&1) || [[ $answer != *"Access denied"* ]]; then
        fail "another user is not refused: $answer"
    fi
    # Its countdown goes on, so that it is not the same picture.
    settled_screenshot "$WORK_FOLDER/still.png"
    ! cmp -s "$WORK_FOLDER/still.png" "$empty" || fail "another user took the popup away"
    [ "$(ask root HidePopup)" = "i 0" ] || fail "root is refused"
    settled_screenshot "$WORK_FOLDER/plain.png" "$OUTPUT/pin.png" || fail "the popup stays"
    cmp -s "$WORK_FOLDER/plain.png" "$empty" || fail "something stays on the screen"
    say "The daemon's user asked for a PIN, and it is on the screen; another user was refused"
}

# The installed simulator in the daemon's place, over the bus and through the settings; the last viewer cancels.
try_scenarios() {
    local scenario via status
    for scenario in success cancel-at-pin; do
        for via in bus settings; do
            progress "playing $scenario over the $via"
            has_ended "$PROGRAM_PID" || fail "the program of before still runs"
            start_inside "daemon-$scenario-$via" tessel-daemon tessel-daemon-sim --fast --via "$via" \
                --scenario "$scenario"
            local simulator=$LAST_PID
            sleep 0.5 # a daemon that is late is another scenario's
            start_program "program-$scenario-$via"
            PROGRAM_PID=$LAST_PID
            if [ "$scenario" = cancel-at-pin ]; then
                wait_until 30 has_said "$LOG_FOLDER/daemon-$scenario-$via.out" "viewer press" || fail "no PIN in $scenario"
                # A press counts once the viewer can have seen what it answers.
                until has_said "$LOG_FOLDER/daemon-$scenario-$via.out" "received StopTessel" || has_ended "$simulator"; do
                    xdotool key Return
                    sleep 0.3
                done
            fi
            status=0
            wait "$simulator" || status=$?
            [ "$status" -eq 0 ] || fail "$scenario over $via: $status, $(cat "$LOG_FOLDER/daemon-$scenario-$via.out")"
            wait_until 10 has_ended "$PROGRAM_PID" || fail "the program does not end"
        done
    done
    say "The installed simulator played a whole set-up and one that the viewer cancels, over the bus and the settings"
}

# The same questions as with every change, of the users and the policy that are installed here.
try_policy() {
    mkdir -p "$ROOT/tmp/project/scripts" "$ROOT/tmp/project/tests/packages"
    cp "$project/scripts/lib.sh" "$ROOT/tmp/project/scripts/"
    cp "$here/policy.sh" "$ROOT/tmp/project/tests/packages/"
    progress "asking the bus policy"
    inside bash /tmp/project/tests/packages/policy.sh /usr/share/dbus-1/system.d/com.norvale.orbis.tessel.conf \
        /usr/bin/tessel-ui /usr/bin/tessel-daemon-sim tessel-ui tessel-daemon nobody || fail "the bus policy has gaps"
}

# Systemd looks at the unit where all is installed that it names.
try_unit() {
    local unit=/lib/systemd/system/tessel-ui.service told
    progress "looking at the unit"
    told=$(inside systemd-analyze verify --man=no "$unit" 2>&1) || fail "the unit is wrong: $told"
    [ -z "$told" ] || fail "the unit is not clean: $told"
    inside systemd-analyze security --offline=true --no-pager "$unit" >"$OUTPUT/exposure.log" 2>&1 || true
    say "$(tail -n 1 "$OUTPUT/exposure.log")"
}

# Every program that is installed is of the packages' version, and starts.
try_versions() {
    local name expected told count=0
    for name in $(inside dpkg -L "${programs[@]}" | sed -n 's|^/usr/bin/||p'); do
        expected="$name $(inside dpkg-query -W -f '${Version}' tessel-ui)"
        told=$(inside "$name" --version 2>&1) || fail "$name --version fails: $told"
        [ "$told" = "$expected" ] || fail "$name --version says \"$told\", the packages are \"$expected\""
        count=$((count + 1))
    done
    [ "$count" -eq 4 ] || fail "$count programs are installed"
    say "All $count programs are of the packages' version"
}

try_program() {
    start_device
    try_versions
    try_unit
    try_policy
    start_program program
    PROGRAM_PID=$LAST_PID
    try_requests
    stop_process "$PROGRAM_PID"
    try_scenarios
}

# Everything that was started, so that nothing is written while the packages go.
stop_all() {
    local index
    for ((index = ${#STARTED_PIDS[@]} - 1; index >= 0; index--)); do
        stop_process "${STARTED_PIDS[index]}"
    done
}
