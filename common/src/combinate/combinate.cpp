// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "combinate.h"

#include "Log.h"
#include "string_util.h"

void combinate_string(const char* format, const char* arg1, const char* arg2, char* out)
{
    if (!out) {
        LOGE("Memory Allocation failed");
        return;
    }
    // The callers' buffers are smaller than the 512 bytes that combined sentences were once allowed.
    CStringUtil::CombinateStrings(out, TesselUI::kCombinedTextSize, format, arg1, arg2, "", "");
}
