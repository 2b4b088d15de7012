// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Content.h"

#include "Scripts.h"
#include "Translated.h"
#include "string_util.h"

#include <algorithm>
#include <cstring>

namespace gallery {

namespace {

using TesselUI::translated;

/// More than the program takes of any text.
constexpr int kLongest = 2048;

/// A name in a catalogue's text; @p id has to have a place for it.
std::string withName(const char* id, const std::string& name)
{
    char text[kLongest] = "";
    const std::string pattern = translated(id);
    CStringUtil::CombinateStrings(text, sizeof text, pattern.c_str(), name.c_str(), "", "", "");
    // A text without a place for the name would otherwise be all that is wanted.
    return pattern.find("%1") == std::string::npos ? std::string(text) + " " + name : text;
}

class Composer {
public:
    explicit Composer(const State& state)
        : m_state(state)
        , m_names(state.shownNames)
    {
    }

    Content run()
    {
        compose();
        m_content.focusedLabel = m_state.focusedId ? translated(m_state.focusedId) : "";
        return std::move(m_content);
    }

private:
    void compose()
    {
        switch (m_state.shows) {
        case Shows::GuideWithHint:
        case Shows::Guide:
            addGuide();
            add(Role::Hint, translated("TV_SID_OOBE_CHECK_YOUR_PHONE"));
            m_content.texts.back().isOptional = m_state.shows == Shows::Guide;
            break;
        case Shows::Pin:
            addPin();
            break;
        case Shows::NetworkTest:
        case Shows::SignIn:
            addProgress(m_state.shows == Shows::SignIn);
            break;
        case Shows::AccessPoints:
            addPlain("COM_TV_SID_TESSEL", "TV_SID_TESSEL_CADEC_SETUP_VIA_MOBILE", {"SID_CANCEL"});
            break;
        case Shows::Terms:
            addPlain("COM_TV_SID_TESSEL", "TV_SID_TESSEL_CADEC_SETTING_UP_TV_MOBILE_TERMS_AND_CONDITIONS",
                {"SID_CANCEL"});
            break;
        case Shows::Failure:
            addPlain("COM_SID_INFORMATION", "TV_SID_SETUP_PH_FAIL_SETUP_MANUALLY", {"COM_SID_OK"});
            break;
        case Shows::Confirmation:
            addPlain("SID_CANCEL", "TV_SID_NOT_ABLE_USE_INFO_RECEIVED_PHONE", {"SID_YES", "SID_NO"});
            break;
        case Shows::SettingsScreen:
            addPlain("COM_TV_SID_TESSEL", "TV_SID_TESSEL_CADEC_SETTING_UP_UR_TV_VIA_UR_PH", {"SID_CANCEL"});
            break;
        case Shows::SettingsScreenAsking:
            addPlain("COM_TV_SID_TESSEL", "TV_SID_NOT_ABLE_USE_INFO_RECEIVED_PHONE", {"SID_YES", "SID_NO"});
            break;
        }
    }

    void add(Role role, const std::string& text, bool hasName = false)
    {
        Wanted wanted {role, role == Role::Pin ? withoutBlanks(text) : readable(validUtf8(text.c_str())),
            false, hasName && m_state.isTooLong};
        if (!wanted.text.empty())
            m_content.texts.push_back(std::move(wanted));
    }

    void addPlain(const char* titleId, const char* textId, std::initializer_list<const char*> labelIds)
    {
        add(Role::Title, translated(titleId));
        add(Role::Text, translated(textId));
        for (const char* id : labelIds)
            add(Role::Label, translated(id));
    }

    void addGuide()
    {
        add(Role::Title, translated("TV_SID_TESSEL_CADEC_SETTING_UP_UR_TV_VIA_UR_PH"));
        add(Role::Text, translated("TV_SID_TESSEL_CAN_SET_NETWORK_NORVALE_ACCOUNT_PHONE"));
        add(Role::Text, translated("TV_SID_TESSEL_ONLY_SUPPORT_ZEPHRA"));
        add(Role::TvName, m_names.tv, true);
        add(Role::Label, translated(kWithPhoneId));
        add(Role::Label, translated("TV_SID_TESSEL_CADEC_CONTINNE_WITH_TV_REMOTE"));
        m_content.hasPicture = true;
    }

    void addPin()
    {
        add(Role::Title, translated("SID_PIN"));
        add(Role::Text,
            translated("TV_SID_ENTER_PIN_UR_PH") + "\n"
                + withName("TV_SID_TESSEL_MIX_CONNECTED_DEVICE", m_names.phone),
            true);
        add(Role::Pin, m_names.pin);
        add(Role::Label, translated(kCancelId));
    }

    void addProgress(bool isSignIn)
    {
        add(Role::Title, translated("COM_TV_SID_TESSEL"));
        const char* first = isSignIn ? "TV_SID_TESSEL_MIX_INFORMATION_BELOW_RECEIVED_SIGNING_IN"
                                     : "TV_SID_TESSEL_MIX_INFORMATION_BELOW_RECEIVED_SETTING_UP";
        // Without a phone's name the sign-in has no first line.
        if (!isSignIn || !m_state.names.phone.empty())
            add(Role::Text, withName(first, m_names.phone), true);
        add(Role::Text,
            isSignIn ? withName("TV_SID_MIX_NORVALE_ACCOUNT", m_names.account)
                     : withName("TV_SID_MIX_WIRLESS_NETWORK", m_names.network),
            true);
        add(Role::Label, translated(kCancelId));
        m_content.hasSpinner = true;
    }

    const State& m_state;
    const Names& m_names;
    Content m_content;
};

/// The program takes only so much of a long text.
constexpr size_t kEnough = 60; // bytes

/// @return whether @p drawn is most of what the program takes of @p wanted
bool isBeginning(const std::string& drawn, const std::string& wanted)
{
    return drawn.size() >= std::min(kEnough, wanted.size()) && wanted.compare(0, drawn.size(), drawn) == 0;
}

/// @return whether @p drawn is @p wanted with an ellipsis for what there is no room for
bool isCutOf(const std::string& drawn, const std::string& wanted)
{
    const size_t at = drawn.find(kEllipsis);
    if (at == std::string::npos)
        return false;
    const std::string before = drawn.substr(0, at);
    const std::string after = drawn.substr(at + strlen(kEllipsis));
    const bool isEnough = before.size() + after.size() >= std::min(kEnough, wanted.size() / 2);
    if (!isEnough || wanted.compare(0, before.size(), before) != 0)
        return false;
    // What the program has not taken is missing at the end.
    return after.empty()
        || (after.size() <= wanted.size()
            && wanted.compare(wanted.size() - after.size(), after.size(), after) == 0);
}

bool isThe(const Wanted& wanted, Text& text)
{
    if (wanted.role == Role::Pin)
        return withoutBlanks(text.plain) == wanted.text;
    const std::string drawn = readable(text.plain);
    if (drawn == wanted.text || (wanted.mayEndEarly && isBeginning(drawn, wanted.text)))
        return true;
    const bool isCut = isCutOf(drawn, wanted.text);
    text.isCut |= isCut;
    return isCut;
}

} // namespace

Content contentOf(const State& state)
{
    return Composer(state).run();
}

std::vector<Wanted> assignRoles(const Content& content, Scene& scene)
{
    std::vector<Wanted> missing;
    for (const Wanted& wanted : content.texts) {
        const auto found = std::find_if(scene.texts.begin(), scene.texts.end(),
            [&](Text& text) { return text.role == Role::Unknown && isThe(wanted, text); });
        if (found == scene.texts.end())
            missing.push_back(wanted);
        else
            found->role = wanted.role;
    }
    return missing;
}

} // namespace gallery
