// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Popup requests as the daemon writes them, through the settings store.
#include "Fuzz.h"
#include "TesselUI.h"
#include "vconf.h"

void fuzz::tryInput(Input& input)
{
    TesselUI::CTesselUI::createInstance();
    std::string text = input.rest();
    text = text.substr(0, text.find('\0'));
    fuzz::demand(vconf_set_str(TesselUI::TESSEL_VCONF, text.c_str()) == VCONF_OK, "room");
    TesselUI::CTesselUI::m_OnMethodPopup(nullptr, nullptr);
    for (const char* member : {"page", "pin", "mobilename", "ssid"})
        TesselUI::CTesselUI::getInstance()->GetJsonData(member);
}
