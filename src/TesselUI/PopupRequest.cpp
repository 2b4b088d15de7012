/// Popup requests that the daemon writes as JSON into a settings key.

#include "Handles.h"
#include "Log.h"
#include "TesselUI.h"
#include "UIManager.h"

#include <exception>
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

/// @return whether @p text is JSON; @p root then holds it. Nesting deeper than the library takes counts as
///         not JSON.
bool parse(const std::string& text, Json::Value& root)
{
    const Json::CharReaderBuilder builder;
    const std::unique_ptr<Json::CharReader> reader {builder.newCharReader()};
    std::string errors;
    try {
        return reader->parse(text.data(), text.data() + text.size(), &root, &errors);
    } catch (const std::exception&) {
        root = Json::Value();
        return false;
    }
}

} // namespace

std::string CTesselUI::GetJsonData(std::string key)
{
    LOGI("");
    // Only an object has members; a request of another shape is one that names nothing.
    const Json::Value value = m_root.isObject() ? m_root[key] : Json::Value();
    if (value.isNull()) {
        LOGI("Data is empty %s", key.c_str());
        return {};
    }
    return value.isConvertibleTo(Json::stringValue) ? value.asString() : std::string();
}

void CTesselUI::m_OnMethodPopup(keynode_t*, void*)
{
    LOGI("");
    const MallocStr value {vconf_get_str(TESSEL_VCONF)};
    if (!value) {
        LOGE("No value in VCONF");
        return;
    }
    const std::string text = value.get();
    LOGD("Vconf for POPUP TESSEL: [%s]", text.c_str());
    CTesselUI* instance = getInstance();
    if (!instance)
        return;
    const bool parsed = parse(text, instance->m_root);
    LOGI("parsingSuccessful[%s]  root [%s] ", parsed ? "true" : "false", text.c_str());
    if (!parsed)
        return;
    const std::string page = instance->GetJsonData("page");
    for (const PageRow& row : kPages) {
        if (page != row.page)
            continue;
        LOGI("%s", row.matched);
        std::string first = row.first ? instance->GetJsonData(row.first) : std::string();
        std::string second = row.second ? instance->GetJsonData(row.second) : std::string();
        CTesselUI* shown = getInstance();
        if (shown && shown->m_pUIManager && row.call(*shown->m_pUIManager, first, second) != 0)
            LOGI("%s", row.line);
        return;
    }
}

} // namespace TesselUI
