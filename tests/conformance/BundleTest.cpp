// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A launch's parameters, and texts that are put together.
#include "bundle.h"
#include "app.h"
#include "aul.h"
#include "base/Handles.h"
#include "string_util.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using Words = std::vector<std::string>;

TEST(ABundle, GoesThroughArgumentsAndIsCopiedIntoALaunchRequest)
{
    Words words {"program", "LAUNCH_MODE=POPUP", "text=a=b c", "empty="};
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    bundle* b = bundle_import_from_argv(static_cast<int>(words.size()), pointers.data());
    ASSERT_NE(b, nullptr);
    EXPECT_EQ(bundle_add(b, "type", "X"), 0);

    app_control_h request = nullptr;
    ASSERT_EQ(app_control_create_request(b, &request), APP_ERROR_NONE);
    char* value = nullptr;
    EXPECT_NE(app_control_get_extra_data(request, "absent", &value), APP_ERROR_NONE);
    EXPECT_EQ(value, nullptr) << "left alone";
    for (const auto& [key, expected] :
        {std::pair {"LAUNCH_MODE", "POPUP"}, {"text", "a=b c"}, {"type", "X"}}) {
        ASSERT_EQ(app_control_get_extra_data(request, key, &value), APP_ERROR_NONE);
        EXPECT_STREQ(base::MallocStr(value).get(), expected);
    }
    EXPECT_EQ(app_control_destroy(request), APP_ERROR_NONE);

    char** arguments = nullptr;
    const int count = bundle_export_to_argv(b, &arguments);
    EXPECT_EQ(bundle_free(b), 0);
    ASSERT_EQ(count, 5);
    char name[] = "the program's own";
    arguments[0] = name;
    EXPECT_EQ(Words(arguments + 1, arguments + count),
        (Words {"LAUNCH_MODE=POPUP", "text=a=b c", "empty=", "type=X"}));
    bundle_free_exported_argv(count, &arguments);
    EXPECT_EQ(arguments, nullptr);
}

TEST(ATemplate, TakesItsArgumentsInTheOrderOfTheLanguageAndFitsItsBuffer)
{
    char out[255];
    const auto combined = [&out](const char* format, const char* one, const char* two, int size) {
        std::memset(out, '#', sizeof out);
        CStringUtil::CombinateStrings(out, size, format, one, two, "", "");
        return std::string(out, strnlen(out, sizeof out));
    };
    EXPECT_EQ(combined("%1 and %2", "a", "b", 255), "a and b");
    EXPECT_EQ(combined("%2, %1", "a", "b", 255), "b, a");
    EXPECT_EQ(combined("no name", "a", "b", 255), "no name");
    EXPECT_EQ(combined("to %1", nullptr, nullptr, 255), "to ");
    EXPECT_EQ(combined("%1", "0123456789", "", 5), "0123");
    EXPECT_EQ(out[5], '#') << "beyond the buffer";
}

TEST(AnotherApplication, ThatDoesNotRunHasNoStatus)
{
    EXPECT_EQ(aul_app_is_running("org.orbis.none"), 0);
    EXPECT_LT(aul_app_get_status("org.orbis.none"), 0);
}
