#include "elm_flux.h"
#include "flux/Record.h"
#include "flux/Widget.h"

namespace orbis::flux {

namespace {

struct ImageboxRecord {
    static constexpr const char* kKey = "orbis.flux.imagebox";
    Evas_Object* object = nullptr;
};

} // namespace

} // namespace orbis::flux

using namespace orbis::flux;

Evas_Object* elm_flux_imagebox_add(Evas_Object* parent)
{
    Evas_Object* image = isUsable(parent) ? elm_image_add(parent) : nullptr;
    if (!image)
        return nullptr;
    attachRecord<ImageboxRecord>(image);
    elm_image_aspect_fixed_set(image, EINA_TRUE);
    elm_image_smooth_set(image, EINA_TRUE);
    return image;
}

Eina_Bool elm_flux_imagebox_file_set(Evas_Object* imagebox, const char* path)
{
    if (!recordOf<ImageboxRecord>(imagebox) || !path)
        return EINA_FALSE;
    return elm_image_file_set(imagebox, path, nullptr);
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
