// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "app/Words.h"

#include "app/Catalogue.h"
#include "app/Language.h"
#include "names/Places.h"

namespace orbis::app {

namespace {

/// The catalogue of one language, kept until another is asked for.
struct Loaded {
    std::string language;
    std::string bytes; ///< empty when there is none that can be used
};

const std::string& catalogueOf(const std::string& language)
{
    static Loaded s_loaded;
    if (s_loaded.language == language)
        return s_loaded.bytes;
    s_loaded = {language, {}};
    for (const std::string& name : namesOfLanguage(language)) {
        if (lookAtCatalogue(names::kWordsFolder, name, names::kWordsFile, &s_loaded.bytes) == Found::Sound)
            break;
    }
    return s_loaded.bytes;
}

} // namespace

std::string wordsOf(const char* id, const std::vector<int>& numbers)
{
    std::string words = textOfCatalogue(catalogueOf(catalogueOfTexts()), id);
    if (words.empty())
        words = id;
    int place = 0;
    for (const int number : numbers) {
        const std::string placeholder = '%' + std::to_string(++place);
        if (const size_t at = words.find(placeholder); at != std::string::npos)
            words.replace(at, placeholder.size(), std::to_string(number));
    }
    return words;
}

} // namespace orbis::app
