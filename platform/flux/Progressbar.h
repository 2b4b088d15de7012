/// Inside of the spinner, for the other parts of the widget set.
#pragma once

#include <Elementary.h>

namespace orbis::flux {

/// @return whether @p object, nullable, is a spinner
bool isSpinner(const Evas_Object* object);

} // namespace orbis::flux
