# SPDX-FileCopyrightText: 2026 The Tessel UI authors
# SPDX-License-Identifier: Apache-2.0

# Compares what the PROGRAM and the COMMON library take from the PLATFORM with the tables of the page DOCUMENT, by the
# tool NM. A call in the first column of a table counts as told of.
cmake_minimum_required(VERSION 3.25)
function(symbols result options file)
    execute_process(COMMAND ${NM} -D -C ${options} ${file} OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
    string(REPLACE ";" "" output "${output}")
    string(REPLACE "\n" ";" lines "${output}")
    set(names)
    foreach(line IN LISTS lines)
        # An address, the kind, the name; of a function of C++ the arguments, too.
        if(line MATCHES "^[0-9a-f ]*[TU] ([A-Za-z_0-9:]+)")
            list(APPEND names ${CMAKE_MATCH_1})
        endif()
    endforeach()
    set(${result} ${names} PARENT_SCOPE)
endfunction()

symbols(offered --defined-only ${PLATFORM})
symbols(wanted --undefined-only ${PROGRAM})
symbols(wanted_by_common --undefined-only ${COMMON})
set(called)
foreach(name IN LISTS wanted wanted_by_common)
    if(name IN_LIST offered)
        list(APPEND called ${name})
    endif()
endforeach()
list(REMOVE_DUPLICATES called)

file(STRINGS ${DOCUMENT} rows REGEX "^[|] `")
set(told)
foreach(row IN LISTS rows)
    string(REGEX MATCH "^[|] [^|]*[|]" first "${row}")
    string(REGEX MATCHALL "`[A-Za-z_:]+[(]" calls "${first}")
    foreach(call IN LISTS calls)
        string(REGEX REPLACE "[`(]" "" call "${call}")
        list(APPEND told ${call})
    endforeach()
endforeach()

set(missing ${called})
list(REMOVE_ITEM missing ${told})
set(surplus ${told})
list(REMOVE_ITEM surplus ${called})
list(LENGTH called count)
if(count LESS 40 OR missing OR surplus)
    message(FATAL_ERROR "${count} functions of the platform are called.\nCalled, but not told of: ${missing}\n"
        "Told of, but not called: ${surplus}")
endif()
