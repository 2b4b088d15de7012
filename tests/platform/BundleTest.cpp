#include "StoreFixture.h"

#include "app.h"
#include "bundle.h"

#include <cstdlib>

namespace {

bundle* import(Words words)
{
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    return bundle_import_from_argv(static_cast<int>(words.size()), pointers.data());
}

} // namespace

TEST(ABundle, GoesThroughArgumentsUnchanged)
{
    bundle* b = import({"program", "LAUNCH_MODE=POPUP", "text=a=b c", "empty=", "LAUNCH_MODE=MENU"});
    EXPECT_EQ(bundle_add(b, "type", "X"), 0);
    EXPECT_EQ(bundle_add(b, "text", "new"), 0);
    for (const char* key : {"", "a=b", "=", static_cast<const char*>(nullptr)})
        EXPECT_EQ(bundle_add(b, key, "x"), -1);
    EXPECT_EQ(bundle_add(nullptr, "a", "x"), -1);
    EXPECT_EQ(bundle_add(b, "a", nullptr), -1);

    char** arguments = nullptr;
    const int count = bundle_export_to_argv(b, &arguments);
    ASSERT_EQ(count, 5);
    EXPECT_EQ(arguments[0], nullptr);
    EXPECT_EQ(Words(arguments + 1, arguments + count),
        (Words {"LAUNCH_MODE=MENU", "text=new", "empty=", "type=X"}));
    EXPECT_EQ(arguments[count], nullptr);
    EXPECT_EQ(bundle_get_val(b, "none"), nullptr);
    EXPECT_EQ(bundle_free(b), 0);
    char name[] = "caller's own";
    arguments[0] = name;
    bundle_free_exported_argv(count, &arguments);
    EXPECT_EQ(arguments, nullptr);
    EXPECT_EQ(bundle_free(nullptr), -1);
    EXPECT_EQ(bundle_export_to_argv(nullptr, &arguments), -1);
    bundle_free_exported_argv(0, nullptr);
}

TEST(ABundle, NamesTheArgumentsThatItSkips)
{
    testing::internal::CaptureStderr();
    bundle* b = import({"program", "--verbose", "=value", "good=1"});
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_STREQ(bundle_get_val(b, "good"), "1");
    EXPECT_EQ(bundle_get_val(b, ""), nullptr);
    EXPECT_NE(log.find("--verbose\n"), std::string::npos);
    EXPECT_NE(log.find("=value\n"), std::string::npos);
    EXPECT_EQ(log.find("good"), std::string::npos);
    bundle_free(b);
}

TEST(ABundle, IsCopiedIntoALaunchRequest)
{
    bundle* b = import({"program", "LAUNCH_MODE=POPUP"});
    app_control_h request = nullptr;
    ASSERT_EQ(app_control_create_request(b, &request), APP_ERROR_NONE);
    bundle_add(b, "LAUNCH_MODE", "changed");
    bundle_free(b);
    char* value = nullptr;
    EXPECT_EQ(app_control_get_extra_data(request, "absent", &value), APP_ERROR_KEY_NOT_FOUND);
    EXPECT_EQ(app_control_get_extra_data(request, nullptr, &value), APP_ERROR_INVALID_PARAMETER);
    EXPECT_EQ(app_control_get_extra_data(nullptr, "LAUNCH_MODE", &value), APP_ERROR_INVALID_PARAMETER);
    EXPECT_EQ(app_control_get_extra_data(request, "LAUNCH_MODE", nullptr), APP_ERROR_INVALID_PARAMETER);
    ASSERT_EQ(app_control_get_extra_data(request, "LAUNCH_MODE", &value), APP_ERROR_NONE);
    EXPECT_STREQ(value, "POPUP");
    std::free(value);
    EXPECT_EQ(app_control_destroy(request), APP_ERROR_NONE);
    EXPECT_EQ(app_control_destroy(nullptr), APP_ERROR_INVALID_PARAMETER);
    EXPECT_EQ(app_control_create_request(nullptr, nullptr), APP_ERROR_INVALID_PARAMETER);
}
