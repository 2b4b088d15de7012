// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "TesselUI.h"

#include "BusReturn.h"
#include "Guard.h"
#include "Log.h"
#include "TesselDbusClient.h"
#include "TesselUIDbus.h"
#include "UIManager.h"

#include <Elementary.h>

#include <json/json.h>

#include <new>
#include <utility>

namespace TesselUI {

CTesselUI* CTesselUI::m_pInstance = nullptr;

CTesselUI::CTesselUI()
    : m_pDbusClient(nullptr)
    , m_pUIDbus(nullptr)
    , m_root(std::make_unique<Json::Value>())
{
    LOGI("START");
}

/// The service goes after the application's own reference to the UIManager: it holds the last one, so the
/// window and its popups go with it, while the client can still carry a message.
CTesselUI::~CTesselUI()
{
    m_busReturn.reset();
    m_root.reset();
    m_pUIManager.reset();
    delete std::exchange(m_pUIDbus, nullptr);
    delete std::exchange(m_pDbusClient, nullptr);
}

CTesselUI* CTesselUI::createInstance()
{
    LOGI("START");
    if (!m_pInstance) {
        m_pInstance = new (std::nothrow) CTesselUI();
        if (!m_pInstance) {
            LOGE("Instance Creation fail");
            elm_exit();
        }
    }
    LOGI("END");
    return m_pInstance;
}

CTesselUI* CTesselUI::getInstance()
{
    LOGI("START");
    if (!m_pInstance) {
        LOGE("Instance NULL, exit app");
        elm_exit();
    }
    return m_pInstance;
}

void CTesselUI::destroyInstance()
{
    LOGI("START");
    if (m_pInstance) {
        delete m_pInstance;
        m_pInstance = nullptr;
    }
    LOGI("END");
}

void CTesselUI::createWin()
{
    LOGI("START");
    connectAhead();
    m_pUIManager = std::make_shared<UIManager>();
    m_pUIManager->createWindow();
    makeClient();
}

bool CTesselUI::OnCreate(void*)
try {
    LOGI("In CTesselUI::OnCreate");
    m_pInstance = createInstance();
    if (!m_pInstance) {
        LOGE("m_pInstance is NULL....exiting application");
        elm_exit();
        return true;
    }
    LOGI("In CTesselUI::Instance created Successfully");
    m_pInstance->m_RegisterTesselVconf();
    m_pInstance->createWin();
    return true;
} catch (...) {
    logCaught(__func__);
    return true;
}

void CTesselUI::OnTerminate(void*)
try {
    LOGI("In CTesselUI::OnTerminate");
    if (m_pInstance)
        m_pInstance->m_DeRegisterTesselVconf();
    destroyInstance();
} catch (...) {
    logCaught(__func__);
}

void CTesselUI::OnPause(void*) { }

void CTesselUI::OnResume(void*) { }

void CTesselUI::OnService(app_control_h, void*)
{
    LOGI("In CTesselUI ::On Service ");
}

void CTesselUI::OnLanguage(void*)
{
    LOGI("OnLanguaged callback Changed Called");
}

} // namespace TesselUI
