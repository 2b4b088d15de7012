// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/PlainTheme.h"

// The compiled theme, byte for byte; the build says where it lies.
__asm__(".section .rodata\n"
        ".balign 16\n"
        "orbis_plain_theme:\n"
        ".incbin \"" ORBIS_PLAIN_THEME "\"\n"
        "orbis_plain_theme_end:\n"
        ".byte 0\n"
        ".previous\n");

extern "C" {
__attribute__((visibility("hidden"))) extern const unsigned char orbis_plain_theme[];
__attribute__((visibility("hidden"))) extern const unsigned char orbis_plain_theme_end[];
}

namespace orbis::flux {

std::string_view plainTheme()
{
    return {reinterpret_cast<const char*>(orbis_plain_theme),
        static_cast<size_t>(orbis_plain_theme_end - orbis_plain_theme)};
}

} // namespace orbis::flux
