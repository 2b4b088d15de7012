# Plays a scenario of the set-up daemon's simulator line by line and watches what becomes of each: what is on the
# screen, what is read out, what the daemon receives. To be sourced after lib.sh by a script that has a display,
# a bus and these:
#
#   OUTPUT       folder for pictures and logs
#   SPEECH       file that the program's read-outs are appended to
#   PROGRAM SIMULATOR VIA   programs, and the way of the requests: bus or settings
#
# Each line is followed by a mark that the simulator prints when it is through with the line. Requests without a
# pause between them are sent together: the last one is what is looked at.
# shellcheck shell=bash

STEP_SECONDS=15

UI_PID=
SIMULATOR_PID=
SIMULATOR_INPUT=
START_TIME=     # of the timeline, in nanoseconds
SENT=0          # lines sent, which is the number of the last mark
REPORTED=0      # events up to this line are in the timeline
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
    printf '%8s s  %-10s %s\n' "$(elapsed)" "$1" "$2"
}

give_up() {
    {
        printf '\nThe demo failed: %s\n' "$*"
        printf '\nLast lines of the program (%s):\n' "$OUTPUT/tessel-ui.log"
        tail -n 40 "$OUTPUT/tessel-ui.log" || true
        printf '\nThe simulator (%s):\n' "$OUTPUT/daemon.out"
        tail -n 20 "$OUTPUT/daemon.out" "$OUTPUT/daemon.log" || true
    } >&2 2>/dev/null
    exit 1
}

# ---- the program

start_program() {
    : >"$OUTPUT/tessel-ui.log"
    "$PROGRAM" LAUNCH_MODE=POPUP >"$OUTPUT/tessel-ui.log" 2>&1 </dev/null &
    UI_PID=$!
    STARTED_PIDS+=("$UI_PID")
}

# ---- the simulator

start_simulator() {
    mkfifo "$WORK_FOLDER/commands"
    exec {SIMULATOR_INPUT}<>"$WORK_FOLDER/commands"
    : >"$OUTPUT/daemon.out"
    # The order to leave is the scenario's business: a program that is told to stop must leave by itself.
    "$SIMULATOR" --timestamps --end-after-stop never --via "$VIA" <"$WORK_FOLDER/commands" \
        >"$OUTPUT/daemon.out" 2>"$OUTPUT/daemon.log" &
    SIMULATOR_PID=$!
    STARTED_PIDS+=("$SIMULATOR_PID")
}

line_count() {
    [ ! -e "$1" ] && printf 0 && return
    wc -l <"$1"
}

# The events of the simulator after line $1 that match $2, without their time; fails when there are none.
events_since() {
    tail -n "+$(($1 + 1))" "$OUTPUT/daemon.out" | sed 's/^[0-9.]* //' | grep -E -- "$2"
}

# The same for those of the $1th line that was sent.
events_of_line() {
    sed -n "/ mark $(($1 - 1))\$/,/ mark $1\$/p" "$OUTPUT/daemon.out" | sed 's/^[0-9.]* //' | grep -E -- "$2"
}

send_line() {
    SENT=$((SENT + 1))
    printf '%s\necho mark %d\n' "$1" "$SENT" >&"$SIMULATOR_INPUT"
}

mark_is_there() {
    grep -q " mark $1\$" "$OUTPUT/daemon.out"
}

mark_or_death() {
    mark_is_there "$1" || has_ended "$SIMULATOR_PID"
}

# Waits until the simulator is through with the $1th line, $2, which must have gone well.
await_line() {
    local limit=60 problem
    if [[ $2 =~ ^(sleep|wait|restart)\ (.*\ )?([0-9]+)[0-9.]*$ ]]; then
        limit=$((limit + 10#${BASH_REMATCH[3]}))
    fi
    wait_until "$limit" mark_or_death "$1" || true
    mark_is_there "$1" || give_up "the simulator is not through with: $2"
    [ ! -s "$OUTPUT/daemon.log" ] || give_up "the simulator complains: $(tail -n 1 "$OUTPUT/daemon.log")"
    problem=$(events_of_line "$1" '^(error|timeout) ') && give_up "$2: $problem"
    return 0
}

tell_daemon() {
    send_line "$1"
    await_line "$SENT" "$1"
}

# Adds what the daemon has seen since the last time to the timeline.
report_daemon() {
    local from=$REPORTED event
    REPORTED=$(line_count "$OUTPUT/daemon.out")
    events_since "$from" '^(received |ui |restart$|ready$)' | while read -r event; do
        timeline daemon "$event"
    done || true
}

# ---- what the viewer sees

# $1 the step's name, $2 its expected outcome
begin_step() {
    STEP=$((STEP + 1))
    STEP_NAME=$1
    EXPECTED=$2
    TOLD=()
    SPEECH_LINE=$(line_count "$SPEECH")
    say ""
}

# Something was read out, and one utterance holds all that the viewer must be told.
was_told() {
    local utterance word
    while read -r utterance; do
        for word in "${TOLD[@]}"; do
            [[ $utterance == *"$word"* ]] || continue 2
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
    if [ "$EXPECTED" = same ]; then
        settled_screenshot "$picture" || give_up "$STEP_NAME: no picture can be taken"
        expect_unchanged "$picture"
    else
        [ "$EXPECTED" = plain ] || expect_read_out
        settled_screenshot "$picture" "$LAST_PICTURE" ||
            give_up "$STEP_NAME: the screen did not change, or no picture can be taken"
    fi
    if [ "$EXPECTED" = plain ]; then
        expect_same_picture "$picture" "$EMPTY_PICTURE" "$STEP_NAME: something is left on the screen"
        timeline viewer "no popup"
    fi
    if [ "$(line_count "$SPEECH")" -gt "$SPEECH_LINE" ]; then
        timeline viewer "$(tail -n "+$((SPEECH_LINE + 1))" "$SPEECH" | paste -s -d '|' | sed 's,|, / ,g')"
    fi
    timeline picture "$picture"
    LAST_PICTURE=$picture
    LAST_IS_STILL=$SETTLED
    STEP_NAME=
}

# Nothing happens: what moves by itself cannot be compared.
expect_unchanged() {
    ! $LAST_IS_STILL || expect_same_picture "$1" "$LAST_PICTURE" "the screen has changed by itself"
}

look_again() {
    is_alive "$UI_PID" || give_up "the program has ended by itself"
    settled_screenshot "$WORK_FOLDER/again.png" || give_up "no picture can be taken"
    expect_unchanged "$WORK_FOLDER/again.png"
    timeline viewer "nothing has changed"
}

expect_end() {
    local status=0
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

# ---- the lines of a scenario

# What the viewer must be told of the request in the $1th line: the simulator prints the arguments between
# quotes, however the scenario writes them.
remember_told() {
    local word
    TOLD=()
    while read -r word; do
        TOLD+=("${word//\"/}")
    done < <(events_of_line "$1" '^request Show(PinPopup|NetworkTest|SSOLoginPopup) ' | grep -o '"[^"]*"')
}

# $@: requests without a pause between them
play_requests() {
    local line way number=$SENT last=${*: -1}
    if [ "$last" = HidePopup ]; then begin_step "$last" plain; else begin_step "${last%% *}" spoken; fi
    for line in "$@"; do
        send_line "$line"
    done
    for line in "$@"; do
        number=$((number + 1))
        await_line "$number" "$line"
        way="over the bus"
        ! events_of_line "$number" '^set ' >/dev/null || way="through the settings store"
        timeline request "$line ($way)"
    done
    remember_told "$number"
}

play_order() {
    begin_step "${1%% *}" "$2"
    timeline request "$1"
    tell_daemon "$1"
}

play_viewer() {
    local key line
    tell_daemon "$1"
    line=$(events_of_line "$SENT" '^viewer press ') || give_up "the simulator does not say what to press: $1"
    begin_step "press-$(tr ' ' '-' <<<"${line#viewer press }")" spoken
    timeline viewer "presses ${line#viewer press }"
    for key in ${line#viewer press }; do
        xdotool key "$key" || give_up "$key cannot be pressed"
        sleep 0.2
    done
}

play_pause() {
    send_line "$1"
    if [ -n "$STEP_NAME" ]; then look; else look_again; fi
    await_line "$SENT" "$1"
}

play_line() {
    case ${1%% *} in
        restart) play_order "$1" same ;;
        end) play_order "$1" plain ;;
        viewer) play_viewer "$1" ;;
        sleep) play_pause "$1" ;;
        echo) say "" && timeline scenario "${1#echo }" ;;
        *) tell_daemon "$1" ;;
    esac
    report_daemon
    [[ ! $1 =~ ^wait\ (.*\ )?gone(\ |$) ]] || expect_end
}

play_lines() {
    local line requests=()
    while read -r line; do
        case $line in
            '' | '#'*) continue ;;
            Show* | HidePopup | json\ * | owned) requests+=("$line") && continue ;;
        esac
        [ ${#requests[@]} -eq 0 ] || play_requests "${requests[@]}"
        requests=()
        play_line "$line"
    done <"$1"
}

# $1: the scenario's file, which ends with the end of the program
play_scenario() {
    local stops
    play_lines "$1"
    [ -z "$UI_PID" ] || give_up "the scenario is over, but the program still runs"
    stops=$(grep -c '^wait .*StopTessel' "$1" || true)
    [ "$(events_since 0 '^received StopTessel ' | wc -l)" -eq "$stops" ] ||
        give_up "the daemon was to receive $stops orders to stop"
}
