// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What a popup may not cost.
#include "Fixtures.h"
#include "vconf.h"

#include <dlfcn.h>
#include <string>

namespace {

int s_fontSearches = 0;
int s_shapedTexts = 0;

template <typename Function>
Function* original(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

// The toolkit finds these before the libraries' own, whose types do not matter here.
#define BEFORE_LIBRARY extern "C" __attribute__((visibility("default")))

BEFORE_LIBRARY void* FcFontSort(void* config, void* pattern, int trims, void** letters, void* result)
{
    ++s_fontSearches;
    return original<decltype(FcFontSort)>("FcFontSort")(config, pattern, trims, letters, result);
}

BEFORE_LIBRARY void hb_shape(void* font, void* buffer, const void* features, unsigned int count)
{
    ++s_shapedTexts;
    original<decltype(hb_shape)>("hb_shape")(font, buffer, features, count);
}

namespace {

/// The application's popups.
class ACost : public ManagerTest {
protected:
    void SetUp() override
    {
        ManagerTest::SetUp();
        toolkit::advance(1); // what is made for the next popup when nothing is to be done
    }

    /// Shows a popup and has it drawn, and hides it.
    void showAndHide(Kind kind)
    {
        request(kind);
        toolkit::settle();
        request(Kind::Nothing);
        toolkit::settle();
    }

    /// @return the size of the letters of the popup's text that begins so, 0 for that of its kind
    int sizeOf(const std::string& beginning) const
    {
        for (const auto* box : toolkit::shown<toolkit::TextboxRecord>(m_window)) {
            if (box->text.compare(0, beginning.size(), beginning) == 0)
                return box->place.size;
        }
        return -1;
    }
};

TEST_F(ACost, OfFontsIsPaidOnceAndNotByTheRequest)
{
    s_fontSearches = 0;
    showAndHide(Kind::Pin); // the very first
    EXPECT_EQ(s_fontSearches, 0) << "the fonts were not looked for ahead";
    toolkit::advance(3);
    s_shapedTexts = 0;
    request(Kind::Pin);
    EXPECT_EQ(s_shapedTexts, 0) << "texts are laid out before the request is answered";
    toolkit::settle();
    EXPECT_LT(s_shapedTexts, 12) << "the PIN is fitted each time";
    EXPECT_GT(s_shapedTexts, 0) << "the count counts nothing";
    EXPECT_EQ(s_fontSearches, 0) << "the fonts of the former popup were forgotten";
}

TEST_F(ACost, OfShrinkingIsPaidWhereATextDoesNotFit)
{
    request(Kind::NetworkTest, "Home");
    toolkit::settle();
    const std::string beginning = toolkit::shown<toolkit::TextboxRecord>(m_window).back()->text.substr(0, 4);
    EXPECT_EQ(sizeOf(beginning), 0);
    request(Kind::NetworkTest, std::string(400, 'W'));
    toolkit::settle();
    EXPECT_EQ(sizeOf(beginning), 24) << "a text that does not fit is not shrunk";
}

} // namespace
