# SPDX-FileCopyrightText: 2026 The Tessel UI authors
# SPDX-License-Identifier: Apache-2.0

# Compares what LIBRARY exports with the list in the file EXPECTED: a line a symbol, its kind (T for a function, B
# for data), the first version that has it, and its name. The packages tell others' of the versions.
execute_process(COMMAND ${NM} -D --defined-only -C ${LIBRARY}
    OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE ";" "" output "${output}")
string(REPLACE "\n" ";" lines "${output}")
set(actual)
foreach(line IN LISTS lines)
    string(REGEX REPLACE "^[0-9a-f]+ " "" symbol "${line}")
    # What the linker, the sanitizers and, without optimisation, the standard library's templates add.
    if(symbol AND NOT symbol MATCHES "^. (__bss_start|_edata|_end|_init|_fini|__.*san.*)$|^[WVu] .*std::")
        list(APPEND actual "${symbol}")
    endif()
endforeach()

file(STRINGS ${EXPECTED} lines)
set(expected)
foreach(line IN LISTS lines)
    if(NOT line MATCHES "^([TB]) [0-9.]+ (.+)$")
        message(FATAL_ERROR "Without a kind, a version and a name: ${line}")
    endif()
    list(APPEND expected "${CMAKE_MATCH_1} ${CMAKE_MATCH_2}")
endforeach()
set(missing ${expected})
list(REMOVE_ITEM missing ${actual})
set(surplus ${actual})
list(REMOVE_ITEM surplus ${expected})
if(NOT expected OR missing OR surplus)
    string(REPLACE ";" "\n  " missing "${missing}")
    string(REPLACE ";" "\n  " surplus "${surplus}")
    message(FATAL_ERROR "Exported, but not in the list:\n  ${surplus}\nIn the list, but not exported:\n  ${missing}")
endif()
