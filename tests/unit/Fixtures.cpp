// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Fixtures.h"

#include "Paths.h"
#include "TesselUI.h"
#include "elm_flux.h"
#include "vconf.h"

#include <algorithm>
#include <cstdlib>
#include <libintl.h>
#include <vector>

using toolkit::settle;

namespace {

void emptyStore()
{
    std::vector<std::string> keys;
    vconf_list(
        "", [](const char* key, void* data) { static_cast<std::vector<std::string>*>(data)->push_back(key); },
        &keys);
    for (const std::string& key : keys)
        vconf_unset(key.c_str());
}

} // namespace

void ToolkitTest::SetUp()
{
    emptyStore();
    settle();
    journal::clear();
}

void ToolkitTest::TearDown()
{
    toolkit::s_onExit = nullptr;
    settle();
    EXPECT_TRUE(toolkit::windows().empty());
}

void ToolkitTest::use(Evas_Object* window)
{
    m_window = window;
    evas_object_show(window);
    toolkit::focusWindow(window);
}

void WindowTest::SetUp()
{
    ToolkitTest::SetUp();
    Evas_Object* window = elm_win_add(nullptr, "test", ELM_WIN_BASIC);
    ASSERT_TRUE(elm_flux_manager_init(window));
    use(window);
    journal::clear();
}

void WindowTest::TearDown()
{
    elm_flux_manager_fini();
    evas_object_del(m_window);
    ToolkitTest::TearDown();
}

Evas_Object* WindowTest::popup(std::initializer_list<const char*> labels)
{
    Evas_Object* popup = elm_flux_popup_add(m_window);
    elm_flux_popup_content_set(popup, elm_flux_textbox_add(popup), 800, 200);
    int slot = 0;
    for (const char* label : labels) {
        Evas_Object* button = elm_flux_button_add(popup);
        elm_flux_button_text_set(button, label);
        EXPECT_TRUE(elm_flux_popup_button_set(popup, button, slot++));
    }
    return popup;
}

Evas_Object* WindowTest::button(const Evas_Object* popup, int slot)
{
    const auto* record = orbis::flux::recordOf<toolkit::PopupRecord>(popup);
    return record ? record->buttons.at(static_cast<size_t>(slot)) : nullptr;
}

void WindowTest::show(Evas_Object* popup)
{
    evas_object_show(popup);
    settle();
}

void ManagerTest::SetUp()
{
    ToolkitTest::SetUp();
    TesselUI::CTesselUI::createInstance();
    m_manager = std::make_unique<TesselUI::UIManager>();
    m_manager->createWindow();
    use(toolkit::windows().at(0));
    journal::clear();
}

void ManagerTest::TearDown()
{
    m_manager.reset();
    TesselUI::CTesselUI::destroyInstance();
    ToolkitTest::TearDown();
}

int ManagerTest::request(Kind kind, std::string name)
{
    std::string other = "sso";
    switch (kind) {
    case Kind::Pin:
        return m_manager->showPinPopup(name, other = "0042");
    case Kind::NoNetwork:
        return m_manager->showFailedPopup(name);
    case Kind::Terms:
        return m_manager->showTncPopup();
    case Kind::Networks:
        return m_manager->showApListPopup();
    case Kind::NoSignIn:
        return m_manager->showFailedPopup(other);
    case Kind::NetworkTest:
        return m_manager->showNetworkTestPopup(name, name);
    case Kind::SignIn:
        return m_manager->showSSOLoginPopup(name, name);
    case Kind::Owned:
        return m_manager->showAfterPairingPopup();
    case Kind::Guide:
        vconf_set_str("memory/wizard/wizard_mode", "INITIAL_SETUP"); // in which it needs nothing else
        return m_manager->showGuidePopup(other);
    case Kind::Nothing:
        break;
    }
    return m_manager->hidePopup();
}

void ApplicationTest::start()
{
    TesselUI::CTesselUI::OnCreate(nullptr);
    ASSERT_TRUE(toolkit::runUntil([] { return journal::has("I End m_OnBusAcquired"); }));
    use(toolkit::windows().at(0));
}

void ApplicationTest::TearDown()
{
    TesselUI::CTesselUI::OnTerminate(nullptr);
    ToolkitTest::TearDown();
}

std::string text(const char* id)
{
    std::string translated = dgettext(TesselUI::kTextDomain, id);
    EXPECT_NE(translated, id);
    return translated;
}

std::string setting(const char* key)
{
    int number = 0;
    return vconf_get_int(key, &number) == VCONF_OK ? std::to_string(number) : "none";
}
