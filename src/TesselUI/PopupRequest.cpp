// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Popup requests that the daemon writes as JSON into a settings key.

#include "PopupRequest.h"

#include "Bounded.h"
#include "Guard.h"
#include "Log.h"
#include "Requests.h"
#include "TesselUI.h"
#include "base/Handles.h"

#include <new>
#include <string>

namespace TesselUI {

bool parseRequest(std::string_view text, Json::Value& root)
{
    if (text.size() > kLongestRequest) {
        root = Json::Value();
        return false;
    }
    const Json::CharReaderBuilder builder;
    const std::unique_ptr<Json::CharReader> reader {builder.newCharReader()};
    std::string errors;
    try {
        return reader->parse(text.data(), text.data() + text.size(), &root, &errors);
    } catch (const std::bad_alloc&) {
        root = Json::Value();
        throw;
    } catch (const std::exception&) { // nested too deeply
        root = Json::Value();
        return false;
    }
}

std::string CTesselUI::GetJsonData(std::string key)
{
    LOGI("");
    // Only an object has members; a request of another shape is one that names nothing.
    const Json::Value value = m_root->isObject() ? (*m_root)[key] : Json::Value();
    if (value.isNull()) {
        LOGI("Data is empty %s", key.c_str());
        return {};
    }
    return value.isConvertibleTo(Json::stringValue) ? std::string(bounded(value.asString())) : std::string();
}

void CTesselUI::m_OnMethodPopup(keynode_t*, void*)
try {
    LOGI("");
    const base::MallocStr value {vconf_get_str(TESSEL_VCONF)};
    if (!value) {
        LOGE("No value in VCONF");
        return;
    }
    const std::string_view text = value.get();
    const std::string logged(bounded(text));
    LOGD("Vconf for POPUP TESSEL: [%s]", logged.c_str());
    CTesselUI* instance = getInstance();
    if (!instance)
        return;
    const bool parsed = parseRequest(text, *instance->m_root);
    LOGI("parsingSuccessful[%s]  root [%s] ", parsed ? "true" : "false", logged.c_str());
    if (parsed)
        instance->serveRequest(__func__);
} catch (...) {
    logCaught(__func__);
}

/// Shows what m_root asks for, if anything. @param function  whose lines these are
void CTesselUI::serveRequest(const char* function)
{
    const Request* request = requestOfPage(GetJsonData("page"));
    if (!request)
        return;
    LOGI_AS(function, "%s", request->pageMatched);
    std::string arguments[2];
    for (int i = 0; i < 2; ++i) {
        if (request->members[i])
            arguments[i] = GetJsonData(request->members[i]);
    }
    const CTesselUI* shown = getInstance();
    if (shown && shown->m_pUIManager && request->call(*shown->m_pUIManager, arguments[0], arguments[1]) != 0)
        LOGI_AS(function, "%s", request->pageLine);
}

} // namespace TesselUI
