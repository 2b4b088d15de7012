#include "flux/FocusStack.h"

#include "flux/Popup.h"

#include <algorithm>

namespace orbis::flux {

FocusStack& FocusStack::instance()
{
    static FocusStack stack;
    return stack;
}

void FocusStack::push(Evas_Object* popup)
{
    if (top() == popup)
        return;
    m_popups.erase(std::remove(m_popups.begin(), m_popups.end(), popup), m_popups.end());
    if (Evas_Object* below = top())
        elm_object_tree_focus_allow_set(below, EINA_FALSE);
    m_popups.push_back(popup);
    elm_object_tree_focus_allow_set(popup, EINA_TRUE);
    focusPopup(popup);
}

void FocusStack::remove(Evas_Object* popup)
{
    const bool wasTop = top() == popup;
    m_popups.erase(std::remove(m_popups.begin(), m_popups.end(), popup), m_popups.end());
    Evas_Object* below = top();
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
