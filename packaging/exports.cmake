# SPDX-FileCopyrightText: 2026 The Tessel UI authors
# SPDX-License-Identifier: Apache-2.0

# Writes the file OUTPUT that tells other packages which VERSION of PACKAGE a program needs that calls a function of
# LIBRARY: that of the LIST (tests/exports) says since when there is one. A library that exports anything else is an error.
file(STRINGS ${LIST} lines)
cmake_path(GET LIBRARY FILENAME soname)
set(template "${soname} ${PACKAGE} #MINVER#\n")
foreach(line IN LISTS lines)
    if(NOT line MATCHES "^[TB] ([0-9.]+) (.+)$")
        message(FATAL_ERROR "Without a kind, a version and a name: ${line}")
    endif()
    set(since ${CMAKE_MATCH_1})
    set(name ${CMAKE_MATCH_2})
    if(name MATCHES "::")
        string(APPEND template " (c++)\"${name}@Base\" ${since}\n")
    else()
        string(APPEND template " ${name}@Base ${since}\n")
    endif()
endforeach()
file(WRITE ${OUTPUT}.in "${template}")
execute_process(COMMAND ${GENSYMBOLS} -c4 -a${ARCHITECTURE} -v${VERSION} -p${PACKAGE} -e${LIBRARY} -I${OUTPUT}.in -O${OUTPUT}
    COMMAND_ERROR_IS_FATAL ANY)
