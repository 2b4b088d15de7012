#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Tessel UI authors
# SPDX-License-Identifier: Apache-2.0

# Installs each package's part of a build into a scratch folder, and compares the files with those that the package is
# expected to hold. Usage: installed.sh BUILD_FOLDER LIBRARY_FOLDER VERSION ROOT_OF_THE_BUILD
set -eu
build=$1 libraries=$2 version=$3 root=$4
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
scratch=$(mktemp -d "${TMPDIR:-/tmp}/tessel-installed.XXXXXX")
trap 'rm -rf "$scratch"' EXIT
umask 022
wrong=0
for pair in platform:liborbis-platform0 platform-dev:liborbis-platform-dev common:libtessel-common0 \
    common-dev:libtessel-common-dev ui:tessel-ui tools:tessel-ui-tools; do
    component=${pair%:*} package=${pair#*:}
    DESTDIR=$scratch/root cmake --install "$build" --prefix /usr --component "$component" >"$scratch/log" ||
        { cat "$scratch/log" && exit 1; }
    (cd "$scratch/root" && find . ! -type d \( -type l -printf '%M %P -> %l\n' -o -printf '%M %P\n' \)) |
        sed -E -e "s|^([^ ]*) |\\1 /|" -e "s|^([^ ]*) $root|\\1 |" -e "s|\\.so\\.$version|.so.VERSION|g" \
            -e "s|/usr/$libraries/(lib[^/]*.so\|pkgconfig)|/usr/lib/LIBRARIES/\\1|" | LC_ALL=C sort -k 2 >"$scratch/files"
    diff -u "$here/$package.files" "$scratch/files" || wrong=1
    rm -rf "$scratch/root"
done
[ "$wrong" -eq 0 ] || printf 'Files differ from those that are expected; the lists are in tests/packages\n'
exit "$wrong"
