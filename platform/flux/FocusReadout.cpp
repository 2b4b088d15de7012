// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/FocusReadout.h"

#include "app/Words.h"
#include "base/Handles.h"
#include "flux/FocusStack.h"
#include "flux/Narration.h"
#include "flux/PopupButtons.h"
#include "flux/SpokenText.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace orbis::flux {

namespace {

/// How long before a popup goes by itself that is said, seconds.
constexpr int kWarning = 10;

std::vector<std::string> spokenOf(const std::vector<SpokenPart>& parts)
{
    std::vector<std::string> spoken;
    spoken.reserve(parts.size());
    for (const SpokenPart& part : parts)
        spoken.push_back(part.spoken);
    return spoken;
}

PopupRecord* topPopup()
{
    return recordOf<PopupRecord>(FocusStack::instance().top());
}

} // namespace

FocusReadout::FocusReadout(Evas_Object* window)
    : m_window(window)
    , m_readout([this] { readerSwitched(); })
    , m_stillWorking([this] { workGoesOn(); })
{
}

void FocusReadout::somethingChanged()
{
    if (!m_lookJob)
        m_lookJob.reset(ecore_job_add(on_lookJob, this));
}

void FocusReadout::focusLeft()
{
    if (elm_win_focus_get(m_window))
        m_focused = nullptr;
}

void FocusReadout::topPopupChanged()
{
    stop();
    somethingChanged();
}

void FocusReadout::windowGone()
{
    stop();
    if (PopupRecord* popup = topPopup())
        popup->told = {};
}

void FocusReadout::stop()
{
    m_readout.stop();
    m_stillWorking.end();
}

/// The reader may have been turned on since the last look; that makes what is up new to the viewer.
bool FocusReadout::isListenedTo()
{
    const bool isOn = Readout::isOn();
    if (isOn && !m_wasOn) {
        if (PopupRecord* popup = topPopup())
            popup->told = {};
    }
    m_wasOn = isOn;
    return isOn;
}

void FocusReadout::readerSwitched()
{
    if (m_wasOn == Readout::isOn())
        return;
    if (m_wasOn)
        stop();
    m_wasOn = false;
    somethingChanged();
}

/// The window getting the keys is no news: saying the name would interrupt what is being read.
void FocusReadout::look()
{
    PopupRecord* popup = topPopup();
    if (!popup || !evas_object_visible_get(m_window))
        return;
    Evas_Object* focused = elm_object_focused_object_get(m_window);
    const bool hasMoved = focused != m_focused;
    m_focused = focused;
    if (!isListenedTo())
        return;
    const base::MallocStr information {
        hasMoved && focused ? elm_access_info_get(focused, ELM_ACCESS_INFO) : nullptr};
    const std::vector<SpokenPart> parts = partsOf(*popup);
    if (popup->told.isAnnounced)
        tellNews(*popup, parts, hasMoved);
    else
        announce(*popup, parts, information ? information.get() : "");
}

void FocusReadout::announce(
    PopupRecord& popup, const std::vector<SpokenPart>& parts, const std::string& information)
{
    popup.told = {};
    popup.told.isAnnounced = true;
    popup.told.texts = spokenOf(parts);
    if (!information.empty())
        popup.told.further = furtherInformation(information, popup, parts);
    std::vector<std::string> all = popup.told.further.empty() ? popup.told.texts : popup.told.further;
    // The window need not have the keys yet; the button will get them then.
    const Evas_Object* button = slotOf(popup, m_focused) >= 0 ? m_focused : buttonToFocus(popup);
    m_named = button;
    all.push_back(nameOfButton(button));
    m_readout.say(sentences(all));
    heard(popup);
}

/// Of texts that come up while nothing else happens, none is more urgent than what is being said.
void FocusReadout::tellNews(PopupRecord& popup, const std::vector<SpokenPart>& parts, bool hasMoved)
{
    std::vector<std::string> texts = spokenOf(parts);
    std::vector<std::string> news;
    const auto& told = popup.told.texts;
    std::copy_if(texts.begin(), texts.end(), std::back_inserter(news),
        [&](const std::string& text) { return std::find(told.begin(), told.end(), text) == told.end(); });
    popup.told.texts = std::move(texts);
    if (!news.empty())
        popup.told.further.clear(); // it was of what was there before
    const bool isOther = hasMoved && m_focused && m_focused != m_named;
    if (isOther) {
        m_named = m_focused;
        news.push_back(nameOfButton(m_focused));
    }
    const std::string line = sentences(news);
    if (line.empty())
        return;
    if (isOther)
        m_readout.say(line);
    else
        m_readout.add(line);
    heard(popup);
}

void FocusReadout::upOrDown()
{
    m_beforeKey = elm_object_focused_object_get(m_window);
    if (!m_keyJob)
        m_keyJob.reset(ecore_job_add(on_keyJob, this));
}

void FocusReadout::repeat()
{
    PopupRecord* popup = topPopup();
    const Evas_Object* focused = elm_object_focused_object_get(m_window);
    if (!popup || focused != m_beforeKey || !isListenedTo() || !popup->told.isAnnounced)
        return;
    std::vector<SpokenPart> parts = partsOf(*popup);
    std::stable_partition(parts.begin(), parts.end(), [](const SpokenPart& part) { return part.isCode; });
    std::vector<std::string> all = spokenOf(parts);
    if (!popup->told.further.empty()) {
        all.resize(std::count_if(parts.begin(), parts.end(), [](const auto& part) { return part.isCode; }));
        all.insert(all.end(), popup->told.further.begin(), popup->told.further.end());
    }
    all.push_back(nameOfButton(focused));
    m_readout.say(sentences(all));
    heard(*popup);
}

void FocusReadout::givesUp(Evas_Object* object, int left)
{
    auto* popup = recordOf<PopupRecord>(object);
    if (!popup || left != kWarning || !isListenedTo())
        return;
    look(); // it may just have come up
    if (!popup->told.isAnnounced || std::exchange(popup->told.isGivingUp, true))
        return;
    m_readout.add(app::wordsOf("Closes in %1 seconds.", {left}));
    heard(*popup);
}

void FocusReadout::workGoesOn()
{
    const PopupRecord* popup = topPopup();
    if (!popup || !evas_object_visible_get(m_window) || !isListenedTo())
        return;
    m_readout.add(app::wordsOf("Still working."));
    heard(*popup);
}

void FocusReadout::heard(const PopupRecord& popup)
{
    if (hasProgress(popup))
        m_stillWorking.heard();
    else
        m_stillWorking.end();
}

void FocusReadout::on_lookJob(void* data)
{
    auto* self = static_cast<FocusReadout*>(data);
    static_cast<void>(self->m_lookJob.release()); // it is over with this call
    self->look();
}

void FocusReadout::on_keyJob(void* data)
{
    auto* self = static_cast<FocusReadout*>(data);
    static_cast<void>(self->m_keyJob.release());
    self->repeat();
}

} // namespace orbis::flux
