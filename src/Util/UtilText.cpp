// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Util.h"

#include "Bounded.h"
#include "Log.h"
#include "OutsideNames.h"
#include "base/EflHandles.h"
#include "combinate.h"
#include "vconf.h"

#include <cstdio>
#include <cstring>

namespace TesselUI {

namespace {

// Split from what follows them, or a letter could be read as one more digit of the escape.
constexpr const char* kLeftToRightMark = "\xE2\x80\x8E";
constexpr const char* kRightToLeftMark = "\xE2\x80\x8F";

constexpr const char* kRightToLeftLocales[] = {"ur_", "fa_", "ar_", "he_"};

void applyStyle(Evas_Object* textblock, const char* styleText)
{
    const base::TextblockStylePtr style {evas_textblock_style_new()};
    if (!style) {
        TESSEL_LOG_AS("m_GetTextNumLines", DLOG_DEBUG, "pStyle1 is NULL");
        return;
    }
    evas_textblock_style_set(style.get(), styleText);
    evas_object_textblock_style_set(textblock, style.get());
}

int countLines(Evas_Object* textblock)
{
    int count = 0;
    int width = 0;
    int height = 0;
    for (int line = 0;
         evas_object_textblock_line_number_geometry_get(textblock, line, nullptr, nullptr, &width, &height);
         ++line) {
        if (width > 0 && height > 0)
            ++count;
        TESSEL_LOG_AS(
            "m_GetTextNumLines", DLOG_DEBUG, " line num : %d nTextV: %d nTextH: %d", line + 1, width, height);
    }
    return count;
}

} // namespace

char* enclosed(const char* before, const char* text, const char* after)
{
    if (!text)
        return nullptr;
    char marked[kMarkedNameSize] = {};
    snprintf(marked, sizeof marked, "%s%s%s", before, text, after);
    return strdup(marked);
}

char* TSUtil::AddLTRMarker(char* text)
{
    return enclosed(kLeftToRightMark, text, kRightToLeftMark);
}

bool TSUtil::m_StartsWith(const char* prefix, const char* text)
{
    return prefix && text && strncmp(prefix, text, strlen(prefix)) == 0;
}

bool TSUtil::m_IsReveseOSD()
{
    LOGD(" Get UI Orientation ");
    const base::MallocStr locale {vconf_get_str(kLanguageKey)};
    if (!locale) {
        LOGE(" the languagelocale is NULL");
        return false;
    }
    LOGI(" the languagelocale is %s ", std::string(bounded(locale.get())).c_str());
    for (const char* prefix : kRightToLeftLocales) {
        if (m_StartsWith(prefix, locale.get()))
            return true;
    }
    return false;
}

int TSUtil::m_GetTextNumLines(const Eo* parent, const char* style, const char* text, int width)
{
    Evas* canvas = parent ? evas_object_evas_get(parent) : nullptr;
    const base::ObjectPtr textblock {canvas ? evas_object_textblock_add(canvas) : nullptr};
    int count = 0;
    if (!textblock) {
        LOGD("pTextBlock1 is NULL");
    } else {
        applyStyle(textblock.get(), style ? style : "");
        evas_object_textblock_text_markup_set(textblock.get(), text ? text : "");
        evas_object_resize(textblock.get(), width, -1);
        count = countLines(textblock.get());
    }
    LOGD(" Actual line number is %d", count);
    return count;
}

} // namespace TesselUI
