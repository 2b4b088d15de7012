/// What the cases stand on, with the journal and the toolkit, which every case uses.
#ifndef TESTS_FIXTURES_H
#define TESTS_FIXTURES_H

#include "Journal.h" // IWYU pragma: export
#include "Simulator.h"
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
};

/// A window with the styled widgets' manager and nothing on it.
class WindowTest : public ToolkitTest {
protected:
    void SetUp() override;
    void TearDown() override;

    /// A popup with buttons of these labels, on top of what is there.
    Evas_Object* popup(std::initializer_list<const char*> labels);
    static Evas_Object* button(const Evas_Object* popup, int slot);
    Evas_Object* focused() const { return elm_object_focused_object_get(m_window); }
    void show(Evas_Object* popup);

    Evas_Object* m_window = nullptr;
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
    const toolkit::PopupRecord* top() const { return toolkit::topPopup(m_window); }
    Evas_Object* focused() const { return elm_object_focused_object_get(m_window); }

    Evas_Object* m_window = nullptr; ///< borrowed from the manager
    std::unique_ptr<TesselUI::UIManager> m_manager;
};

/// The whole application on the private bus, up to the point where it has told the daemon that it is there.
/// The daemon is a program of its own: the calls to it block the main loop.
class ApplicationTest : public ToolkitTest {
protected:
    void SetUp() override;
    void TearDown() override;
    void start();
    /// @return what the daemon was told since its start, once that is as much
    std::vector<std::string> told(size_t calls) const;

    std::unique_ptr<tv::Simulator> m_daemon;
    Evas_Object* m_window = nullptr; ///< set by start()
};

/// @return the text of a message id in the language of the tests; the id's being untranslated is a failure
std::string text(const char* id);

/// Takes a text that the caller has to free. @return "(null)" for none
std::string taken(char* text);

/// @return the number that the key holds, or "none"
std::string setting(const char* key);

#endif
