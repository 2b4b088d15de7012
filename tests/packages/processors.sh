#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Tessel UI authors
# SPDX-License-Identifier: Apache-2.0

# Looks at the packages for another processor: the files that are expected, programs of that processor, dependencies as
# this machine's packages have, and in all that can be installed beside these the same bytes.
# Usage: processors.sh FOLDER_OF_PACKAGES FOLDER_OF_THIS_MACHINES
set -eu
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
scratch=$(mktemp -d "${TMPDIR:-/tmp}/tessel-processors.XXXXXX")
trap 'rm -rf "$scratch"' EXIT

fail() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# FILE: what a package depends on, without the versions, which another processor's build may have others of.
needed_by() {
    dpkg-deb -f "$1" Depends | sed 's/([^)]*)//g' | tr ',|' '\n' | tr -d ' ' | sort -u
}

# FILE OTHER: no file of both is another.
compare_shared() {
    rm -rf "$scratch"/{one,other}
    dpkg-deb -x "$1" "$scratch/one"
    dpkg-deb -x "$2" "$scratch/other"
    (cd "$scratch/one" && find . -type f) | while read -r file; do
        if [ -e "$scratch/other/$file" ]; then
            cmp "$scratch/one/$file" "$scratch/other/$file" || exit 1
        fi
    done
}

# FOLDER: how many programs and libraries are of the processor, if all are.
count_programs() {
    local count=0 file
    while read -r file; do
        case $(readelf -h "$file" 2>/dev/null | sed -n 's/ *Machine: *//p') in
            AArch64) count=$((count + 1)) ;;
            ?*) fail "$file is of another processor" ;;
        esac
    done < <(find "$1" -type f)
    printf '%s' "$count"
}

count=0 compared=0 programs=0
for list in "$here"/*.files; do
    name=$(basename "$list" .files)
    package=$(echo "$1/$name"_*_arm64.deb)
    [ -e "$package" ] || fail "no $name"
    dpkg-deb -c "$package" | "$here/list.sh" aarch64-linux-gnu "$(dpkg-deb -f "$package" Version)" |
        diff -u "$list" - || fail "$name holds other files than expected"
    native=$(echo "$2/$name"_*.deb)
    if [ -e "$native" ]; then
        diff <(needed_by "$native") <(needed_by "$package") || fail "$name needs other packages than this machine's"
        [ "$(dpkg-deb -f "$native" Multi-Arch)" != same ] || compare_shared "$package" "$native" ||
            fail "$name for two processors cannot be installed"
        compared=$((compared + 1))
    fi
    rm -rf "$scratch/files"
    dpkg-deb -x "$package" "$scratch/files"
    if grep -rqF "$PWD" "$scratch/files"; then
        fail "$name names the folder that it was built in"
    fi
    programs=$((programs + $(count_programs "$scratch/files")))
    count=$((count + 1))
done
# Program, tools and libraries, and the symbols of each.
[ "$programs" -eq 12 ] || fail "$programs programs, libraries and files of symbols"
printf '%s packages hold what is expected, %s compared with this machine'"'"'s\n' "$count" "$compared"
