#include "flux/FocusStack.h"

#include "flux/Manager.h"
#include "flux/Popup.h"
#include "flux/Theme.h"

#include <algorithm>

namespace orbis::flux {

FocusStack& FocusStack::instance()
{
    // Never destroyed: popups may go after the static objects.
    static auto& s_stack = *new FocusStack;
    return s_stack;
}

namespace {

/// What was pressed up to now was meant for the popup that was on top.
void tellOfChange(const Evas_Object* popup)
{
    if (Manager* manager = Manager::of(elm_object_top_widget_get(popup)))
        manager->pictureChanges();
}

} // namespace

void FocusStack::push(Evas_Object* popup)
{
    if (top() == popup)
        return;
    m_popups.erase(std::remove(m_popups.begin(), m_popups.end(), popup), m_popups.end());
    Evas_Object* below = top();
    m_popups.push_back(popup);
    if (below)
        elm_object_tree_focus_allow_set(below, EINA_FALSE);
    elm_object_tree_focus_allow_set(popup, EINA_TRUE);
    updateDims();
    Manager::popupsChanged();
    tellOfChange(popup);
    focusPopup(popup);
}

void FocusStack::updateDims()
{
    const char* whole = highContrast() ? "flux,dim,strong" : "flux,dim,full";
    for (Evas_Object* popup : m_popups) {
        const Manager* manager = Manager::of(elm_object_top_widget_get(popup));
        const char* signal = whole;
        if (popup != m_popups.front())
            signal = "flux,dim,veil";
        else if (manager && manager->isDimmed())
            signal = "flux,dim,clear";
        elm_object_signal_emit(popup, signal, "");
    }
}

void FocusStack::remove(Evas_Object* popup)
{
    const bool wasTop = !empty() && top() == popup;
    m_popups.erase(std::remove(m_popups.begin(), m_popups.end(), popup), m_popups.end());
    updateDims();
    if (wasTop)
        tellOfChange(popup);
    Evas_Object* below = top();
    if (wasTop)
        Manager::popupsChanged();
    if (!wasTop || !below)
        return;
    elm_object_tree_focus_allow_set(below, EINA_TRUE);
    focusPopup(below);
}

Evas_Object* FocusStack::top() const
{
    return m_popups.empty() ? nullptr : m_popups.back();
}

} // namespace orbis::flux
