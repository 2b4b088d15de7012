// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "NetUtilAccessibility.h"

#include "Guard.h"
#include "Log.h"
#include "base/EflHandles.h"
#include "base/Markup.h"

#include <cctype>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

using TesselUI::AccessibilityInfo;

AccessibilityInfo* s_info = nullptr;

/// What begins with neither a letter nor a slash is read as text.
bool isTag(std::string_view text)
{
    return text.size() > 1 && (isalpha(static_cast<unsigned char>(text[1])) || text[1] == '/');
}

/// The toolkit's conversion drops everything behind a lone ampersand or angle bracket, and names of phones
/// and networks hold such: they are escaped, while tags and entities stay.
std::string convertible(std::string_view markup)
{
    std::string result;
    while (!markup.empty()) {
        const char first = markup.front();
        std::size_t kept = 1;
        if (first == '&')
            kept = base::entityLength(markup);
        else if (first == '<')
            kept = isTag(markup) ? base::tagLength(markup) : 0;
        if (kept == 0) {
            result += first == '&' ? "&amp;" : "&lt;";
            kept = 1;
        } else {
            result += markup.substr(0, kept);
        }
        markup.remove_prefix(kept);
    }
    return result;
}

base::MallocStr plainText(const char* markup)
{
    return base::MallocStr {markup ? elm_entry_markup_to_utf8(convertible(markup).c_str()) : nullptr};
}

} // namespace

AccessibilityInfo* getAccessibiltyObject()
{
    if (!s_info)
        s_info = static_cast<AccessibilityInfo*>(calloc(1, sizeof(AccessibilityInfo)));
    return s_info;
}

void delaccessObject()
{
    free(s_info);
    s_info = nullptr;
}

char* access_info_cb_widget(void* data, Evas_Object*)
try {
    s_info = static_cast<AccessibilityInfo*>(data);
    if (!s_info) {
        LOGE("memory allocated failed\n");
        return nullptr;
    }
    LOGD("text1 == %s", s_info->text1);
    LOGD("text2 == %s", s_info->text2);
    char* text = access_cb_func(s_info->text1, s_info->text2, s_info->flag);
    s_info->flag = false;
    return text;
} catch (...) {
    TesselUI::logCaught(__func__);
    return nullptr;
}

char* access_cb_func(const char* text1, const char* text2, bool flag)
{
    LOGD("Entered in access_cb_func to read out the text!");
    const base::MallocStr plain2 = plainText(text2);
    const base::MallocStr plain1 = plainText(text1);
    if (text1 && !plain1)
        return nullptr;
    const base::BufferPtr buffer {eina_strbuf_new()};
    if (!buffer || (text2 && !plain2))
        return nullptr;
    const char* name = plain2 ? plain2.get() : "";
    if (flag) {
        LOGD("<<flag == true >>");
        eina_strbuf_append(buffer.get(), plain1 ? plain1.get() : "");
        eina_strbuf_append_char(buffer.get(), ',');
        eina_strbuf_append(buffer.get(), name);
    } else {
        LOGD("flag == false");
        eina_strbuf_append(buffer.get(), name);
    }
    return eina_strbuf_string_steal(buffer.get());
}
