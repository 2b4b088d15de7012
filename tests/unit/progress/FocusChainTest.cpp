/// Which way the arrow keys lead among widgets in a chain.
#include "Common_Widget_Function.h"
#include "Fixtures.h"

namespace {

class AFocusChain : public WindowTest {
protected:
    using Chain = std::vector<Evas_Object*>;

    Chain buttons(size_t count)
    {
        Chain result;
        for (size_t i = 0; i < count; ++i)
            result.push_back(createButton(m_window, "default", nullptr, "", nullptr));
        return result;
    }
    /// Per button, where a direction leads: an index, or "-" for nowhere.
    static std::string leads(const Chain& chain, Elm_Focus_Direction direction)
    {
        std::string result;
        for (const Evas_Object* button : chain) {
            const Evas_Object* next = button ? elm_object_focus_next_object_get(button, direction) : nullptr;
            const auto found = std::find(chain.begin(), chain.end(), next);
            result += next && found != chain.end() ? std::to_string(found - chain.begin()) : "-";
        }
        return result;
    }
};

TEST_F(AFocusChain, LeadsRoundInItsTwoDirectionsOnly)
{
    struct Row {
        void (*chain)(Evas_Object**, int);
        Elm_Focus_Direction forward, backward, other, another;
    };
    const Row rows[] = {
        {set_focus_chain_up_down, ELM_FOCUS_DOWN, ELM_FOCUS_UP, ELM_FOCUS_LEFT, ELM_FOCUS_RIGHT},
        {set_focus_chain_left_right, ELM_FOCUS_RIGHT, ELM_FOCUS_LEFT, ELM_FOCUS_UP, ELM_FOCUS_DOWN},
    };
    const std::pair<std::string, std::string> expected[] = {
        {"0", "0"}, {"10", "10"}, {"120", "201"}, {"1230", "3012"}};
    for (const Row& row : rows) {
        for (const auto& [forward, backward] : expected) {
            Chain chain = buttons(forward.size());
            row.chain(chain.data(), static_cast<int>(chain.size()));
            EXPECT_EQ(leads(chain, row.forward), forward);
            EXPECT_EQ(leads(chain, row.backward), backward);
            EXPECT_EQ(leads(chain, row.other), std::string(chain.size(), '-'));
            EXPECT_EQ(leads(chain, row.another), std::string(chain.size(), '-'));
        }
    }
}

TEST_F(AFocusChain, LocksEachWidgetInItsTwoDirectionsOnly)
{
    Chain row = buttons(3);
    single_chain_set_focus_LEFTRIGHT(row.data(), 3);
    for (Elm_Focus_Direction direction : {ELM_FOCUS_LEFT, ELM_FOCUS_RIGHT})
        EXPECT_EQ(leads(row, direction), "012");
    for (Elm_Focus_Direction direction : {ELM_FOCUS_UP, ELM_FOCUS_DOWN})
        EXPECT_EQ(leads(row, direction), "---");
    single_chain_set_focus_DOWNUP(row.data(), 2);
    for (Elm_Focus_Direction direction : {ELM_FOCUS_UP, ELM_FOCUS_DOWN})
        EXPECT_EQ(leads(row, direction), "01-");
}

TEST_F(AFocusChain, SkipsGapsAndTakesNoCountBelowOne)
{
    for (auto* function : {set_focus_chain_up_down, set_focus_chain_left_right, single_chain_set_focus_DOWNUP,
             single_chain_set_focus_LEFTRIGHT}) {
        Chain chain = buttons(2);
        function(chain.data(), 0);
        function(chain.data(), -1);
        function(nullptr, 0);
        for (Elm_Focus_Direction direction : {ELM_FOCUS_UP, ELM_FOCUS_DOWN, ELM_FOCUS_LEFT, ELM_FOCUS_RIGHT})
            EXPECT_EQ(leads(chain, direction), "--");
    }
    Chain column = buttons(4);
    column[1] = nullptr;
    set_focus_chain_up_down(column.data(), 4);
    EXPECT_EQ(leads(column, ELM_FOCUS_DOWN), "--30");
    EXPECT_EQ(leads(column, ELM_FOCUS_UP), "3--2");
    Chain gaps(3, nullptr);
    single_chain_set_focus_LEFTRIGHT(gaps.data(), 3);
    set_focus_chain_left_right(gaps.data(), 3);
}

} // namespace
