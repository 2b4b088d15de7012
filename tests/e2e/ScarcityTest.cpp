/// The program when the machine has nothing left to give it.
#include "Cards.h"
#include "TvTest.h"

#include <algorithm>
#include <filesystem>

#include <sys/resource.h>

namespace {

class WithLittleLeft : public tv::TvTest {
protected:
    void SetUp() override
    {
        box.watchScreen();
        ASSERT_TRUE(box.settings.setText(tv::kWizardMode, "FIRST_RUN"));
        ASSERT_TRUE(box.start());
    }

    std::filesystem::path process() const { return "/proc/" + std::to_string(box.program->pid()); }

    /// Bounds what the program may have from now on. @return what was allowed before
    rlimit limit(__rlimit_resource resource, rlim_t bound) const
    {
        rlimit before {};
        rlimit now {};
        EXPECT_EQ(prlimit(box.program->pid(), resource, nullptr, &before), 0);
        now = before;
        now.rlim_cur = bound;
        EXPECT_EQ(prlimit(box.program->pid(), resource, &now, nullptr), 0);
        return before;
    }

    void expectPin()
    {
        ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
        ASSERT_TRUE(box.shows({tv::pinCard("Anna's phone", "0042")}));
    }
};

TEST_F(WithLittleLeft, NoDescriptorCostsNoMoreThanTheRequestsOfThatTime)
{
    expectPin();
    const auto open = std::distance(
        std::filesystem::directory_iterator(process() / "fd"), std::filesystem::directory_iterator());
    const rlimit before = limit(RLIMIT_NOFILE, static_cast<rlim_t>(open - 4));
    for (const tv::ShownRequest& request : tv::kRequests)
        EXPECT_TRUE(box.request(request.method, request.texts));
    ASSERT_TRUE(box.settings.setText(tv::kRequest, R"({"page":"tnc"})"));
    ASSERT_TRUE(tv::stays([&] { return box.program->running(); }, tv::Milliseconds(500)));

    limit(RLIMIT_NOFILE, before.rlim_cur);
    ASSERT_TRUE(box.settings.setText(tv::kRequest, R"({"page":"tnc"})"));
    EXPECT_TRUE(box.shows({tv::kTermsCard}));
    expectPin();
    display().key("Return");
    EXPECT_TRUE(endedByViewer(true));
}

TEST_F(WithLittleLeft, MemoryForAHugeRequestCostsThatRequestOnly)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer needs more addresses than any bound leaves";
#endif
    expectPin();
    const auto lines = tv::readLines(process() / "status");
    const auto size = std::find_if(
        lines.begin(), lines.end(), [](const std::string& line) { return line.rfind("VmSize:", 0) == 0; });
    ASSERT_NE(size, lines.end());
    constexpr rlim_t kSpare = rlim_t {24} << 20;
    limit(RLIMIT_AS, static_cast<rlim_t>(std::stoll(size->substr(7))) * 1024 + kSpare);
    const std::string huge(size_t {15} << 20, 'x');
    ASSERT_TRUE(
        box.settings.setText(tv::kRequest, R"({"page":"pin","mobilename":")" + huge + R"(","pin":"1"})"));
    ASSERT_TRUE(tv::stays([&] { return box.program->running(); }, tv::Milliseconds(1500)))
        << "a value that is too large ended the program";
    ASSERT_TRUE(box.settings.setText(tv::kRequest, R"({"page":"tnc"})"));
    EXPECT_TRUE(box.shows({tv::kTermsCard}));
    ASSERT_TRUE(box.setStartMode(100));
    EXPECT_TRUE(box.program->endsWith(0));
}

} // namespace
