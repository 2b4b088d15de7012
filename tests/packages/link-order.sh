#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Tessel UI authors
# SPDX-License-Identifier: Apache-2.0

# Builds the application beside this file on the packages that are installed, with the modules named in every order:
# the platform's library has to come before the toolkit's, or it says so, and its signals are lost.
set -eu
cd "$(dirname "${BASH_SOURCE[0]}")"
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export ORBIS_STATE_DIR=$folder/state ORBIS_RUNTIME_DIR=$folder/run ELM_ENGINE=buffer ELM_DISPLAY=buffer
tried=0
for modules in orbis-platform "orbis-platform elementary" "elementary orbis-platform" "tessel-common" \
    "elementary tessel-common" "elementary orbis-platform tessel-common" "ecore elementary tessel-common orbis-platform" \
    "evas tessel-common elementary" "gio-2.0 elementary orbis-platform"; do
    # shellcheck disable=SC2046,SC2086 # words
    g++ -Wall -Werror -o "$folder/hello" application.cpp $(pkg-config --cflags --libs $modules)
    "$folder/hello" 2>"$folder/log" || { cat "$folder/log" && exit 1; }
    if ! grep -q '^I/hello: shown$' "$folder/log" || grep "toolkit's libraries come before" "$folder/log"; then
        printf 'Wrong with "%s":\n' "$modules"
        cat "$folder/log"
        exit 1
    fi
    tried=$((tried + 1))
done
[ "$tried" -eq 9 ]

# A package of it would need the version that is the first with all that it calls.
mkdir "$folder/debian"
printf 'Source: hello\n\nPackage: hello\nArchitecture: any\n' >"$folder/debian/control"
needed=$(cd "$folder" && dpkg-shlibdeps -O hello 2>"$folder/log") || { cat "$folder/log" && exit 1; }
if ! dpkg-query --control-list liborbis-platform0 | grep -qx symbols ||
    ! [[ $needed =~ liborbis-platform0\ \(\>=\ 0\.1\.0\) ]]; then
    printf 'A package of it would say: %s\n' "$needed"
    exit 1
fi
