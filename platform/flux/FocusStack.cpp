// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/FocusStack.h"

#include "flux/Look.h"
#include "flux/WindowHost.h"

#include <algorithm>

namespace orbis::flux {

namespace {

void tellOfChange(const Evas_Object* popup)
{
    if (WindowHost* host = WindowHost::present())
        host->topPopupChanged(elm_object_top_widget_get(popup));
}

} // namespace

FocusStack& FocusStack::instance()
{
    // Never destroyed: popups may go after the static objects.
    static auto& s_stack = *new FocusStack;
    return s_stack;
}

void FocusStack::push(Evas_Object* popup, GiveFocus giveFocus)
{
    if (top() == popup)
        return;
    take(popup);
    Evas_Object* below = top();
    m_popups.push_back({popup, giveFocus});
    if (below)
        elm_object_tree_focus_allow_set(below, EINA_FALSE);
    elm_object_tree_focus_allow_set(popup, EINA_TRUE);
    updateDims();
    tellOfChange(popup);
    giveFocus(popup);
}

void FocusStack::updateDims()
{
    const char* whole = highContrast() ? "flux,dim,strong" : "flux,dim,full";
    for (const Entry& entry : m_popups) {
        const WindowHost* host = WindowHost::of(elm_object_top_widget_get(entry.popup));
        const char* signal = whole;
        if (entry.popup != m_popups.front().popup)
            signal = "flux,dim,veil";
        else if (host && host->isDimmed())
            signal = "flux,dim,clear";
        elm_object_signal_emit(entry.popup, signal, "");
    }
}

void FocusStack::remove(Evas_Object* popup)
{
    const bool wasTop = !empty() && top() == popup;
    take(popup);
    updateDims();
    if (!wasTop)
        return;
    tellOfChange(popup);
    if (empty())
        return;
    const Entry below = m_popups.back();
    elm_object_tree_focus_allow_set(below.popup, EINA_TRUE);
    below.giveFocus(below.popup);
}

/// Takes @p popup out, wherever it is.
void FocusStack::take(const Evas_Object* popup)
{
    m_popups.erase(std::remove_if(m_popups.begin(), m_popups.end(),
                       [popup](const Entry& entry) { return entry.popup == popup; }),
        m_popups.end());
}

Evas_Object* FocusStack::top() const
{
    return m_popups.empty() ? nullptr : m_popups.back().popup;
}

} // namespace orbis::flux
