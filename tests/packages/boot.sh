# SPDX-FileCopyrightText: 2026 The Tessel UI authors
# SPDX-License-Identifier: Apache-2.0

# Boots the bare root's own systemd in namespaces, to see the unit run as it says. To be sourced by bare-root.sh.
# shellcheck shell=bash
# shellcheck disable=SC2154 # here is the caller's

# The first process of the new namespaces: what a booted system has.
first_process() {
    cat <<'END'
set -e
mount --make-rprivate /
mount --rbind "$ROOT" "$ROOT"
cd "$ROOT"
umount proc dev
mount -t proc proc proc
mount -t sysfs -o ro sysfs sys
mount -t tmpfs tmpfs run
mount -t tmpfs -o mode=755 tmpfs dev
for device in null:3 zero:5 full:7 random:8 urandom:9; do
    mknod -m 666 "dev/${device%:*}" c 1 "${device#*:}"
done
mknod -m 600 dev/console c 1 3
mkdir dev/shm dev/pts
mount -t devpts -o newinstance,ptmxmode=666 devpts dev/pts
ln -s pts/ptmx dev/ptmx
ln -s /proc/self/fd dev/fd
mount -t cgroup2 cgroup2 sys/fs/cgroup
mkdir -p .outside
pivot_root . .outside
cd /
umount -l /.outside
exec /usr/bin/env -i container=other PATH=/usr/sbin:/usr/bin:/sbin:/bin \
    /lib/systemd/systemd --unit=try.target --log-target=console
END
}

prepare_boot() {
    local units=$ROOT/etc/systemd/system socket="/tmp/.X11-unix/X${DISPLAY#:}"
    cp "$here/unit.sh" "$ROOT/root/unit.sh"
    printf '[Unit]\nAfter=basic.target\n[Service]\nExecStart=/bin/bash /root/unit.sh\n' >"$units/try.service"
    printf '[Unit]\nRequires=basic.target\nAfter=basic.target\nWants=try.service\n' >"$units/try.target"
    mkdir -p "$ROOT/etc/default" "$ROOT/tmp/.X11-unix"
    printf 'DISPLAY=%s\n' "$DISPLAY" >"$ROOT/etc/default/tessel-ui"
    : >"$ROOT$socket"
    mount --bind "$socket" "$ROOT$socket"
}

# At once: the countdown of the PIN never settles, and who asked for it waits for an answer.
shows_popup() {
    scrot -o "$OUTPUT/unit.png" && ! cmp -s "$OUTPUT/unit.png" "$WORK_FOLDER/empty.png"
}

try_systemd() {
    local told=$ROOT/root/unit
    virtual_display_start
    settled_screenshot "$WORK_FOLDER/empty.png" || true
    prepare_boot
    export ROOT
    run_in_background systemd timeout -k 5 150 unshare --pid --fork --kill-child --mount --uts --ipc --net --cgroup \
        bash -c "$(first_process)"
    local booted=$LAST_PID
    progress "booting systemd in it"
    if ! wait_until 60 test -e "$told/booted"; then
        say "Systemd does not boot here, so the unit was not tried: $(tail -n 1 "$LOG_FOLDER/systemd.log")"
        return
    fi
    wait_until 60 test -e "$told/shown" || fail "the unit does not serve: $(tail -n 5 "$told/log")"
    wait_until 20 shows_popup || fail "the unit shows nothing"
    : >"$told/seen"
    wait_until 120 has_ended "$booted" || true
    cp "$told/log" "$LOG_FOLDER/unit.log"
    [ -e "$told/well" ] || fail "the unit: $(tail -n 5 "$told/log")"
    say "The unit ran under systemd, was seen, ended by 100, and was started again after a crash, but not for ever"
}
