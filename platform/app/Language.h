/// The language of the texts.
#pragma once

namespace orbis::app {

/// Applies the setting "db/menu_widget/language" (for instance "de_DE") to the message catalogues, to the
/// C library's locale and to the toolkit's text direction. English is the fallback for every text. With the
/// setting missing the environment's own language counts.
void applyLanguage();

} // namespace orbis::app
