// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "app.h"
#include "base/Handles.h"

#include <cstring>
#include <new>
#include <utility>

namespace {

using BundlePtr = base::CHandle<bundle, bundle_free>;

/// @return null when memory is short
BundlePtr copyOf(bundle* b)
{
    if (!b)
        return BundlePtr(bundle_import_from_argv(0, nullptr));
    char** arguments = nullptr;
    const int count = bundle_export_to_argv(b, &arguments);
    if (count < 0)
        return nullptr;
    BundlePtr copy(bundle_import_from_argv(count, arguments));
    bundle_free_exported_argv(count, &arguments);
    return copy;
}

} // namespace

struct app_control {
    BundlePtr parameters;
};

int app_control_create_request(bundle* b, app_control_h* request)
{
    if (!request)
        return APP_ERROR_INVALID_PARAMETER;
    BundlePtr parameters = copyOf(b);
    auto* made = parameters ? new (std::nothrow) app_control {std::move(parameters)} : nullptr;
    if (!made)
        return APP_ERROR_OUT_OF_MEMORY;
    *request = made;
    return APP_ERROR_NONE;
}

int app_control_get_extra_data(app_control_h request, const char* key, char** value)
{
    if (!request || !key || !value)
        return APP_ERROR_INVALID_PARAMETER;
    const char* found = bundle_get_val(request->parameters.get(), key);
    if (!found)
        return APP_ERROR_KEY_NOT_FOUND;
    char* copy = strdup(found);
    if (!copy)
        return APP_ERROR_OUT_OF_MEMORY;
    *value = copy;
    return APP_ERROR_NONE;
}

int app_control_destroy(app_control_h request)
{
    delete request;
    return request ? APP_ERROR_NONE : APP_ERROR_INVALID_PARAMETER;
}
