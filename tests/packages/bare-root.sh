#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Tessel UI authors
# SPDX-License-Identifier: Apache-2.0

# Installs packages into a bare Debian 12, looks at what they bring, runs the program from its installed place under the
# installed bus policy, and takes them away again. The display is outside of it, as a TV's compositor is outside of the
# program. No systemd runs there: the program is started by the command line and as the user of its unit.
# Usage: bare-root.sh FOLDER_OF_PACKAGES; the rest of the work is in the folder bare-root beside it.
set -eu
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
project=$here/../..

# shellcheck source=../../scripts/lib.sh
. "$project/scripts/lib.sh"
# shellcheck source=root.sh
. "$here/root.sh"
# shellcheck source=try.sh
. "$here/try.sh"
# shellcheck source=boot.sh
. "$here/boot.sh"
in_own_mounts "$@"

packages=$(cd "$1" && pwd)
OUTPUT=$(dirname "$packages")/bare-root
programs=(liborbis-platform0 libtessel-common0 tessel-ui tessel-ui-tools tessel-ui-dbgsym)
names=("${programs[@]}" liborbis-platform-dev libtessel-common-dev)

# Everything of the root but what belongs to the running system and to apt.
files_of_root() {
    (cd "$ROOT" && find . \( -path ./proc -o -path ./dev -o -path ./tmp -o -path ./mnt -o -path ./var/cache/apt \
        -o -path ./var/lib/apt \) -prune -o -print | LC_ALL=C sort)
}

# Of one package, in the way of the expected lists: what depends on the machine or the version is named.
files_of_package() {
    dpkg-deb -c "$packages/$1"_*.deb | "$here/list.sh" "$(dpkg-architecture -q DEB_HOST_MULTIARCH)" \
        "$(dpkg-deb -f "$packages/$1"_*.deb Version)"
}

compare_lists() {
    local name
    for name in "${names[@]}"; do
        files_of_package "$name" >"$OUTPUT/$name.files"
        diff -u "$here/$name.files" "$OUTPUT/$name.files" || fail "$name holds other files than expected"
    done
    say "The lists of files are as expected"
}

# A bare root with what the packages say they need, and no more; kept for a week, as long as they need the same.
make_ready_root() {
    local name needed="" archive
    for name in "${names[@]}"; do
        needed+="$(dpkg-deb -f "$packages/$name"_*.deb Depends), "
    done
    # Without those that are made here.
    needed=$(tr ',' '\n' <<<"$needed" | sed 's/^ *//' | grep -vE "^(libtessel|liborbis|tessel-ui|libefl-all-dev|$)" |
        sort -u | paste -sd,)
    archive=$project/build-package/ready-$(sha256sum <<<"$needed" | cut -c 1-16).tar
    if [ -n "$(find "$archive" -mtime -7 2>/dev/null)" ]; then
        progress "unpacking a bare Debian"
        make_root "$SCRATCH/root" "$archive"
        enter_root "$SCRATCH/root"
        return
    fi
    progress "making a bare Debian"
    make_root "$SCRATCH/root" "$project/build-package/bookworm.tar"
    enter_root "$SCRATCH/root"
    progress "installing what the packages need"
    inside apt-get satisfy -q -y --no-install-recommends "$needed" >"$OUTPUT/apt.log" 2>&1 ||
        { tail -n 20 "$OUTPUT/apt.log" && fail "what the packages need cannot be installed"; }
    rm -f "$project"/build-package/ready-*.tar
    tar -c --one-file-system -f "$archive" -C "$ROOT" .
}

install_packages() { # NAME...
    local name files=()
    for name in "$@"; do
        cp "$packages/$name"_*.deb "$ROOT/mnt/"
        files+=("/mnt/$(basename "$packages/$name"_*.deb)")
    done
    progress "installing $*"
    inside apt-get install -q -y --no-install-recommends "${files[@]}" >>"$OUTPUT/apt.log" 2>&1 ||
        { tail -n 20 "$OUTPUT/apt.log" && fail "the packages cannot be installed"; }
}

# The symbols of what is installed are there, and tell file and line.
check_symbols() {
    local file id debug address place count=0
    for file in "$ROOT"/usr/apps/*/bin/tessel-ui "$ROOT"/usr/bin/tessel-[dg]* "$ROOT"/usr/bin/orbis-settings \
        "$ROOT"/usr/lib/*/lib{orbis,tessel}-*.so.0; do
        id=$(readelf -n "$file" | sed -n 's/.*Build ID: //p')
        debug=$ROOT/usr/lib/debug/.build-id/${id:0:2}/${id:2}.debug
        [ -e "$debug" ] || fail "no symbols of $file"
        address=$(nm "$debug" | awk '$3 == "main" || $3 == "ui_app_main" || $3 == "get_app_mode" { print $1 }')
        place=$(addr2line -e "$debug" "$address")
        [[ $place =~ ^/usr/src/tessel-ui/[a-zA-Z/_-]+\.cpp:[0-9]+ ]] || fail "the symbols of $file say $place"
        count=$((count + 1))
    done
    [ "$count" -eq 6 ] || fail "$count programs and libraries have symbols"
    say "The symbols tell file and line"
}

# What may be there that was not: settings, users, and what the system writes itself.
check_rest() {
    files_of_root >"$OUTPUT/after"
    local left
    left=$(comm -13 "$OUTPUT/before" "$OUTPUT/after" | grep -vE \
        '^\./(var/lib/orbis|run/orbis|var/log|var/lib/dpkg|var/cache/(fontconfig|ldconfig)|run/(dbus|systemd|tessel-ui))(/|$)' |
        grep -vE '^\./etc/(passwd|group|shadow|gshadow)-$' || true)
    [ -z "$left" ] || fail "these stayed behind: $left"
    [ -e "$ROOT/var/lib/orbis/db" ] || fail "the settings are gone"
    left=$(comm -23 "$OUTPUT/before" "$OUTPUT/after")
    [ -z "$left" ] || fail "these are gone with the packages: $left"
    say "The packages are gone, and nothing is left but state"
}

# Somebody else's program, on the packages that are made for that.
build_application() {
    progress "installing a compiler"
    inside apt-get install -q -y --no-install-recommends g++ pkg-config dpkg-dev >>"$OUTPUT/apt.log" 2>&1
    install_packages liborbis-platform0 liborbis-platform-dev libtessel-common0 libtessel-common-dev
    cp "$here/application.cpp" "$here/link-order.sh" "$ROOT/tmp/"
    progress "building an application in nine ways"
    inside bash /tmp/link-order.sh || fail "an application on the packages does not build or run"
    say "An application builds on the packages, and runs"
}

rm -rf "$OUTPUT"
mkdir -p "$OUTPUT"
sandbox_start "$OUTPUT/logs"
ls "$packages"/*.deb >/dev/null
compare_lists
make_ready_root
files_of_root >"$OUTPUT/before"
install_packages "${programs[@]}"
check_symbols
try_program
stop_all
progress "removing the packages"
inside dpkg --purge "${programs[@]}" >>"$OUTPUT/apt.log" 2>&1 || fail "the packages cannot be removed"
check_rest
install_packages "${programs[@]}"
try_systemd
stop_all
build_application
say "All is well; logs and a picture are in $OUTPUT"
