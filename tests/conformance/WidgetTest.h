// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A window with the styled widgets' manager and nothing on it.
#ifndef TESTS_WIDGET_TEST_H
#define TESTS_WIDGET_TEST_H

#include "Canvas.h" // IWYU pragma: export

#include <gtest/gtest.h>
#include <initializer_list>
#include <map>
#include <vector>

class WidgetTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    /// A popup with buttons of these labels, on top of what is there.
    Evas_Object* popup(std::initializer_list<const char*> labels);
    /// @return the button that popup() put there
    Evas_Object* button(const Evas_Object* popup, size_t slot) const { return m_buttons.at(popup).at(slot); }
    Evas_Object* focused() const { return elm_object_focused_object_get(m_window); }
    static void show(Evas_Object* popup);

    Evas_Object* m_window = nullptr; ///< borrowed; null once it was deleted

private:
    std::map<const Evas_Object*, std::vector<Evas_Object*>> m_buttons;
};

#endif
