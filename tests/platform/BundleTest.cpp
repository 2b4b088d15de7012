// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "StoreFixture.h"

#include "bundle.h"

TEST(ABundle, NamesWhatItSkipsAndRefusesWhatIsNoKey)
{
    Words words {"program", "text=a=b c", "--verbose", "=value", "LAUNCH_MODE=POPUP", "LAUNCH_MODE=MENU"};
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    testing::internal::CaptureStderr();
    bundle* b = bundle_import_from_argv(static_cast<int>(words.size()), pointers.data());
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_NE(log.find("--verbose\n"), std::string::npos);
    EXPECT_NE(log.find(" =value\n"), std::string::npos);
    EXPECT_EQ(log.find("text"), std::string::npos) << "only what is skipped is named";
    EXPECT_STREQ(bundle_get_val(b, "LAUNCH_MODE"), "MENU") << "the last one counts";
    EXPECT_EQ(bundle_add(b, "text", "new"), 0);
    for (const char* key : {"", "a=b", "=", static_cast<const char*>(nullptr)})
        EXPECT_EQ(bundle_add(b, key, "x"), -1);
    EXPECT_EQ(bundle_get_val(b, ""), nullptr);
    char** arguments = nullptr;
    const int count = bundle_export_to_argv(b, &arguments);
    ASSERT_EQ(count, 3);
    EXPECT_EQ(arguments[0], nullptr);
    EXPECT_EQ(Words(arguments + 1, arguments + count), (Words {"text=new", "LAUNCH_MODE=MENU"}));
    EXPECT_EQ(arguments[count], nullptr);
    bundle_free_exported_argv(count, &arguments);
    bundle_free(b);
}
