// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/TextFit.h"

#include "flux/Fitting.h"
#include "flux/Shortening.h"
#include "flux/TextMeasure.h"
#include "flux/TextboxRecord.h"

#include <algorithm>
#include <climits>
#include <cstdlib>

namespace orbis::flux {

namespace {

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
    TextMeasure m_measure;
    Extent m_room;
};

} // namespace

int naturalHeight(const TextboxRecord& record, int width)
{
    if (record.text.empty())
        return 0;
    const int height = TextMeasure(record).of(record.markup, width).height;
    return height > 0 ? height + kSlack : 0;
}

int leastHeight(const TextboxRecord& record, int width)
{
    TextMeasure measure {record};
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
