/// A window on which the application's popups speak English.
#ifndef TESTS_PROGRESS_POPUP_TEST_H
#define TESTS_PROGRESS_POPUP_TEST_H

#include "Fixtures.h"
#include "Paths.h"

#include <libintl.h>
#include <memory>
#include <string>
#include <vector>

/// What the program and the case logged; the toolkit complains in between about the clock that stands still.
inline std::vector<std::string> programLines()
{
    std::vector<std::string> result;
    for (std::string& line : journal::lines()) {
        if (line.size() > 1 && line[1] == ' ')
            result.push_back(std::move(line));
    }
    return result;
}

/// The fixture of one popup, made by the case or by make().
template <typename Popup>
class PopupTest : public WindowTest {
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        bindtextdomain(TesselUI::kTextDomain, TesselUI::kLocaleFolder);
    }
    void TearDown() override
    {
        m_popup.reset();
        WindowTest::TearDown();
    }

    std::string focusedLabel() const
    {
        const char* label = focused() ? elm_object_text_get(focused()) : nullptr;
        return label ? label : "none";
    }
    /// How many popups and buttons there are, hidden or not.
    int left() const
    {
        int count = 0;
        for (const Evas_Object* object : toolkit::objects(m_window)) {
            const std::string type = evas_object_type_get(object);
            count += orbis::flux::recordOf<toolkit::PopupRecord>(object) || type == "elm_button" ? 1 : 0;
        }
        return count;
    }
    /// Deletes the popup in the clicks of @p button, after its own handler.
    void deleteInClickOf(Evas_Object* button)
    {
        const auto onClick = [](void* owner, Evas_Object*, void*) {
            static_cast<std::unique_ptr<Popup>*>(owner)->reset();
        };
        evas_object_smart_callback_priority_add(
            button, "clicked", EVAS_CALLBACK_PRIORITY_AFTER, onClick, &m_popup);
    }

    std::unique_ptr<Popup> m_popup;
};

#endif
