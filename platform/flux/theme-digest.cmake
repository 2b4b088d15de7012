# SPDX-FileCopyrightText: 2026 The Tessel UI authors
# SPDX-License-Identifier: Apache-2.0

# Writes down which file a library was built with: cmake -DFILE=FILE -DNAME=PREFIX -DHEADER=FILE -P theme-digest.cmake
file(MD5 ${FILE} digest)
file(SIZE ${FILE} size)
file(CONFIGURE OUTPUT ${HEADER} @ONLY CONTENT
    "#pragma once\n#define ORBIS_@NAME@_DIGEST \"@digest@\"\n#define ORBIS_@NAME@_SIZE @size@\n")
