#include "States.h"

namespace gallery {

namespace {

using TesselUI::UIManager;

void showPin(UIManager& manager, Names names)
{
    manager.showPinPopup(names.phone, names.pin);
}

void showNetworkTest(UIManager& manager, Names names)
{
    manager.showNetworkTestPopup(names.phone, names.network);
}

void showSignIn(UIManager& manager, Names names)
{
    manager.showSSOLoginPopup(names.phone, names.account);
}

void showGuide(UIManager& manager, Names names)
{
    manager.showGuidePopup(names.pin);
}

void showWifiFailed(UIManager& manager, Names)
{
    std::string step = "wifi";
    manager.showFailedPopup(step);
}

void showSignInFailed(UIManager& manager, Names)
{
    std::string step = "sso";
    manager.showFailedPopup(step);
}

void showTerms(UIManager& manager, Names)
{
    manager.showTncPopup();
}

void showApList(UIManager& manager, Names)
{
    manager.showApListPopup();
}

void showSettingsScreen(UIManager& manager, Names)
{
    manager.showAfterPairingPopup();
}

constexpr const char* kCancel = "SID_CANCEL";
constexpr const char* kYes = "SID_YES";
constexpr const char* kNo = "SID_NO";
constexpr const char* kOk = "COM_SID_OK";
constexpr const char* kWithPhone = "TV_SID_TESSEL_SETUP_IVA_PHONE";
constexpr const char* kWithRemote = "TV_SID_TESSEL_CADEC_CONTINNE_WITH_TV_REMOTE";

struct AwkwardName {
    const char* name; ///< of the state
    std::string text;
};

std::string repeated(const std::string& text, int times)
{
    std::string result;
    for (int i = 0; i < times; ++i)
        result += text;
    return result;
}

std::vector<AwkwardName> awkwardNames()
{
    return {
        {"emoji", "📱 Zoë 👩‍👩‍👧‍👦🇪🇺 ❤️"},
        {"marks", "Z" + repeated("\u0335\u0316\u030d\u0341", 12) + "algo" + repeated("\u0327\u0303", 10)},
        {"long", repeated("A long name ", 22).substr(0, 255)},
        {"no-blank", repeated("Verylongname", 22).substr(0, 255)},
        {"wide", repeated("客厅的大电视", 14)},
        {"blanks", "       "},
        {"empty", ""},
        {"arabic", "هاتف أحمد (2)"},
        {"override", "\u202eenohp s'annA\u202c"},
        {"isolate", "\u2067\u2067\u2066Anna"},
        {"less-than", "Tom <3 & Ann"},
        {"markup", "<b>Bold</b><br>two<br>three<br>four<br>five<align=left>left"},
        {"huge", "<font_size=300>HUGE</font_size>"},
        {"tag-in-tag", "<b <font_size=300>A"},
        {"open-quote", "<b ' linesize=2000>A"},
        {"open-tag", "<color=#000000><font_size=8>unclosed"},
        {"entities", "&amp;&lt;x&gt;&nbsp;&#x1F4F1; 100% %1 %s"},
        {"controls",
            "a\tb\nc\x01\x7f"
            "d"},
        {"broken-bytes", "\xff\xfe\xc3(\xf0\x9f"},
    };
}

void addAwkward(std::vector<State>& list)
{
    constexpr std::pair<const char*, void (*)(UIManager&, Names)> kPopups[] = {
        {"pin", showPin}, {"network-test", showNetworkTest}, {"sign-in", showSignIn}};
    for (const AwkwardName& name : awkwardNames()) {
        for (const auto& [popup, show] : kPopups) {
            State state {
                std::string("names-") + name.name + "-" + popup, Step::Show, show, kCancel, {}, true};
            state.hasMarkup = name.text.find('<') != std::string::npos;
            state.names.phone = state.names.network = state.names.account = name.text;
            list.push_back(state);
        }
    }
}

} // namespace

std::vector<State> states(bool awkwardNames)
{
    std::vector<State> list {
        {"guide", Step::Show, showGuide, kWithPhone},
        {"guide-hint", Step::Wait, nullptr, kWithPhone},
        {"guide-remote", Step::Next, nullptr, kWithRemote},
        {"access-points", Step::Show, showApList, kCancel},
        {"pin", Step::Show, showPin, kCancel},
        {"network-test", Step::Show, showNetworkTest, kCancel},
        {"network-test-confirm-yes", Step::Press, nullptr, kYes},
        {"network-test-confirm-no", Step::Next, nullptr, kNo},
        {"sign-in", Step::Show, showSignIn, kCancel},
        {"sign-in-confirm-yes", Step::Press, nullptr, kYes},
        {"sign-in-confirm-no", Step::Next, nullptr, kNo},
        {"terms", Step::Show, showTerms, kCancel},
        {"network-failed", Step::Show, showWifiFailed, kOk},
        {"sign-in-failed", Step::Show, showSignInFailed, kOk},
        {"settings-screen", Step::Show, showSettingsScreen, kCancel},
        {"settings-screen-confirm-no", Step::Press, nullptr, kNo},
        {"settings-screen-confirm-yes", Step::Previous, nullptr, kYes},
    };
    if (awkwardNames)
        addAwkward(list);
    return list;
}

} // namespace gallery
