// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Callbacks from C code and calls from outside when memory is short: each gives up by itself, the program
/// goes on.
#include "Fixtures.h"
#include "Process.h"
#include "TesselUI.h"
#include "elm_flux.h"
#include "vconf.h"

#include <cstdlib>
#include <glib.h>
#include <new>
#include <unistd.h>

namespace {

/// What happens to the allocations of a thread.
struct Plan {
    std::size_t least = 0; ///< bytes; smaller ones succeed
    int left = -1; ///< how many succeed before one fails; negative: all
    bool goesOn = false; ///< whether all that follow fail, too
    int failures = 0; ///< so far
};
thread_local Plan t_plan;

void* allocate(std::size_t size)
{
    if (t_plan.left < 0 || size < t_plan.least || t_plan.left-- > 0)
        return malloc(size > 0 ? size : 1);
    t_plan.left = t_plan.goesOn ? 0 : -1;
    ++t_plan.failures;
    return nullptr;
}

} // namespace

void* operator new(std::size_t size)
{
    if (void* memory = allocate(size))
        return memory;
    throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return allocate(size);
}

void operator delete(void* memory) noexcept
{
    free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    free(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept
{
    free(memory);
}

namespace {

using namespace TesselUI;

class ShortMemory : public ApplicationTest {
protected:
    void TearDown() override
    {
        t_plan = {};
        ApplicationTest::TearDown();
    }

    /// Lets the first large allocation of @p act fail, then the second, until none does.
    void failEach(const std::function<void()>& act)
    {
        constexpr std::size_t kLarge = 2000; // bytes; only texts from outside are as large
        int round = 0;
        do {
            t_plan = {kLarge, round++, false};
            act();
            t_plan.left = -1;
            ASSERT_LT(round, 200);
        } while (t_plan.failures > 0);
        EXPECT_GT(round, 2) << "nothing failed";
    }
};

TEST_F(ShortMemory, TakesARequestAndNothingElse)
{
    start();
    const std::string name(3000, 'n');
    const std::string json = R"({"page":"pin","pin":"0042","mobilename":")" + name + "\"}";
    vconf_set_str(TESSEL_VCONF, json.c_str());
    failEach([] { CTesselUI::m_OnMethodPopup(nullptr, nullptr); });

    const std::vector<std::string> environment {environ, environ + g_strv_length(environ)};
    const std::vector<std::string> call {"gdbus", "call", "--system", "-d", "com.norvale.orbis.tessel.ui",
        "-o", "/com/norvale/orbis/tessel/ui", "-m", "com.norvale.orbis.tessel.ui.ShowNetworkTest", name,
        name};
    failEach([&] {
        const tv::Process caller(call, environment);
        EXPECT_TRUE(toolkit::runUntil([&] { return !caller.running(); }));
        EXPECT_EQ(caller.output(), std::vector<std::string> {"(0,)"});
    });
    toolkit::settle();
    EXPECT_NE(top(), nullptr);
    EXPECT_TRUE(journal::has("E serve gave up: std::bad_alloc"));
    EXPECT_TRUE(journal::has("E m_OnMethodPopup gave up: std::bad_alloc"));
}

using ATextOfAWidget = WindowTest;

TEST_F(ATextOfAWidget, ThatThereIsNoMemoryForIsRefused)
{
    Evas_Object* popup = elm_flux_popup_add(m_window);
    Evas_Object* box = elm_flux_textbox_add(popup);
    Evas_Object* button = elm_flux_button_add(popup);
    Evas_Object* hint = elm_flux_object_tooltip_add(popup, popup);
    const std::string former = "The text before, longer than a string can hold internally";
    EXPECT_TRUE(elm_flux_textbox_text_set(box, former.c_str()));
    const std::string text(1000, 'x');
    t_plan = {0, 0, true};
    const bool taken[] = {elm_flux_textbox_text_set(box, text.c_str()) != 0,
        elm_flux_popup_title_set(popup, text.c_str()) != 0,
        elm_flux_button_text_set(button, text.c_str()) != 0,
        elm_flux_object_tooltip_text_set(hint, text.c_str()) != 0,
        elm_flux_textbox_align_set(box, ELM_FLUX_TEXTBOX_ALIGN_LEFT) != 0,
        elm_flux_textbox_add(popup) != nullptr};
    t_plan = {};
    EXPECT_EQ(std::count(std::begin(taken), std::end(taken), false), std::size(taken));
    EXPECT_EQ(orbis::flux::recordOf<toolkit::TextboxRecord>(box)->text, former);
    EXPECT_STREQ(elm_object_part_text_get(box, "elm.text"), former.c_str());
    EXPECT_TRUE(elm_flux_textbox_text_set(box, text.c_str()));
    evas_object_del(popup);
}

} // namespace
