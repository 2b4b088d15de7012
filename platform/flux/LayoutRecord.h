// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Inside of the styled layout.
#pragma once

#include "elm_flux.h"
#include "flux/Record.h"

#include <vector>

namespace orbis::flux {

struct LayoutRecord {
    static constexpr const char* kKey = "orbis.flux.layout";

    /// The box outlives the record by a moment while the layout is being deleted.
    ~LayoutRecord() { elm_box_layout_set(box, nullptr, nullptr, nullptr); }

    Evas_Object* object = nullptr;
    Evas_Object* box = nullptr;
    Elm_Flux_Layout_Type type = ELM_FLUX_LAYOUT_VERTICAL;
    double gap = 0.0; ///< layout units, as the paddings
    double left = 0.0;
    double right = 0.0;
    double top = 0.0;
    double bottom = 0.0;
};

/// The size that an item was appended with, on the item itself.
struct ItemRecord {
    static constexpr const char* kKey = "orbis.flux.item";

    Evas_Object* object = nullptr;
    double width = 0.0; ///< layout units, as all: the screen's size may change
    double height = 0.0;
    double indent = 0.0; ///< from where lines begin, by the width of a spinner
    double indentGap = 0.0; ///< and by the gap behind it
    double shift = 0.0; ///< what is left empty above it
};

/// @return the items of a styled layout, borrowed, first to last; none for another object
inline std::vector<Evas_Object*> layoutItems(const Evas_Object* layout)
{
    std::vector<Evas_Object*> items;
    const auto* record = recordOf<LayoutRecord>(layout);
    Eina_List* children = record ? elm_box_children_get(record->box) : nullptr;
    void* child = nullptr;
    EINA_LIST_FREE(children, child)
    items.push_back(static_cast<Evas_Object*>(child));
    return items;
}

} // namespace orbis::flux
