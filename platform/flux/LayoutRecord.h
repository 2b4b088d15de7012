/// Inside of the styled layout.
#pragma once

#include "elm_flux.h"

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
    double indent = 0.0; ///< from where lines begin
    double shift = 0.0; ///< downwards
};

} // namespace orbis::flux
