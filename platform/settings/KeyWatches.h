/// The change callbacks of this process.
#ifndef ORBIS_KEY_WATCHES_H
#define ORBIS_KEY_WATCHES_H

#include "vconf.h"

namespace orbis {

/// See vconf_notify_key_changed(). @return false with errno on failure
bool addKeyWatch(const char* key, vconf_callback_fn callback, void* userData);

/// See vconf_ignore_key_changed().
bool removeKeyWatch(const char* key, vconf_callback_fn callback);

} // namespace orbis

#endif
