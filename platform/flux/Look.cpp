// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Look.h"

#include "app/Language.h"
#include "flux/Outline.h"
#include "names/SettingsKeys.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <string_view>
#include <utility>

namespace orbis::flux {

namespace {

constexpr const char* kKey = "orbis.flux.look"; ///< on each widget that follows the viewer's choices

constexpr const char* kPictureKey = "orbis.flux.look.picture"; ///< likewise, on what has no signals

/// Languages with a family of their own in the description of the fonts.
constexpr std::string_view kOwnFamilies[] = {"ko", "zh-cn"};

constexpr const char* kWatched[] = {names::kHighContrastKey, names::kReducedMotionKey};

/// The viewer's choices. Asked for a dozen times for each popup; they are the same throughout one turn of the
/// loop.
struct Choices {
    bool contrast = false;
    bool reducedMotion = false;
    double textScale = 1.0;
};

double s_turn = -1;
Choices s_choices;

bool isOn(const char* key)
{
    int value = 0;
    return vconf_get_int(key, &value) == VCONF_OK && value == names::kOn;
}

double chosenTextScale()
{
    constexpr double kPercent = 100.0;
    int wanted = 0;
    if (vconf_get_int(names::kTextSizeKey, &wanted) != VCONF_OK)
        return 1.0;
    wanted = std::clamp(wanted, *std::begin(names::kTextSizes), *std::prev(std::end(names::kTextSizes)));
    const int nearest = *std::min_element(std::begin(names::kTextSizes), std::end(names::kTextSizes),
        [wanted](int one, int other) { return std::abs(one - wanted) < std::abs(other - wanted); });
    return nearest / kPercent;
}

const Choices& choices()
{
    if (const double turn = ecore_loop_time_get(); turn != s_turn) {
        s_choices = {isOn(names::kHighContrastKey), isOn(names::kReducedMotionKey), chosenTextScale()};
        s_turn = turn;
    }
    return s_choices;
}

std::string withoutRegion(std::string_view language)
{
    return std::string(language.substr(0, language.find('-')));
}

/// @param object  one of a canvas's objects, for it and all that is in it
void applyToAll(Evas_Object* object, const char* contrast, const char* motion)
{
    if (evas_object_data_get(object, kKey)) {
        elm_object_signal_emit(object, contrast, "");
        elm_object_signal_emit(object, motion, "");
    }
    if (evas_object_data_get(object, kPictureKey))
        evas_object_smart_callback_call(object, "flux,look,changed", nullptr);
    if (isLeaf(object))
        return;
    Eina_List* members = evas_object_smart_members_get(object);
    void* member = nullptr;
    EINA_LIST_FREE(members, member)
    applyToAll(static_cast<Evas_Object*>(member), contrast, motion);
}

} // namespace

bool highContrast()
{
    return choices().contrast;
}

bool isCalm()
{
    return choices().contrast || choices().reducedMotion;
}

double textScale()
{
    return choices().textScale;
}

double cardScale()
{
    return (1.0 + textScale()) / 2;
}

std::string languageStyle()
{
    const std::string texts = app::languageOfTexts();
    for (const std::string_view own : kOwnFamilies) {
        if (withoutRegion(texts) == withoutRegion(own))
            return "lang=" + std::string(own);
    }
    return "";
}

bool hasSmallDots()
{
    return withoutRegion(app::languageOfTexts()) == "ur";
}

void applyLanguage(Evas_Object* widget, const char* part)
{
    const std::string style = languageStyle();
    if (!style.empty())
        edje_object_part_text_style_user_push(
            elm_layout_edje_get(widget), part, ("DEFAULT='" + style + "'").c_str());
}

void applyLook(Evas_Object* widget)
{
    evas_object_data_set(widget, kKey, kKey);
    if (textScale() > 1.0)
        elm_object_scale_set(widget, textScale());
    if (highContrast())
        elm_object_signal_emit(widget, "HC", "");
    if (isCalm())
        elm_object_signal_emit(widget, "flux,motion,off", "");
}

void followLook(Evas_Object* picture)
{
    evas_object_data_set(picture, kPictureKey, kPictureKey);
}

LookWatch::LookWatch(Evas_Object* window, std::function<void()> changed)
    : m_window(window)
    , m_changed(std::move(changed))
{
    for (const char* key : kWatched)
        vconf_notify_key_changed(key, on_changed, this);
}

LookWatch::~LookWatch()
{
    for (const char* key : kWatched)
        vconf_ignore_key_changed(key, on_changed);
}

void LookWatch::on_changed(keynode_t*, void* data)
{
    s_turn = -1; // the store has just said that it is another one
    const char* contrast = highContrast() ? "HC" : "flux,contrast,off";
    const char* motion = isCalm() ? "flux,motion,off" : "flux,motion,on";
    const auto* self = static_cast<LookWatch*>(data);
    Evas* canvas = evas_object_evas_get(self->m_window);
    for (Evas_Object* object = evas_object_bottom_get(canvas); object; object = evas_object_above_get(object))
        applyToAll(object, contrast, motion);
    self->m_changed();
}

} // namespace orbis::flux
