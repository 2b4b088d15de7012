/// Popup requests that the daemon writes as JSON into a settings key.

#include "PopupRequest.h"

#include "Bounded.h"
#include "Guard.h"
#include "Log.h"
#include "TesselUI.h"
#include "UIManager.h"
#include "base/Handles.h"

#include <new>
#include <stdexcept>
#include <string>

namespace TesselUI {

namespace {

/// One value of "page". The members are read in the order first, second; null: none. The last line is
/// logged when the manager showed nothing.
struct PageRow {
    const char* page;
    const char* matched;
    const char* first;
    const char* second;
    int (*call)(UIManager& manager, std::string& first, std::string& second);
    const char* line;
};

constexpr PageRow kPages[] = {
    {"mobileDetection", "Method Name matched to MobileDetection", "pin", nullptr,
        [](UIManager& m, std::string& pin, std::string&) { return m.showGuidePopup(pin); },
        "Mobile Guide PopupShown successfully"},
    {"pin", "Method Name matched to Pin Popup", "mobilename", "pin",
        [](UIManager& m, std::string& phone, std::string& pin) { return m.showPinPopup(phone, pin); },
        "Pin Popup Shown"},
    {"wifi", "Method Name matched to Wifi Popup", "mobilename", "ssid",
        [](UIManager& m, std::string& phone, std::string& ssid) {
            return m.showNetworkTestPopup(phone, ssid);
        },
        "Network Test Popup Shown"},
    {"sso", "Method Name matched to SSO Popup", "mobilename", "account",
        [](UIManager& m, std::string& phone, std::string& id) { return m.showSSOLoginPopup(phone, id); },
        "SSO login Popup Shown"},
    {"tnc", "Method Name matched to TnC Popup", nullptr, nullptr,
        [](UIManager& m, std::string&, std::string&) { return m.showTncPopup(); }, "TnC login Popup Shown"},
    {"success", "Method Name matched to Hide Popup", nullptr, nullptr,
        [](UIManager& m, std::string&, std::string&) { return m.hidePopup(); }, "Popup Hide"},
    {"disconnect", "Method Name matched to Failed Popup", nullptr, nullptr,
        [](UIManager& m, std::string& step, std::string&) { return m.showFailedPopup(step); },
        "Failed Popup Shown"},
};

} // namespace

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
    const Json::Value value = m_root.isObject() ? m_root[key] : Json::Value();
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
    const bool parsed = parseRequest(text, instance->m_root);
    LOGI("parsingSuccessful[%s]  root [%s] ", parsed ? "true" : "false", logged.c_str());
    if (parsed)
        instance->serveRequest();
} catch (...) {
    logCaught(__func__);
}

/// Shows what m_root asks for, if anything.
void CTesselUI::serveRequest()
{
    const std::string page = GetJsonData("page");
    for (const PageRow& row : kPages) {
        if (page != row.page)
            continue;
        LOGI("%s", row.matched);
        std::string first = row.first ? GetJsonData(row.first) : std::string();
        std::string second = row.second ? GetJsonData(row.second) : std::string();
        const CTesselUI* shown = getInstance();
        if (shown && shown->m_pUIManager && row.call(*shown->m_pUIManager, first, second) != 0)
            LOGI("%s", row.line);
        return;
    }
}

} // namespace TesselUI
