# SPDX-FileCopyrightText: 2026 The Tessel UI authors
# SPDX-License-Identifier: Apache-2.0

# The Debian packages: which component goes into which, what it needs, and the documents that each carries.
find_program(GZIP gzip REQUIRED)
set(TESSEL_MAINTAINER "Tessel UI maintainers <maintainers@tessel-ui.invalid>" CACHE STRING
    "whom the packages name, in the form NAME <ADDRESS>")
set(CPACK_COMPONENTS_ALL)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${TESSEL_MAINTAINER})
set(same "(= ${PROJECT_VERSION})")

# The packages' own changelog says when they were made; what is new is in the project's.
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
file(CONFIGURE OUTPUT changelog CONTENT "tessel-ui (@PROJECT_VERSION@) bookworm; urgency=medium

  * Made of the sources of this version; their CHANGELOG.md tells what is new.

 -- @TESSEL_MAINTAINER@  @date@
" @ONLY)
execute_process(COMMAND ${GZIP} -9n -f -k ${CMAKE_CURRENT_BINARY_DIR}/changelog COMMAND_ERROR_IS_FATAL ANY)

# What a library's package tells others' of: which version they need, and that the loader's cache is to be made anew. Of
# the present version as a whole where nothing is known of a symbol.
function(tessel_library_controls key package)
    string(REGEX REPLACE "^lib(.*)0$" "\\1" target ${package})
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/${package})
    file(WRITE ${folder}/shlibs "lib${target} 0 ${package} (>= ${PROJECT_VERSION})\n")
    file(WRITE ${folder}/triggers "activate-noawait ldconfig\n")
    set(controls ${folder}/shlibs ${folder}/triggers)
    # A build with sanitizers, for instance, exports more; only what is packaged has to have what the list says.
    if(TESSEL_HARDENED)
        find_program(DPKG_GENSYMBOLS dpkg-gensymbols REQUIRED)
        set(processor ${CPACK_DEBIAN_PACKAGE_ARCHITECTURE}) # of a toolchain file
        if(NOT processor)
            execute_process(COMMAND dpkg --print-architecture OUTPUT_VARIABLE processor
                OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        endif()
        set(list ${PROJECT_SOURCE_DIR}/tests/exports/${target}.symbols)
        add_custom_command(
            OUTPUT ${folder}/symbols
            COMMAND ${CMAKE_COMMAND} -D LIST=${list} -D LIBRARY=$<TARGET_SONAME_FILE:${target}> -D PACKAGE=${package}
                -D VERSION=${PROJECT_VERSION} -D ARCHITECTURE=${processor}
                -D GENSYMBOLS=${DPKG_GENSYMBOLS} -D OUTPUT=${folder}/symbols
                -P ${CMAKE_CURRENT_SOURCE_DIR}/exports.cmake
            DEPENDS ${target} ${list} exports.cmake
            VERBATIM)
        add_custom_target(${package}-symbols ALL DEPENDS ${folder}/symbols)
        list(APPEND controls ${folder}/symbols)
    endif()
    set(CPACK_DEBIAN_${key}_PACKAGE_CONTROL_EXTRA ${controls} PARENT_SCOPE)
endfunction()

# tessel_package(COMPONENT PACKAGE SECTION MULTI_ARCH DEPENDS SUMMARY TEXT); MULTI_ARCH is same where packages for two
# processors can be installed beside each other, and foreign where one serves programs of all.
macro(tessel_package component package section multi_arch depends summary text)
    list(APPEND CPACK_COMPONENTS_ALL ${component})
    string(TOUPPER ${component} key)
    set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${package})
    # CPack of Debian 12 has no variable for the second field, but copies both lines.
    set(CPACK_DEBIAN_${key}_PACKAGE_SECTION "${section}\nMulti-Arch: ${multi_arch}")
    set(CPACK_DEBIAN_${key}_PACKAGE_DEPENDS "${depends}")
    set(CPACK_COMPONENT_${key}_DESCRIPTION "${summary}\n${text}")
    install(FILES debian/copyright ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component})
    if("${section}" STREQUAL libs)
        tessel_library_controls(${key} ${package})
    endif()
    if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/debian/${package}.lintian-overrides)
        install(FILES debian/${package}.lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
            RENAME ${package} COMPONENT ${component})
    endif()
endmacro()

# Of the toolkit's modules the library needs those of the window systems, which are opened at run time.
tessel_package(platform liborbis-platform0 libs same
    "libelementary-data, libevas1-engines-x, libevas1-engines-wayland"
    "interfaces of the TV platform for an ordinary Linux machine"
    "Application loop, launch bundle, settings store, log, application status,\nwizard, styled widgets and their themes.")
set(CPACK_DEBIAN_PLATFORM_PACKAGE_RECOMMENDS "speech-dispatcher")
tessel_package(platform-dev liborbis-platform-dev libdevel same "liborbis-platform0 ${same}, libefl-all-dev"
    "interfaces of the TV platform, for developers"
    "Headers, and the pkg-config file, which puts the library before the toolkit's:\nit takes the place of one of its functions.")
tessel_package(common libtessel-common0 libs same "liborbis-platform0 ${same}"
    "widget factory and settings of the phone-assisted set-up"
    "Plain functions that the popups and other modules of the set-up share:\nwidgets with the set-up's look, chains of focus, and its settings.")
tessel_package(common-dev libtessel-common-dev libdevel same "libtessel-common0 ${same}, liborbis-platform-dev ${same}"
    "widget factory of the phone-assisted set-up, for developers" "Headers of its plain functions, and the pkg-config file, which brings the\nplatform's along.")
# The fonts are those of the languages.
tessel_package(ui tessel-ui misc foreign "libtessel-common0 ${same}, liborbis-platform0 ${same}, default-dbus-system-bus |\
 dbus-system-bus, systemd | systemd-standalone-sysusers, systemd | systemd-standalone-tmpfiles, fonts-noto-core,\
 fonts-noto-ui-core, fonts-wqy-microhei, fonts-nanum"
    "popups of a TV's phone-assisted set-up"
    "The on-screen half of the set-up: a daemon asks, the viewer sees one popup\nand answers with the remote control.")
set(CPACK_DEBIAN_UI_PACKAGE_RECOMMENDS "fonts-noto-color-emoji")
set(scripts ${CMAKE_CURRENT_SOURCE_DIR}/debian)
set(CPACK_DEBIAN_UI_PACKAGE_CONTROL_EXTRA ${scripts}/postinst ${scripts}/prerm ${scripts}/postrm)
tessel_package(tools tessel-ui-tools devel foreign
    "tessel-ui ${same}, libtessel-common0 ${same}, liborbis-platform0 ${same}"
    "simulator, settings and pictures for the phone-assisted set-up"
    "A simulator of the set-up daemon with its scenarios, a command line for the\nsettings store, and a gallery of\
 all popups in all languages.")
set(CPACK_DEBIAN_TOOLS_PACKAGE_RECOMMENDS "fonts-noto-color-emoji")
tessel_package(symbols tessel-ui-dbgsym debug same ""
    "debug symbols of the phone-assisted set-up's popups"
    "For the program, the libraries and the tools of this version: a debugger\nfinds them by build id.")
set(CPACK_DEBIAN_SYMBOLS_PACKAGE_SHLIBDEPS OFF)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tessel-ui)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_SET_DESTDIR ON) # many places begin at the root
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
    WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE "")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY} ${TESSEL_LIBRARIES})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_STRIP_FILES OFF)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/symbols.cmake)
set(CPACK_OBJCOPY_EXECUTABLE ${CMAKE_OBJCOPY})
set(CPACK_READELF_EXECUTABLE ${CMAKE_READELF})
include(CPack)
