// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Dimming.h"

#include "flux/Theme.h"

namespace orbis::flux {

Dimming::Dimming(Evas_Object* window)
    : m_window(window)
{
    evas_object_event_callback_add(m_window, EVAS_CALLBACK_RESIZE, on_windowResized, this);
}

Dimming::~Dimming()
{
    evas_object_event_callback_del_full(m_window, EVAS_CALLBACK_RESIZE, on_windowResized, this);
}

void Dimming::setWanted(bool wanted)
{
    m_isWanted = wanted;
    update();
}

void Dimming::setLowered(bool lowered)
{
    m_isLowered = lowered;
    update();
}

void Dimming::update()
{
    if (!m_isWanted || m_isLowered) {
        evas_object_hide(m_layer.get());
        return;
    }
    if (!m_layer) {
        m_layer.reset(addThemedLayout(m_window, "dim", "window"));
        fit();
    }
    evas_object_lower(m_layer.get());
    evas_object_show(m_layer.get());
}

void Dimming::fit()
{
    int width = 0;
    int height = 0;
    evas_object_geometry_get(m_window, nullptr, nullptr, &width, &height);
    evas_object_geometry_set(m_layer.get(), 0, 0, width, height);
}

void Dimming::on_windowResized(void* data, Evas*, Evas_Object*, void*)
{
    static_cast<Dimming*>(data)->fit();
}

} // namespace orbis::flux
