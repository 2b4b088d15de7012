// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "dlog.h"
#include "elm_flux.h"
#include "flux/Guard.h"
#include "flux/Look.h"
#include "flux/Record.h"
#include "flux/Widget.h"
#include "names/LogTag.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <sys/stat.h>

namespace orbis::flux {

namespace {

struct ImageboxRecord {
    static constexpr const char* kKey = "orbis.flux.imagebox";
    Evas_Object* object = nullptr;
    std::string file; ///< in its usual form; empty when there is none
};

/// @return the high-contrast form of a picture, a file beside it, when it is wanted and there is one
std::string shownFormOf(const std::string& path)
{
    const std::filesystem::path usual(path);
    const auto contrast =
        usual.parent_path() / (usual.stem().string() + "-contrast" + usual.extension().string());
    std::error_code error;
    return highContrast() && std::filesystem::is_regular_file(contrast, error) ? contrast.string() : path;
}

void on_lookChanged(void* data, Evas_Object* imagebox, void*)
{
    const auto& record = *static_cast<ImageboxRecord*>(data);
    guarded([&]() -> Eina_Bool {
        return record.file.empty() || elm_image_file_set(imagebox, shownFormOf(record.file).c_str(), nullptr);
    });
}

/// Pictures are for a screen: four times as many points as the largest has would only cost memory.
constexpr int64_t kMostPixels = int64_t {4} * 3840 * 2160;

/// @return what keeps the file of @p imagebox from being drawn, or null. Its points are read later, by
/// another thread, and there may be none; the toolkit then draws nothing.
const char* faultOfPicture(Evas_Object* imagebox, const char* path)
{
    struct stat status { };
    // Opening anything else might wait.
    if (stat(path, &status) != 0 || !S_ISREG(status.st_mode))
        return "there is no such file";
    if (!elm_image_file_set(imagebox, path, nullptr))
        return "it is damaged";
    int width = 0;
    int height = 0;
    elm_image_object_size_get(imagebox, &width, &height);
    return int64_t {width} * height > kMostPixels ? "it is too large" : nullptr;
}

} // namespace

} // namespace orbis::flux

using namespace orbis::flux;

Evas_Object* elm_flux_imagebox_add(Evas_Object* parent)
{
    Evas_Object* image = isUsable(parent) ? elm_image_add(parent) : nullptr;
    if (!image)
        return nullptr;
    auto* record = attachRecord<ImageboxRecord>(image);
    followLook(image);
    evas_object_smart_callback_add(image, "flux,look,changed", on_lookChanged, record);
    elm_image_aspect_fixed_set(image, EINA_TRUE);
    elm_image_smooth_set(image, EINA_TRUE);
    return image;
}

Eina_Bool elm_flux_imagebox_file_set(Evas_Object* imagebox, const char* path)
{
    auto* record = recordOf<ImageboxRecord>(imagebox);
    if (!record || !path)
        return EINA_FALSE;
    return guarded([&]() -> Eina_Bool {
        const char* shown = nullptr;
        elm_image_file_get(imagebox, &shown, nullptr);
        const std::string former = shown ? shown : "";
        const char* fault = faultOfPicture(imagebox, shownFormOf(path).c_str());
        if (!fault) {
            record->file = path;
            return EINA_TRUE;
        }
        elm_image_file_set(imagebox, former.empty() ? nullptr : former.c_str(), nullptr);
        dlog_print(DLOG_ERROR, orbis::names::kLogTag, "A picture is left out: %s: %s", path, fault);
        return EINA_FALSE;
    });
}

Eina_Bool elm_flux_imagebox_responsive_rule_set(Evas_Object* imagebox, Elm_Flux_Responsive_Rule rule)
{
    if (!recordOf<ImageboxRecord>(imagebox) || rule < ELM_FLUX_RESPONSIVE_KEEP
        || rule > ELM_FLUX_RESPONSIVE_WRAP)
        return EINA_FALSE;
    // A picture has no lines to wrap: it keeps its size, or follows that of its box.
    elm_image_resizable_set(imagebox, EINA_TRUE, EINA_TRUE);
    return EINA_TRUE;
}
