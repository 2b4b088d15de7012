// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "WidgetTest.h"
#include "elm_flux.h"

void WidgetTest::SetUp()
{
    m_window = elm_win_add(nullptr, "test", ELM_WIN_BASIC);
    ASSERT_TRUE(elm_flux_manager_init(m_window));
    const auto onDeleted = [](void* data, Evas*, Evas_Object*, void*) {
        static_cast<WidgetTest*>(data)->m_window = nullptr;
    };
    evas_object_event_callback_add(m_window, EVAS_CALLBACK_DEL, onDeleted, this);
    evas_object_show(m_window);
    toolkit::focusWindow(m_window);
}

void WidgetTest::TearDown()
{
    elm_flux_manager_fini();
    if (m_window)
        evas_object_del(m_window);
    toolkit::settle();
    EXPECT_TRUE(toolkit::windows().empty());
}

Evas_Object* WidgetTest::popup(std::initializer_list<const char*> labels)
{
    Evas_Object* popup = elm_flux_popup_add(m_window);
    elm_flux_popup_content_set(popup, elm_flux_textbox_add(popup), 800, 200);
    int slot = 0;
    for (const char* label : labels) {
        Evas_Object* button = elm_flux_button_add(popup);
        elm_flux_button_text_set(button, label);
        EXPECT_TRUE(elm_flux_popup_button_set(popup, button, slot++));
        m_buttons[popup].push_back(button);
    }
    return popup;
}

void WidgetTest::show(Evas_Object* popup)
{
    evas_object_show(popup);
    toolkit::settle();
}
