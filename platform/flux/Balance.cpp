// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Balance.h"

#include "flux/TextMeasure.h"
#include "flux/TextboxRecord.h"

#include <algorithm>

namespace orbis::flux {

namespace {

bool isCentred(const TextboxRecord& record)
{
    return record.align == ELM_FLUX_TEXTBOX_ALIGN_CENTER
        || record.align == ELM_FLUX_TEXTBOX_ALIGN_LINE_CENTER;
}

} // namespace

bool hasStump(const Evas_Object* textblock)
{
    const std::vector<int> lines = lineWidths(textblock);
    return lines.size() > 1 && 2 * lines.back() < *std::max_element(lines.begin(), lines.end());
}

int balancingMargin(const TextboxRecord& record, const std::string& markup, int size)
{
    int all = 0;
    evas_object_geometry_get(record.object, nullptr, nullptr, &all, nullptr);
    if (!wraps(record) || !isCentred(record) || all <= 0)
        return 0;
    TextMeasure measure {record, TextMeasure::Breaks::BetweenWords};
    measure.setSize(size);
    const int height = measure.of(markup, all).height;
    if (!hasStump(measure.text()))
        return 0;
    const auto fits = [&](int width) {
        const Extent extent = measure.of(markup, width);
        return extent.width <= width && extent.height <= height;
    };
    if (!fits(all)) // a word is wider than the box
        return 0;
    int least = all / 2; // a text with a stump has at least two lines, and never gets as narrow
    int most = all;
    while (most - least > 2) {
        const int middle = (least + most) / 2;
        (fits(middle) ? most : least) = middle;
    }
    return (all - most) / 2;
}

} // namespace orbis::flux
