// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/TextFit.h"

#include "base/EflHandles.h"
#include "flux/Fitting.h"
#include "flux/Shortening.h"
#include "flux/Textbox.h"

#include <memory>

namespace orbis::flux {

namespace {

/// Higher than any text; of a text that does not fit the toolkit tells less.
constexpr int kMeasureHeight = 20000;

struct Extent {
    int width = 0;
    int height = 0;
};

/// A text in the style of a text box that is drawn nowhere.
class Measure {
public:
    /// @param size  of the letters, as the style has it; "" for the style's own
    Measure(const TextboxRecord& record, const std::string& size);

    /// @return what @p markup takes, in pixels, when it is @p width wide
    Extent of(const std::string& markup, int width) const;

private:
    base::ObjectPtr m_text;
};

Measure::Measure(const TextboxRecord& record, const std::string& size)
{
    const Evas_Object* edje = elm_layout_edje_get(record.object);
    const Evas_Object* shown = edje_object_part_object_get(edje, TextboxRecord::kPart);
    const Evas_Textblock_Style* group = shown ? evas_object_textblock_style_get(shown) : nullptr;
    if (!group)
        return;
    m_text.reset(evas_object_textblock_add(evas_object_evas_get(edje)));
    // The toolkit's own ellipsis would make everything fit. Only the style that is pushed last counts.
    const std::string whole = styleOf(record) + " ellipsis=-1.0" + (size.empty() ? "" : " font_size=" + size);
    const base::TextblockStylePtr usual {evas_textblock_style_new()};
    const base::TextblockStylePtr own {evas_textblock_style_new()};
    evas_textblock_style_set(usual.get(), evas_textblock_style_get(group));
    evas_textblock_style_set(own.get(), ("DEFAULT='" + whole + "'").c_str());
    evas_object_scale_set(m_text.get(), evas_object_scale_get(shown));
    evas_object_textblock_style_set(m_text.get(), usual.get());
    evas_object_textblock_style_user_push(m_text.get(), own.get());
}

Extent Measure::of(const std::string& markup, int width) const
{
    Extent extent;
    if (!m_text)
        return extent;
    evas_object_textblock_text_markup_set(m_text.get(), markup.c_str());
    evas_object_resize(m_text.get(), width, kMeasureHeight);
    evas_object_textblock_size_formatted_get(m_text.get(), &extent.width, &extent.height);
    return extent;
}

} // namespace

int naturalHeight(const TextboxRecord& record, int width)
{
    if (record.text.empty())
        return 0;
    const int height = Measure(record, "").of(record.markup, width).height;
    return height > 0 ? height + kSlack : 0;
}

std::string textThatFits(const TextboxRecord& record)
{
    Extent room;
    evas_object_geometry_get(record.object, nullptr, nullptr, &room.width, &room.height);
    if (record.markup.empty() || room.width <= 0 || room.height <= 0)
        return record.markup;
    const bool isKept = record.rule == ELM_FLUX_RESPONSIVE_KEEP;
    const Measure measure {record, isKept ? "" : themeData(record, "smallest")};
    const auto fits = [&](const std::string& markup) {
        const Extent extent = measure.of(markup, room.width);
        // Lines that wrap are as wide as there is room, but for the blanks at their ends.
        return (wraps(record) || extent.width <= room.width) && extent.height <= room.height;
    };
    if (fits(record.markup))
        return record.markup;
    const Shortening shortening {record.markup};
    size_t least = 1;
    for (size_t most = shortening.most(); least < most;) {
        const size_t middle = least + (most - least) / 2;
        if (fits(shortening.without(middle)))
            most = middle;
        else
            least = middle + 1;
    }
    return shortening.without(least);
}

} // namespace orbis::flux
