// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/WarmFonts.h"

#include "app/Language.h"
#include "app/Words.h"
#include "flux/Fitting.h"
#include "flux/FocusStack.h"
#include "flux/ForgottenMemory.h"
#include "flux/Guard.h"
#include "flux/Look.h"
#include "flux/TextboxRecord.h"

#include <utility>

namespace orbis::flux {

namespace {

/// After the start, or after a popup that may be followed by the next one, seconds.
constexpr double kQuiet = 0.5;

/// Letters of a few hundred names are some hundred kilobytes.
constexpr int kMostPopups = 64;

/// A part of the theme whose texts are in a font of their own size or weight.
struct Kind {
    const char* group;
    const char* part;
    bool isLarge; ///< title or button, which grow less
    bool isCode; ///< has digits only
};

constexpr Kind kKinds[] = {
    {"elm/flux/popup/0", "title,text", true, false},
    {"elm/button/base/flux", "elm.text", true, false},
    {"elm/flux/textbox/8", "elm.text", false, true},
    {"elm/flux/textbox/11", "elm.text", false, false},
    {"elm/flux/textbox/13", "elm.text", false, false},
};

std::string present()
{
    return app::languageOfTexts() + ' ' + std::to_string(textScale()) + ' '
        + std::to_string(elm_config_scale_get());
}

struct Style {
    std::string own; ///< of a part's texts; "" where the theme has none
    std::string added;
};

Style styleOf(Evas* canvas, const Kind& kind)
{
    const char* file = elm_theme_group_path_find(nullptr, kind.group);
    const base::ObjectPtr group {file ? edje_object_add(canvas) : nullptr};
    freeWithGroup(group.get());
    if (!group || !edje_object_file_set(group.get(), file, kind.group))
        return {};
    const Evas_Object* text = edje_object_part_object_get(group.get(), kind.part);
    const Evas_Textblock_Style* style = text ? evas_object_textblock_style_get(text) : nullptr;
    return {style ? evas_textblock_style_get(style) : "",
        userStyle(languageStyle(), {usualSize(group.get(), textScale()), 0})};
}

} // namespace

WarmFonts::WarmFonts(Evas_Object* window)
    : m_canvas(evas_object_evas_get(window))
{
    wait();
}

WarmFonts::~WarmFonts()
{
    if (m_timer)
        ecore_timer_del(m_timer);
}

void WarmFonts::wait()
{
    if (m_timer)
        ecore_timer_reset(m_timer);
    else
        m_timer = ecore_timer_add(kQuiet, on_time, this);
}

void WarmFonts::popupGone()
{
    ++m_popups;
    if (m_timer || m_popups >= kMostPopups || m_madeFor != present())
        wait();
}

/// What the fonts are kept for need not be what is up: then they wait until that has gone.
Eina_Bool WarmFonts::on_time(void* data)
{
    auto* self = static_cast<WarmFonts*>(data);
    self->m_timer = nullptr;
    if (self->m_texts.empty() || FocusStack::instance().empty()) {
        guarded([self] {
            self->make();
            return EINA_TRUE;
        });
    }
    return ECORE_CALLBACK_CANCEL;
}

void WarmFonts::make()
{
    if (!m_texts.empty()) {
        m_texts.clear();
        evas_font_cache_flush(m_canvas);
    }
    m_popups = 0;
    m_madeFor = present();
    const std::string words = app::wordsOf("Closes in %1 seconds.") + app::wordsOf("Still working.");
    for (const Kind& kind : kKinds) {
        const Style style = styleOf(m_canvas, kind);
        if (!style.own.empty())
            addText(style.own, style.added,
                elm_config_scale_get() * (kind.isLarge ? cardScale() : textScale()),
                kind.isCode ? "0123456789" : words);
    }
}

void WarmFonts::addText(
    const std::string& style, const std::string& added, double scale, const std::string& letters)
{
    constexpr int kWidth = 1000;
    constexpr int kHeight = 1000;
    base::ObjectPtr text {evas_object_textblock_add(m_canvas)};
    const base::TextblockStylePtr own {evas_textblock_style_new()};
    const base::TextblockStylePtr user {evas_textblock_style_new()};
    if (!text || !own || !user)
        return;
    evas_textblock_style_set(own.get(), style.c_str());
    evas_textblock_style_set(user.get(), added.c_str());
    evas_object_scale_set(text.get(), scale);
    evas_object_textblock_style_set(text.get(), own.get());
    evas_object_textblock_style_user_push(text.get(), user.get());
    evas_object_textblock_text_markup_set(text.get(), letters.c_str());
    evas_object_resize(text.get(), kWidth, kHeight);
    // Nothing else lays out a text that is not to be seen.
    evas_object_textblock_size_formatted_get(text.get(), nullptr, nullptr);
    m_texts.push_back(std::move(text));
}

} // namespace orbis::flux
