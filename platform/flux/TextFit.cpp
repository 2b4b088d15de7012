// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/TextFit.h"

#include "base/EflHandles.h"
#include "flux/Fitting.h"
#include "flux/Shortening.h"
#include "flux/TextboxRecord.h"

#include <algorithm>
#include <climits>
#include <cstdlib>

namespace orbis::flux {

namespace {

/// Higher than any text; of a text that does not fit the toolkit tells less.
constexpr int kMeasureHeight = 20000;

struct Extent {
    int width = 0;
    int height = 0;
};

/// @return the scale that a part of @p edje has once that is laid out again
double scaleOf(const Evas_Object* edje)
{
    const double own = edje_object_scale_get(edje);
    return own > 0 ? own : edje_scale_get();
}

/// A text in the style of a text box that is drawn nowhere.
class Measure {
public:
    explicit Measure(const TextboxRecord& record);

    /// @param size  of the letters; 0 for the style's own
    void setSize(int size);

    /// @return what @p markup takes, in pixels, when it is @p width wide
    Extent of(const std::string& markup, int width) const;

private:
    std::string m_style; ///< of the text box
    base::ObjectPtr m_text;
};

Measure::Measure(const TextboxRecord& record)
    : m_style(styleOf(record))
{
    const Evas_Object* edje = elm_layout_edje_get(record.object);
    const Evas_Object* shown = edje_object_part_object_get(edje, TextboxRecord::kPart);
    const Evas_Textblock_Style* group = shown ? evas_object_textblock_style_get(shown) : nullptr;
    if (!group)
        return;
    m_text.reset(evas_object_textblock_add(evas_object_evas_get(edje)));
    const base::TextblockStylePtr usual {evas_textblock_style_new()};
    evas_textblock_style_set(usual.get(), evas_textblock_style_get(group));
    evas_object_scale_set(m_text.get(), scaleOf(edje));
    evas_object_textblock_style_set(m_text.get(), usual.get());
    setSize(0);
}

void Measure::setSize(int size)
{
    if (!m_text)
        return;
    const base::TextblockStylePtr own {evas_textblock_style_new()};
    evas_textblock_style_set(own.get(), userStyle(m_style, size).c_str());
    evas_object_textblock_style_user_pop(m_text.get());
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

int sizeIn(const TextboxRecord& record, const char* name)
{
    return atoi(themeData(record, name).c_str());
}

/// Finds the text for a box.
class Fit {
public:
    Fit(const TextboxRecord& record, const Extent& room)
        : m_record(record)
        , m_measure(record)
        , m_room(room)
    {
    }

    FittedText run()
    {
        const std::string& whole = m_record.markup;
        if (fits(whole, m_room.width))
            return {whole, 0};
        const int smallest = sizeIn(m_record, "smallest");
        const int largest = sizeIn(m_record, "largest");
        if (m_record.rule == ELM_FLUX_RESPONSIVE_KEEP || smallest <= 0 || smallest >= largest)
            return {shortened(), 0};
        m_measure.setSize(smallest);
        if (!fits(whole, mostWidth()))
            return {shortened(), smallest};
        return {whole, largestBetween(smallest, largest)};
    }

private:
    /// Lines that wrap may be wider than there is room by the blanks at their ends, which is no reason to
    /// cut.
    int mostWidth() const { return wraps(m_record) ? INT_MAX : m_room.width; }

    bool fits(const std::string& markup, int mostWidth) const
    {
        const Extent extent = m_measure.of(markup, m_room.width);
        return extent.width <= mostWidth && extent.height <= m_room.height;
    }

    /// @param fitting,tooLarge  sizes of letters
    int largestBetween(int fitting, int tooLarge)
    {
        while (tooLarge - fitting > 1) {
            const int middle = (fitting + tooLarge) / 2;
            m_measure.setSize(middle);
            (fits(m_record.markup, m_room.width) ? fitting : tooLarge) = middle;
        }
        return fitting;
    }

    /// In a place that is lower than its letters a text is still one line.
    std::string shortened()
    {
        const Shortening shortening {m_record.markup};
        const std::string shortest = shortening.without(shortening.most());
        m_room.height = std::max(m_room.height, m_measure.of(shortest, m_room.width).height);
        if (fits(m_record.markup, mostWidth()))
            return m_record.markup;
        size_t least = 1;
        for (size_t most = shortening.most(); least < most;) {
            const size_t middle = least + (most - least) / 2;
            if (fits(shortening.without(middle), mostWidth()))
                most = middle;
            else
                least = middle + 1;
        }
        return shortening.without(least);
    }

    const TextboxRecord& m_record;
    Measure m_measure;
    Extent m_room;
};

} // namespace

int naturalHeight(const TextboxRecord& record, int width)
{
    if (record.text.empty())
        return 0;
    const int height = Measure(record).of(record.markup, width).height;
    return height > 0 ? height + kSlack : 0;
}

int leastHeight(const TextboxRecord& record, int width)
{
    Measure measure {record};
    measure.setSize(sizeIn(record, "smallest"));
    const int height = measure.of(record.markup, width).height;
    return height > 0 ? height + kSlack : 0;
}

FittedText textThatFits(const TextboxRecord& record)
{
    Extent room;
    evas_object_geometry_get(record.object, nullptr, nullptr, &room.width, &room.height);
    if (record.markup.empty() || room.width <= 0 || room.height <= 0)
        return {record.markup, 0};
    return Fit(record, room).run();
}

} // namespace orbis::flux
