// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The language of the texts.
#pragma once

#include <string>
#include <vector>

namespace orbis::app {

/// Applies the setting "db/menu_widget/language" (for instance "de_DE") to the message catalogues, to the
/// C library's locale and to the toolkit's text direction. English is the fallback for every text. With the
/// setting missing the environment's own language counts. Once the application has bound a catalogue, damaged
/// ones are left out, and each is named once in the log.
void applyLanguage();

/// Looks at the catalogues that the language needs. To be called when the application has bound its folder,
/// and before a text is asked for.
void checkCatalogues();
/// The setting was changed: applies it, unless a LanguageHold lives; then once the last of them is gone.
void changeLanguage();

/// Applies a change that waited, unless it still has to.
void applyWaitingLanguage();

/// Keeps the texts' language and direction while it lives: what the viewer has before him stays in one.
class LanguageHold {
public:
    LanguageHold();
    ~LanguageHold();
    LanguageHold(const LanguageHold&) = delete;
    LanguageHold& operator=(const LanguageHold&) = delete;
};

/// @return the language of the catalogue that the application's texts come from, for instance "pt-br";
/// English where the viewer's language has none. Before the application has bound a catalogue, what was asked
/// for.
std::string languageOfTexts();

/// @return the same as the name of that catalogue's folder, for instance "pt_BR"
std::string catalogueOfTexts();

/// What a look at a file that should be a catalogue may find.
enum class Found { Missing, Sound, Damaged };

/// Looks at the catalogue of @p language, the file @p name below @p folder. One that is damaged is named in
/// the log, once.
/// @param bytes  nullable; gets the bytes of one that is sound
Found lookAtCatalogue(const std::string& folder, const std::string& language, const std::string& name,
    std::string* bytes = nullptr);

/// @return the names under which a catalogue of @p language is looked for, that one first
std::vector<std::string> namesOfLanguage(const std::string& language);

} // namespace orbis::app
