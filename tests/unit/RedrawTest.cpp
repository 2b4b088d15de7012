/// What is drawn again while nothing happens: a television's processor is slow, and the film behind has to
/// run.
#include "Fixtures.h"

namespace {

using toolkit::Box;

/// Longer than a popup's motion, seconds.
constexpr double kAppearing = 0.5;

class APopupThatIsLeftAlone : public ManagerTest {
protected:
    void TearDown() override
    {
        evas_event_callback_del_full(canvas(), EVAS_CALLBACK_RENDER_POST, on_rendered, this);
        ManagerTest::TearDown();
    }

    Evas* canvas() const { return evas_object_evas_get(m_window); }

    /// @return what is drawn within these seconds, after the popup has appeared
    std::vector<Box> drawnIn(double seconds)
    {
        run(kAppearing);
        evas_event_callback_add(canvas(), EVAS_CALLBACK_RENDER_POST, on_rendered, this);
        run(seconds);
        return m_drawn;
    }

private:
    /// Of real time: the canvas draws in a thread of its own.
    static void run(double seconds)
    {
        toolkit::runUntil([] { return false; }, seconds);
    }

    static void on_rendered(void* data, Evas*, void* eventInfo)
    {
        const auto* rendered = static_cast<Evas_Event_Render_Post*>(eventInfo);
        const Eina_List* node = nullptr;
        void* area = nullptr;
        EINA_LIST_FOREACH(rendered ? rendered->updated_area : nullptr, node, area)
        {
            const auto* box = static_cast<Eina_Rectangle*>(area);
            static_cast<APopupThatIsLeftAlone*>(data)->m_drawn.push_back({box->x, box->y, box->w, box->h});
        }
    }

    std::vector<Box> m_drawn;
};

TEST_F(APopupThatIsLeftAlone, IsNotDrawnAgainWhileItsSecondsPass)
{
    std::string phone = "Anna";
    std::string pin = "0427";
    m_manager->showPinPopup(phone, pin);
    toolkit::focusWindow(m_window);
    EXPECT_EQ(drawnIn(2.2), std::vector<Box> {});
}

TEST_F(APopupThatIsLeftAlone, TurnsItsSpinnerWithinTheSpinnersOwnBox)
{
    m_manager->showNetworkTestPopup("Anna", "Lakeside");
    toolkit::focusWindow(m_window);
    Box spinner {};
    for (Evas_Object* object : toolkit::objects(m_window)) {
        if (evas_object_data_get(object, "orbis.flux.progressbar"))
            spinner = toolkit::boxOf(object);
    }
    const auto drawn = drawnIn(1.5);
    EXPECT_GT(drawn.size(), 10U) << "the spinner stands still";
    for (const Box& box : drawn)
        EXPECT_TRUE(box.x >= spinner.x && box.y >= spinner.y && box.x + box.width <= spinner.x + spinner.width
            && box.y + box.height <= spinner.y + spinner.height)
            << box << " is drawn, the spinner is " << spinner;
}

} // namespace
