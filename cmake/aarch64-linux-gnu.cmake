# SPDX-FileCopyrightText: 2026 The Tessel UI authors
# SPDX-License-Identifier: Apache-2.0

# For TVs' processors, by Debian's cross compiler (g++-aarch64-linux-gnu). The libraries are those of the folder
# TESSEL_ARM64_ROOT, an unpacked Debian, or, when that is empty, the machine's own multiarch packages.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)

set(TESSEL_ARM64_ROOT "" CACHE PATH "unpacked Debian of the TV's processor")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TESSEL_ARM64_ROOT)
if(TESSEL_ARM64_ROOT)
    # Tools that the build runs to have them describe themselves.
    find_program(QEMU_AARCH64 qemu-aarch64)
    if(QEMU_AARCH64)
        set(CMAKE_CROSSCOMPILING_EMULATOR ${QEMU_AARCH64} -L ${TESSEL_ARM64_ROOT} -E
            LD_LIBRARY_PATH=/usr/lib/aarch64-linux-gnu)
    endif()
    set(CMAKE_SYSROOT ${TESSEL_ARM64_ROOT})
    set(CMAKE_FIND_ROOT_PATH ${TESSEL_ARM64_ROOT})
    set(ENV{PKG_CONFIG_SYSROOT_DIR} ${TESSEL_ARM64_ROOT})
endif()
set(ENV{PKG_CONFIG_LIBDIR}
    ${TESSEL_ARM64_ROOT}/usr/lib/aarch64-linux-gnu/pkgconfig:${TESSEL_ARM64_ROOT}/usr/share/pkgconfig)
# What runs while building is the machine's own.
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# For the packages: whose they are, and where the libraries lie that they need.
set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE arm64)
set(TESSEL_LIBRARIES ${TESSEL_ARM64_ROOT}/usr/lib/aarch64-linux-gnu ${TESSEL_ARM64_ROOT}/lib/aarch64-linux-gnu)
