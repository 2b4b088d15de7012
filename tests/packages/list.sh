#!/bin/sh
# SPDX-FileCopyrightText: 2026 The Tessel UI authors
# SPDX-License-Identifier: Apache-2.0

# Turns a package's listing into the form of the expected ones: mode and path of what is no folder, the machine's library
# folder and the version by name. Usage: dpkg-deb -c PACKAGE | list.sh LIBRARY_FOLDER VERSION
awk '$1 !~ /^d/ { path = $6; for (i = 7; i <= NF; i++) path = path " " $i
    sub(/^\./, "", path); print $1, $2, path }' |
    sed -e "s|/lib/$1/|/lib/LIBRARIES/|g" -e "s|\\.so\\.$2|.so.VERSION|g" -e 's|root/root ||' \
        -e 's|build-id/../[0-9a-f]*|build-id/ID|' | LC_ALL=C sort -k 2
