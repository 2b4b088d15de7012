#include "StoreFixture.h"

#include "app.h"
#include "base/Handles.h"
#include "bundle.h"

TEST(ABundle, GoesThroughArgumentsAndIsCopiedIntoALaunchRequest)
{
    Words words {
        "program", "LAUNCH_MODE=POPUP", "text=a=b c", "--verbose", "=value", "empty=", "LAUNCH_MODE=MENU"};
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    testing::internal::CaptureStderr();
    bundle* b = bundle_import_from_argv(static_cast<int>(words.size()), pointers.data());
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_NE(log.find("--verbose\n"), std::string::npos);
    EXPECT_NE(log.find(" =value\n"), std::string::npos);
    EXPECT_EQ(log.find("text"), std::string::npos) << "only what is skipped is named";
    EXPECT_EQ(bundle_add(b, "type", "X"), 0);
    EXPECT_EQ(bundle_add(b, "text", "new"), 0);
    for (const char* key : {"", "a=b", "=", static_cast<const char*>(nullptr)})
        EXPECT_EQ(bundle_add(b, key, "x"), -1);
    EXPECT_EQ(bundle_get_val(b, ""), nullptr);

    char** arguments = nullptr;
    const int count = bundle_export_to_argv(b, &arguments);
    ASSERT_EQ(count, 5);
    EXPECT_EQ(arguments[0], nullptr);
    EXPECT_EQ(Words(arguments + 1, arguments + count),
        (Words {"LAUNCH_MODE=MENU", "text=new", "empty=", "type=X"}));
    EXPECT_EQ(arguments[count], nullptr);
    char name[] = "caller's own";
    arguments[0] = name;
    bundle_free_exported_argv(count, &arguments);
    EXPECT_EQ(arguments, nullptr);

    app_control_h request = nullptr;
    ASSERT_EQ(app_control_create_request(b, &request), APP_ERROR_NONE);
    bundle_add(b, "text", "changed");
    EXPECT_EQ(bundle_free(b), 0);
    char* value = nullptr;
    EXPECT_EQ(app_control_get_extra_data(request, "absent", &value), APP_ERROR_KEY_NOT_FOUND);
    ASSERT_EQ(app_control_get_extra_data(request, "text", &value), APP_ERROR_NONE);
    EXPECT_STREQ(base::MallocStr(value).get(), "new");
    EXPECT_EQ(app_control_destroy(request), APP_ERROR_NONE);
}
