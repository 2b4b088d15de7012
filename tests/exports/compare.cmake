# SPDX-FileCopyrightText: 2026 The Tessel UI authors
# SPDX-License-Identifier: Apache-2.0

# Compares what LIBRARY exports with the list in the file EXPECTED: a line a symbol, its kind (T for a function, B
# for data) and its name.
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

file(STRINGS ${EXPECTED} expected)
set(missing ${expected})
list(REMOVE_ITEM missing ${actual})
set(surplus ${actual})
list(REMOVE_ITEM surplus ${expected})
if(NOT expected OR missing OR surplus)
    string(REPLACE ";" "\n  " missing "${missing}")
    string(REPLACE ";" "\n  " surplus "${surplus}")
    message(FATAL_ERROR "Exported, but not in the list:\n  ${surplus}\nIn the list, but not exported:\n  ${missing}")
endif()
