/// Inside of the styled layout, for the other parts of the widget set.
#pragma once

#include <Elementary.h>

#include <vector>

namespace orbis::flux {

/// @return the styled layout around @p widget that no other styled layout holds; null when there is none
Evas_Object* outermostLayout(Evas_Object* widget);

/// @return the items of a styled layout, borrowed, first to last; none for another object
std::vector<Evas_Object*> layoutItems(const Evas_Object* layout);

} // namespace orbis::flux
