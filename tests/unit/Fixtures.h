// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What the cases stand on, with the journal and the toolkit, which every case uses.
#ifndef TESTS_FIXTURES_H
#define TESTS_FIXTURES_H

#include "Journal.h" // IWYU pragma: export
#include "Toolkit.h" // IWYU pragma: export
#include "UIManager.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

/// The toolkit, an empty settings store and an empty journal; afterwards no window is left.
class ToolkitTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    /// Shows the window that the case is about, and gives it the keys.
    void use(Evas_Object* window);
    const toolkit::PopupRecord* top() const { return toolkit::topPopup(m_window); }
    Evas_Object* focused() const { return elm_object_focused_object_get(m_window); }

    Evas_Object* m_window = nullptr; ///< borrowed
};

/// A window with the styled widgets' manager and nothing on it.
class WindowTest : public ToolkitTest {
protected:
    void SetUp() override;
    void TearDown() override;

    /// A popup with buttons of these labels, on top of what is there.
    Evas_Object* popup(std::initializer_list<const char*> labels);
    static Evas_Object* button(const Evas_Object* popup, int slot);
    static void show(Evas_Object* popup);
};

/// What the manager can be asked to show; Nothing hides what is up.
enum class Kind { Pin, NoNetwork, Terms, Networks, NoSignIn, NetworkTest, SignIn, Owned, Guide, Nothing };

/// The application's window and manager, without the bus.
class ManagerTest : public ToolkitTest {
protected:
    void SetUp() override;
    void TearDown() override;

    /// @param name  the phone's, the network's and the account's. @return what the manager answers
    int request(Kind kind, std::string name = "Anna");

    std::unique_ptr<TesselUI::UIManager> m_manager;
};

/// The whole application on the private bus, where there is no daemon that would answer it.
class ApplicationTest : public ToolkitTest {
protected:
    void TearDown() override;
    /// Up to the point where it has told the daemon that it is there.
    void start();
};

/// @return the text of a message id in the language of the tests; the id's being untranslated is a failure
std::string text(const char* id);

/// @return the number that the key holds, or "none"
std::string setting(const char* key);

#endif
