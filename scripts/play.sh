# SPDX-FileCopyrightText: 2026 The Tessel UI authors
# SPDX-License-Identifier: Apache-2.0

# Has the set-up daemon's simulator play a scenario, plays the viewer for it, and watches what becomes of each step:
# what is on the screen, what is read out, what the daemon receives. To be sourced after lib.sh by a script that has
# a display, a bus and these:
#
#   OUTPUT       folder for pictures and logs
#   SPEECH       file that the program's read-outs are appended to
#   PROGRAM SIMULATOR VIA   programs, and the way of the requests: bus or settings
#   EXPECTS      whether what comes of a step is known, and something else a failure; else it is only looked at
#   TIMED_LOG    file that gets the program's log with the time in front of each line; empty for none
#
# The simulator prints a line an event, and waits wherever the viewer looks or presses a key. Of what happened
# between two such moments, the last request or order is the step that is looked at.
# shellcheck shell=bash

STEP_SECONDS=15

UI_PID=
SIMULATOR_PID=
FOLLOWER_PID=   # copies the program's log, until the program ends
START_TIME=     # of the timeline, in nanoseconds
STOPS=0         # orders to stop that the daemon received
STEP=0
STEP_NAME=      # of the step whose outcome has not been looked at yet
EXPECTED=       # its outcome: spoken, plain (no popup), or same
TOLD=()         # what the viewer must be told by it
SPEECH_LINE=0   # read-outs up to this line are older than it
EMPTY_PICTURE=  # the screen without a popup
LAST_PICTURE=
LAST_IS_STILL=true

elapsed() {
    local now milliseconds
    now=$(date +%s%N)
    milliseconds=$(((now - START_TIME) / 1000000))
    printf '%d.%03d' $((milliseconds / 1000)) $((milliseconds % 1000))
}

# A line of the timeline: who, and what.
timeline() {
    progress_end
    printf '%8s s  %-10s %s\n' "$(elapsed)" "$1" "$2"
}

give_up() {
    progress_end
    {
        printf '\nThe demo failed: %s\n' "$*"
        [ -z "$UI_PID" ] || is_alive "$UI_PID" || printf 'The program has ended: %s\n' "$(end_of_program)"
        printf '\nLast lines of the program (%s):\n' "$OUTPUT/tessel-ui.log"
        tail -n 40 "$OUTPUT/tessel-ui.log" || true
        printf '\nThe simulator (%s):\n' "$OUTPUT/daemon.out"
        tail -n 20 "$OUTPUT/daemon.out" "$OUTPUT/daemon.log" || true
    } >&2 2>/dev/null
    exit 1
}

# ---- the program

# Prints how it has ended.
end_of_program() {
    local status=0
    wait "$UI_PID" || status=$?
    if [ "$status" -gt 128 ]; then
        printf 'by signal %s' "$(kill -l "$status")"
    else
        printf 'exit status %s' "$status"
    fi
}

start_program() {
    : >"$OUTPUT/tessel-ui.log"
    "$PROGRAM" LAUNCH_MODE=POPUP >"$OUTPUT/tessel-ui.log" 2>&1 </dev/null &
    UI_PID=$!
    STARTED_PIDS+=("$UI_PID")
    [ -z "$TIMED_LOG" ] || follow_log
}

# Beside the log and not in its way, so that no line is lost when the machine is busy.
follow_log() {
    local line LC_ALL=C
    tail -f -n +1 -s 0.1 --pid="$UI_PID" "$OUTPUT/tessel-ui.log" 2>/dev/null | while IFS= read -r line; do
        printf '%s tv %s\n' "$EPOCHREALTIME" "$line"
    done >"$TIMED_LOG" &
    FOLLOWER_PID=$!
    STARTED_PIDS+=("$FOLLOWER_PID")
}

# ---- the simulator

# $1: the scenario's file
start_simulator() {
    # The order to leave is the scenario's business: a program that is told to stop must leave by itself.
    coproc DAEMON { exec "$SIMULATOR" --timestamps --with-viewer --scenario "$1" --end-after-stop never \
        --via "$VIA" 2>"$OUTPUT/daemon.log"; }
    SIMULATOR_PID=$DAEMON_PID
    STARTED_PIDS+=("$SIMULATOR_PID")
    # The shell forgets them when the simulator has ended.
    exec {EVENTS}<&"${DAEMON[0]}" {ANSWERS}>&"${DAEMON[1]}"
}

# Leaves the simulator's next event, without its time, in EVENT; fails when it has ended.
next_event() {
    local status=0
    IFS= read -r -t 300 EVENT <&"$EVENTS" || status=$?
    [ "$status" -le 128 ] || give_up "the simulator says nothing any more"
    [ "$status" -eq 0 ] || return 1
    printf '%s\n' "$EVENT" >>"$OUTPUT/daemon.out"
    EVENT=${EVENT#* }
}

# The viewer is through.
go_on() {
    printf '\n' >&"$ANSWERS"
}

line_count() {
    [ ! -e "$1" ] && printf 0 && return
    wc -l <"$1"
}

# ---- what the viewer sees

# $1 the step's name, $2 its expected outcome
begin_step() {
    [ -n "$STEP_NAME" ] || STEP=$((STEP + 1))
    STEP_NAME=$1
    EXPECTED=$2
    TOLD=()
}

# Something was read out, and one utterance holds all that the viewer must be told. A PIN is spelled, in groups.
was_told() {
    local utterance word
    while read -r utterance; do
        for word in "${TOLD[@]}"; do
            [[ ${utterance//[ ,]/} == *"${word//[ ,]/}"* ]] || continue 2
        done
        return
    done < <(tail -n "+$((SPEECH_LINE + 1))" "$SPEECH" 2>/dev/null)
    return 1
}

was_told_or_ended() {
    was_told || has_ended "$UI_PID"
}

expect_read_out() {
    if ! wait_until "$STEP_SECONDS" was_told_or_ended; then
        give_up "$STEP_NAME: the viewer was not told${TOLD[*]:+ ${TOLD[*]}}"
    fi
    is_alive "$UI_PID" || give_up "$STEP_NAME: the program has ended"
}

# A screen of our own shows nothing but the program, so that its pictures can be compared.
expect_same_picture() {
    [ "$DISPLAY_KIND" = present ] || cmp -s "$1" "$2" || give_up "$3"
}

# Looks at the outcome of the step that has begun last.
look() {
    local picture
    picture=$OUTPUT/$(printf '%02d' "$STEP")-$STEP_NAME.png
    if ! $EXPECTS; then
        # It may be the same as before; but a change is waited for first.
        settled_screenshot "$picture" "$LAST_PICTURE" || [ -s "$picture" ] ||
            give_up "$STEP_NAME: no picture can be taken"
    elif [ "$EXPECTED" = same ]; then
        settled_screenshot "$picture" || give_up "$STEP_NAME: no picture can be taken"
        expect_unchanged "$picture"
    else
        [ "$EXPECTED" = plain ] || expect_read_out
        settled_screenshot "$picture" "$LAST_PICTURE" ||
            give_up "$STEP_NAME: the screen did not change, or no picture can be taken"
    fi
    if $EXPECTS && [ "$EXPECTED" = plain ]; then
        expect_same_picture "$picture" "$EMPTY_PICTURE" "$STEP_NAME: something is left on the screen"
        timeline viewer "no popup"
    fi
    if [ "$(line_count "$SPEECH")" -gt "$SPEECH_LINE" ]; then
        timeline viewer "$(tail -n "+$((SPEECH_LINE + 1))" "$SPEECH" | paste -s -d '|' | sed 's,|, / ,g')"
    fi
    timeline picture "$picture"
    LAST_PICTURE=$picture
    # A short countdown moves, if only now and then.
    case $STEP_NAME in
        ShowPinPopup | ShowFailedPopup | json) LAST_IS_STILL=false ;;
        *) LAST_IS_STILL=$SETTLED ;;
    esac
    STEP_NAME=
}

# Nothing happens: what moves by itself cannot be compared.
expect_unchanged() {
    ! $EXPECTS || ! $LAST_IS_STILL || expect_same_picture "$1" "$LAST_PICTURE" "the screen has changed by itself"
}

look_again() {
    is_alive "$UI_PID" || give_up "the program has ended by itself"
    settled_screenshot "$WORK_FOLDER/again.png" || give_up "no picture can be taken"
    expect_unchanged "$WORK_FOLDER/again.png"
    timeline viewer "nothing has changed"
}

expect_end() {
    local status=0
    if ! $EXPECTS && ! wait_until 2 has_ended "$UI_PID"; then
        [ -z "$STEP_NAME" ] || look
        timeline end "the scenario is over, and the program is ended"
        kill "$UI_PID"
    fi
    wait_until "$STEP_SECONDS" has_ended "$UI_PID" || give_up "the program has left the bus, but not ended"
    wait "$UI_PID" || status=$?
    [ "$status" -eq 0 ] || give_up "the program's exit status is $status"
    if [ -n "$STEP_NAME" ]; then
        EXPECTED=plain
        look
    fi
    timeline end "the program has ended with exit status $status"
    UI_PID=
}

# ---- the events of a scenario

# $1: the request as the simulator prints it, its arguments between quotes
note_request() {
    local word
    timeline request "$1"
    if [ "$1" = HidePopup ]; then begin_step "$1" plain; else begin_step "${1%% *}" spoken; fi
    [[ $1 =~ ^Show(PinPopup|NetworkTest|SSOLoginPopup)\  ]] || return 0
    while read -r word; do
        TOLD+=("${word//\"/}")
    done < <(grep -o '"[^"]*"' <<<"$1")
}

# $1: key and value, without line ends
note_setting() {
    timeline settings "$1"
    case $1 in
        */tessel_startmode\ 100) begin_step end plain ;;
        */tessel_ocf_device_owned\ 1) begin_step owned spoken ;;
        */mobile_oobe\ *) [ -n "$STEP_NAME" ] || begin_step json spoken ;;
    esac
}

press() {
    local key
    timeline viewer "presses $*"
    SPEECH_LINE=$(line_count "$SPEECH")
    begin_step "press-$(tr ' ' '-' <<<"$*")" spoken
    for key in "$@"; do
        xdotool key "$key" || give_up "$key cannot be pressed"
        sleep 0.2
    done
}

handle_event() {
    case $EVENT in
        'viewer looks')
            if [ -n "$STEP_NAME" ]; then look; else look_again; fi
            SPEECH_LINE=$(line_count "$SPEECH")
            say ""
            go_on
            ;;
        'viewer press '*)
            # shellcheck disable=SC2086 # a word is a key
            press ${EVENT#viewer press }
            go_on
            ;;
        'request '*) note_request "${EVENT#request }" ;;
        'set '*) note_setting "${EVENT#set }" ;;
        'reply '*) ;;
        'error '* | 'timeout '*) give_up "$EVENT" ;;
        'received '* | 'ui '* | ready | restart)
            timeline daemon "$EVENT"
            [[ $EVENT != 'received StopTessel '* ]] || STOPS=$((STOPS + 1))
            [ "$EVENT" != restart ] || begin_step restart same
            ;;
        *) timeline scenario "$EVENT" ;;
    esac
}

# $1: the scenario's file, which the simulator has; it ends with the end of the program
play_scenario() {
    local status=0
    while next_event; do
        handle_event
    done
    wait "$SIMULATOR_PID" || status=$?
    if [ "$status" -ne 0 ] || [ -s "$OUTPUT/daemon.log" ]; then
        give_up "the simulator complains: $(tail -n 1 "$OUTPUT/daemon.log")"
    fi
    expect_end
    [ -z "$FOLLOWER_PID" ] || wait "$FOLLOWER_PID" || true
    ! $EXPECTS || [ "$STOPS" -eq "$(grep -c '^wait .*StopTessel' "$1" || true)" ] ||
        give_up "the daemon received $STOPS orders to stop"
}
