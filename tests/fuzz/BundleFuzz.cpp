// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Launch parameters: in from a command line, out again, and in once more.
#include "Fuzz.h"
#include "bundle.h"

#include <map>
#include <vector>

void fuzz::tryInput(Input& input)
{
    std::vector<std::string> words {"program"};
    while (!input.empty())
        words.push_back(input.text());
    std::vector<char*> given;
    std::map<std::string, std::string> expected;
    for (std::string& word : words) {
        const size_t equals = word.find('=');
        if (!given.empty() && equals != std::string::npos && equals > 0)
            expected[word.substr(0, equals)] = word.substr(equals + 1);
        given.push_back(word.data());
    }
    bundle* first = bundle_import_from_argv(static_cast<int>(given.size()), given.data());
    char** arguments = nullptr;
    const int count = bundle_export_to_argv(first, &arguments);
    fuzz::demand(count == static_cast<int>(expected.size()) + 1, "each parameter once");
    bundle* second = bundle_import_from_argv(count, arguments);
    for (bundle* one : {first, second}) {
        for (const auto& [key, value] : expected) {
            const char* held = bundle_get_val(one, key.c_str());
            fuzz::demand(held && value == held, "the last value counts", key);
        }
    }
    bundle_free_exported_argv(count, &arguments);
    bundle_free(first);
    bundle_free(second);
}
