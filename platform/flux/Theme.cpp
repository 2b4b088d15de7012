#include "flux/Theme.h"

#include "flux/Widget.h"
#include "vconf.h"

namespace orbis::flux {

namespace {

constexpr const char* kThemeFile = ORBIS_SYSROOT "/usr/share/orbis/flux.edj";
constexpr const char* kContrastKey = "db/menu/system/accessibility/highcontrast";

} // namespace

void ensureTheme()
{
    // Adding an extension twice is harmless, but each time makes every later look-up longer.
    static const bool added = (elm_theme_extension_add(nullptr, kThemeFile), true);
    (void)added;
}

Evas_Object* addThemedLayout(Evas_Object* parent, const char* group, const char* style)
{
    if (!isUsable(parent))
        return nullptr;
    ensureTheme();
    Evas_Object* layout = elm_layout_add(parent);
    if (layout && elm_layout_theme_set(layout, "flux", group, style)) {
        applyContrast(layout);
        return layout;
    }
    evas_object_del(layout);
    return nullptr;
}

bool highContrast()
{
    int contrast = 0;
    return vconf_get_int(kContrastKey, &contrast) == VCONF_OK && contrast == 1;
}

void applyContrast(Evas_Object* object)
{
    if (highContrast())
        elm_object_signal_emit(object, "HC", "");
}

} // namespace orbis::flux
