#include "NetUtilAccessibility.h"

#include "Handles.h"
#include "Log.h"

#include <cstdlib>

namespace {

using TesselUI::AccessibilityInfo;
using TesselUI::CHandle;
using TesselUI::MallocStr;
using BufferPtr = CHandle<Eina_Strbuf, eina_strbuf_free>;

AccessibilityInfo* s_info = nullptr;

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
{
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
}

char* access_cb_func(const char* text1, const char* text2, bool flag)
{
    LOGD("Entered in access_cb_func to read out the text!");
    const MallocStr plain2 {text2 ? elm_entry_markup_to_utf8(text2) : nullptr};
    const MallocStr plain1 {text1 ? elm_entry_markup_to_utf8(text1) : nullptr};
    if (text1 && !plain1)
        return nullptr;
    const BufferPtr buffer {eina_strbuf_new()};
    if (!buffer || (text2 && !plain2))
        return nullptr;
    const char* name = plain2 ? plain2.get() : "";
    if (flag) {
        LOGD("<<flag == true >>");
        eina_strbuf_append_printf(buffer.get(), "%s,%s", plain1 ? plain1.get() : "", name);
    } else {
        LOGD("flag == false");
        eina_strbuf_append_printf(buffer.get(), "%s", name);
    }
    return eina_strbuf_string_steal(buffer.get());
}
