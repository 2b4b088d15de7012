# SPDX-FileCopyrightText: 2026 The Tessel UI authors
# SPDX-License-Identifier: Apache-2.0

# Shared by what needs another Debian than the machine's own. To be sourced; the caller uses `set -eu` and is root.
#
#   debian_sources      the lines of a sources list for the mirror that this machine uses
#   make_root FOLDER    a bare Debian 12, unpacked from an archive that is kept for a week
#   make_arm64_root FOLDER   the libraries of the other processor to build with, unless they are there
#   in_own_mounts ...   runs the calling script again, with its arguments, in mounts of its own and with the folder
#                       SCRATCH, which is removed when it has ended
#   enter_root FOLDER   gives it /proc and /dev, for this process and its children alone
#   inside COMMAND...   runs a command in it
# shellcheck shell=bash

ROOT=

debian_sources() {
    apt-get indextargets --format '$(ORIGIN) $(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' |
        awk '$1 == "Debian" && $3 ~ /^bookworm/ { print "deb " $2 " " $3 " " $4 }' | sort -u
}

# FOLDER ARCHIVE: made anew each time, and of what the archive has.
make_root() {
    local folder=$1 archive=$2
    [ ! -e "$folder/etc" ] || return 1
    if [ -z "$(find "$archive" -mtime -7 2>/dev/null)" ]; then
        printf 'Making a bare Debian: %s\n' "$archive"
        mkdir -p "${archive%/*}"
        debian_sources | mmdebstrap --quiet --format=tar --variant=minbase --skip=cleanup/apt bookworm "$archive.new" -
        mv "$archive.new" "$archive"
    fi
    mkdir -p "$folder"
    tar -x -f "$archive" -C "$folder"
    cp --dereference /etc/resolv.conf "$folder/etc/resolv.conf"
    # Nothing is started in it.
    printf '#!/bin/sh\nexit 101\n' >"$folder/usr/sbin/policy-rc.d"
    chmod +x "$folder/usr/sbin/policy-rc.d"
}

# FOLDER: packages that are unpacked only, so that nothing of the other processor has to run.
make_arm64_root() {
    local root=$1 link
    [ ! -e "$root/complete" ] || return 0
    printf 'Unpacking Debian for arm64 into %s\n' "$root"
    rm -rf --one-file-system "$root"
    mkdir -p "${root%/*}"
    debian_sources | mmdebstrap --quiet --mode=root --architectures=arm64 --variant=extract --format=directory \
        --include=libc6-dev,libstdc++-12-dev,libefl-all-dev,libglib2.0-dev,libjsoncpp-dev,libspeechd-dev,libedit-dev \
        --include=libelementary-data,libevas-loaders --skip=cleanup/apt bookworm "$root" -
    note_unpacked "$root"
    # Links that begin at the root are to lead to the other Debian's, not to this machine's.
    find "$root/usr/lib" "$root/lib" -lname '/*' 2>/dev/null | while read -r link; do
        ln -sfn "$root$(readlink "$link")" "$link"
    done
    : >"$root/complete"
}

# A database of what was unpacked in FOLDER, for the dependencies to be computed from: which package a library is of, by
# its whole path here, and which version has which symbol.
note_unpacked() {
    local root=$1 database=$1/var/lib/dpkg archive name control
    rm -rf "$database"
    mkdir -p "$database"/{info,updates}
    printf '1\n' >"$database/info/format"
    for archive in "$root"/var/cache/apt/archives/*.deb; do
        name=$(dpkg-deb -f "$archive" Package)
        if [ "$(dpkg-deb -f "$archive" Multi-Arch)" = same ]; then
            name+=:arm64
        fi
        { dpkg-deb -f "$archive" && printf 'Status: install ok installed\n\n'; } >>"$database/status"
        dpkg-deb --fsys-tarfile "$archive" | tar -t | sed -n "s,^\.\(/.*[^/]\)\$,$root\1,p" >"$database/info/$name.list"
        dpkg-deb --ctrl-tarfile "$archive" | tar -x -C "$database/updates"
        for control in symbols shlibs; do
            [ ! -e "$database/updates/$control" ] || mv "$database/updates/$control" "$database/info/$name.$control"
        done
        find "$database/updates" -type f -delete
    done
    rm -f "$root"/var/cache/apt/archives/*.deb
}

# What is mounted is gone before the folder is removed, and nothing of the machine itself is ever mounted in it.
in_own_mounts() {
    [ -z "${SCRATCH:-}" ] || return 0
    [ "$(id -u)" -eq 0 ] || { printf '%s: only root can make another Debian\n' "${0##*/}" >&2 && exit 1; }
    local status=0
    SCRATCH=$(mktemp -d "${TMPDIR:-/tmp}/tessel-root.XXXXXX")
    export SCRATCH
    trap '' INT TERM HUP
    unshare --mount --propagation private "$0" "$@" || status=$?
    if grep -qF " $SCRATCH/" /proc/self/mountinfo; then
        printf '%s: something is mounted in %s, it stays\n' "${0##*/}" "$SCRATCH" >&2
        exit 1
    fi
    rm -rf --one-file-system "$SCRATCH"
    exit "$status"
}

enter_root() {
    ROOT=$1
    mount -t proc -o ro proc "$ROOT/proc"
    mount -t tmpfs -o mode=755 tmpfs "$ROOT/dev"
    local device
    for device in null:3 zero:5 full:7 random:8 urandom:9; do
        mknod -m 666 "$ROOT/dev/${device%:*}" c 1 "${device#*:}"
    done
    ln -s /proc/self/fd "$ROOT/dev/fd"
    mkdir -m 1777 "$ROOT/dev/shm"
}

inside() {
    chroot "$ROOT" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 HOME=/root \
        DEBIAN_FRONTEND=noninteractive "$@"
}
