// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "bundle.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

struct bundle {
    std::vector<std::pair<std::string, std::string>> parameters; ///< in the order in which keys came
};

namespace {

bool isKey(std::string_view key)
{
    return !key.empty() && key.find('=') == std::string_view::npos;
}

auto findParameter(bundle& b, std::string_view key)
{
    return std::find_if(b.parameters.begin(), b.parameters.end(),
        [=](const auto& parameter) { return parameter.first == key; });
}

void setParameter(bundle& b, std::string_view key, std::string_view value)
{
    const auto known = findParameter(b, key);
    if (known == b.parameters.end())
        b.parameters.emplace_back(key, value);
    else
        known->second = value;
}

void import(bundle& b, int argc, char** argv)
{
    for (int i = 1; argv && i < argc && argv[i]; ++i) {
        const std::string_view argument = argv[i];
        const size_t equals = argument.find('=');
        if (equals == std::string_view::npos || equals == 0)
            fprintf(stderr, "%s: argument skipped, not \"key=value\": %s\n", argv[0] ? argv[0] : "", argv[i]);
        else
            setParameter(b, argument.substr(0, equals), argument.substr(equals + 1));
    }
}

} // namespace

bundle* bundle_import_from_argv(int argc, char** argv)
{
    try {
        auto made = std::make_unique<bundle>();
        import(*made, argc, argv);
        return made.release();
    } catch (const std::exception&) {
        return nullptr;
    }
}

int bundle_add(bundle* b, const char* key, const char* value)
{
    if (!b || !key || !value || !isKey(key))
        return -1;
    try {
        setParameter(*b, key, value);
        return 0;
    } catch (const std::exception&) {
        return -1;
    }
}

const char* bundle_get_val(bundle* b, const char* key)
{
    if (!b || !key)
        return nullptr;
    const auto found = findParameter(*b, key);
    return found == b->parameters.end() ? nullptr : found->second.c_str();
}

int bundle_export_to_argv(bundle* b, char*** argv)
{
    if (!b || !argv || b->parameters.size() > INT_MAX - 2)
        return -1;
    const int count = static_cast<int>(b->parameters.size()) + 1;
    auto** arguments = static_cast<char**>(std::calloc(static_cast<size_t>(count) + 1, sizeof(char*)));
    for (int i = 1; arguments && i < count; ++i) {
        const auto& [key, value] = b->parameters[static_cast<size_t>(i) - 1];
        arguments[i] = static_cast<char*>(std::malloc(key.size() + value.size() + 2));
        if (!arguments[i]) {
            bundle_free_exported_argv(i, &arguments);
            break;
        }
        char* end = std::copy(key.begin(), key.end(), arguments[i]);
        *end++ = '=';
        *std::copy(value.begin(), value.end(), end) = '\0';
    }
    if (!arguments)
        return -1;
    *argv = arguments;
    return count;
}

void bundle_free_exported_argv(int argc, char*** argv)
{
    if (!argv || !*argv)
        return;
    for (int i = 1; i < argc; ++i)
        std::free((*argv)[i]);
    std::free(*argv);
    *argv = nullptr;
}

int bundle_free(bundle* b)
{
    delete b;
    return b ? 0 : -1;
}
