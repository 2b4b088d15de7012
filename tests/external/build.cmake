# SPDX-FileCopyrightText: 2026 The Tessel UI authors
# SPDX-License-Identifier: Apache-2.0

# Builds the program of SOURCE without its platform/, on the layer that is built in BUILD. FOLDER gets what is installed
# of it (installed/), the sources that a vendor has (sources/) and the program's build (build/).
function(run)
    execute_process(COMMAND ${ARGV} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT status EQUAL 0)
        list(JOIN ARGV " " command)
        message(FATAL_ERROR "${command}\nended with ${status}:\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

set(installed ${FOLDER}/installed)
set(sources ${FOLDER}/sources)
set(build ${FOLDER}/build)

file(REMOVE_RECURSE ${installed} ${sources})
foreach(component platform platform-dev)
    run(${CMAKE_COMMAND} --install ${BUILD} --component ${component} --prefix ${installed})
endforeach()
# Copies: from a linked folder, ".." would lead back to the tree that has platform/.
foreach(part CMakeLists.txt base common include packaging res src tools)
    file(COPY ${SOURCE}/${part} DESTINATION ${sources})
endforeach()
foreach(part CMakeLists.txt conformance exports gallery)
    file(COPY ${SOURCE}/tests/${part} DESTINATION ${sources}/tests)
endforeach()

set(ENV{PKG_CONFIG_PATH} ${installed}/${LIBDIR}/pkgconfig)
# In whichever order somebody asks.
run(${PKG_CONFIG} --libs elementary orbis-platform)
if(NOT output MATCHES "-lorbis-platform " OR output MATCHES "-lelementary .*-lorbis-platform")
    message(FATAL_ERROR "The toolkit comes before the platform: ${output}")
endif()

# What an earlier run has compiled may stay, but not what it has found. All that makes the build short is taken.
run(${CMAKE_COMMAND} --fresh -G ${GENERATOR} -S ${sources} -B ${build} -D TESSEL_PLATFORM=external
    -D CMAKE_BUILD_TYPE=Debug -D CMAKE_CXX_FLAGS_DEBUG=-O0 -D TESSEL_PRECOMPILE=ON -D CMAKE_CXX_COMPILER=${CXX}
    -D TESSEL_WERROR=${WERROR})
run(${CMAKE_COMMAND} --build ${build} --target tessel-ui tessel-daemon-sim orbis-conformance)

run(${OBJDUMP} -p ${build}/bin/tessel-ui)
if(NOT output MATCHES "NEEDED +liborbis-platform.*NEEDED +libelementary")
    message(FATAL_ERROR "The toolkit's library is searched before the platform's, or one is not there:\n${output}")
endif()
run(ldd ${build}/bin/tessel-ui)
string(REGEX MATCH "liborbis-platform[^ ]* => ([^ ]*)" found "${output}")
cmake_path(IS_PREFIX installed "${CMAKE_MATCH_1}" NORMALIZE there)
if(NOT there)
    message(FATAL_ERROR "The program does not run with the installed platform:\n${output}")
endif()

# What an integrator runs against a layer of their own.
file(REMOVE_RECURSE ${FOLDER}/store)
file(MAKE_DIRECTORY ${FOLDER}/store)
foreach(variable ORBIS_STATE_DIR=state ORBIS_RUNTIME_DIR=runtime ORBIS_SPEECH_LOG=speech HOME=.)
    string(REGEX MATCH "(.*)=(.*)" pair ${variable})
    set(ENV{${CMAKE_MATCH_1}} ${FOLDER}/store/${CMAKE_MATCH_2})
endforeach()
run(${build}/bin/orbis-conformance)
