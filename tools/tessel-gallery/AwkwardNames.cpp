// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Names and PINs that break other programs.
#include "States.h"

namespace gallery {

namespace {

struct AwkwardName {
    const char* name; ///< of the state
    std::string text;
    std::string shown; ///< what a viewer is to read of it
    bool isTooLong = false;
    bool hasOwnDirection = false;
    std::string shownAsNetwork {}; ///< where that is different: the program takes a network's name as it is
};

std::string repeated(const std::string& text, int times)
{
    std::string result;
    for (int i = 0; i < times; ++i)
        result += text;
    return result;
}

AwkwardName plain(const char* name, const std::string& text, bool isTooLong = false)
{
    return {name, text, text, isTooLong};
}

std::vector<AwkwardName> oddCharacters()
{
    return {
        plain("emoji", "📱 Zoë 👩‍👩‍👧‍👦🇪🇺 ❤️"),
        {"marks", "Z" + repeated("\u0335\u0316\u030d\u0341", 8) + "algo" + repeated("\u0327\u0303", 8),
            "Z\u0335\u0316\u030dalgo\u0327\u0303\u0327"},
        plain("long", repeated("A long name ", 22).substr(0, 255), true),
        plain("no-blank", repeated("Verylongname", 22).substr(0, 255), true),
        plain("wide", repeated("客厅的大电视", 14), true),
        plain("blanks", "       "),
        plain("empty", ""),
        plain("less-than", "Tom <3 & Ann"),
        {"controls",
            "a\tb\nc\x01\x7f"
            "d",
            "a b c\x01\x7f"
            "d"},
        plain("broken-bytes", "\xff\xfe\xc3(\xf0\x9f"),
    };
}

std::vector<AwkwardName> oddDirections()
{
    return {
        plain("arabic", "هاتف أحمد (2)"),
        plain("hebrew", "הטלפון של דנה 2"),
        {"override", "\u202eenohp s'annA\u202c", "enohp s'annA", false, true},
        {"open-override", "\u202eAnna Lake", "Anna Lake", false, true},
        {"open-embedding", "\u202bAnna 2", "Anna 2", false, true},
        plain("isolate", "\u2067\u2067\u2066Anna"),
        plain("open-isolate", "\u2067Anna 2"),
        plain("closed-isolates", "Anna\u2069\u2069 2"),
    };
}

std::vector<AwkwardName> oddMarkup()
{
    return {
        {"markup", "<b>Bold</b><br>two<br>three<br>four<br>five<align=left>left",
            "Bold two three four fiveleft"},
        {"huge", "<font_size=300>HUGE</font_size>", "HUGE"},
        {"tag-in-tag", "<b <font_size=300>A", "<b A"},
        {"open-quote", "<b ' linesize=2000>A", "A"},
        {"open-tag", "<color=#000000><font_size=8>unclosed", "unclosed"},
        {"dark-colour", "<color=#0E1520>Anna</color> 2", "Anna 2"},
        {"grey-colour", "Anna <font color=#6A7078>Lake", "Anna Lake"},
        {"clear-colour", "<color=#FFFFFF10>Anna", "Anna"},
        {"backing", "<backing=on backing_color=#EBEEF2>Anna</backing> 2", "Anna 2"},
        {"outline", "<style=outline outline_color=#FFFFFF>Anna", "Anna"},
        {"entities", "&amp;&lt;x&gt;&nbsp;&#x1F4F1; 100% %1 %s", "&<x> 📱 100% %1 %s", false, false,
            "&amp;&lt;x&gt;&nbsp;&#x1F4F1; 100% %1 %s"},
    };
}

struct OddPin {
    const char* name;
    const char* text;
};

constexpr OddPin kPins[] = {
    {"pin-none", ""},
    {"pin-three", "042"},
    {"pin-eight", "04271953"},
    {"pin-letters", "4F7K2W"},
    {"pin-blanks", "04 27 19"},
};

struct Popup {
    const char* name;
    Shows shows;
    void (*show)(TesselUI::UIManager& manager, Names names);
    const char* focusedId;
};

constexpr Popup kPopups[] = {
    {"pin", Shows::Pin, showPin, kCancelId},
    {"network-test", Shows::NetworkTest, showNetworkTest, kCancelId},
    {"sign-in", Shows::SignIn, showSignIn, kCancelId},
    {"guide", Shows::Guide, showGuide, kWithPhoneId},
};

} // namespace

void addAwkwardStates(std::vector<State>& list)
{
    for (const auto& names : {oddCharacters(), oddDirections(), oddMarkup()}) {
        for (const AwkwardName& name : names) {
            for (const Popup& popup : kPopups) {
                State state {std::string("names-") + name.name + "-" + popup.name, popup.shows, Step::Show,
                    popup.show, popup.focusedId};
                state.hasAwkwardNames = true;
                state.isTooLong = name.isTooLong;
                state.hasOwnDirection = name.hasOwnDirection;
                Names& given = state.names;
                given.phone = given.network = given.account = given.tv = name.text;
                Names& shown = state.shownNames;
                shown.phone = shown.account = shown.tv = name.shown;
                shown.network = name.shownAsNetwork.empty() ? name.shown : name.shownAsNetwork;
                list.push_back(state);
            }
        }
    }
    for (const OddPin& pin : kPins) {
        State state {pin.name, Shows::Pin, Step::Show, showPin, kCancelId};
        state.names.pin = state.shownNames.pin = pin.text;
        list.push_back(state);
    }
}

} // namespace gallery
