// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "DimBase.h"

#include "Log.h"
#include "Paths.h"
#include "ToolkitObjects.h"

namespace TesselUI {

CDimBase::CDimBase(Evas_Object* parent)
    : m_parent(parent)
{
}

void CDimBase::Show()
{
    LOGI(" CDimBase Show");
    if (!m_parent) {
        LOGE(" Parent is NULL, Can not show dim base");
        return;
    }
    m_layout = elm_layout_add(m_parent);
    if (m_layout) {
        elm_layout_file_set(m_layout, kThemeFile, "dim");
        coverWindow(m_parent, m_layout);
        LOGI(" created Layout");
    } else {
        LOGE(" !!!!!!!!!!!!Layout NULL!!!!!!!!!!!!!");
    }
    LOGI(" CDimBase Exit");
    evas_object_show(m_layout);
    LOGI(" CDimBase Hide End");
}

void CDimBase::Hide()
{
    LOGI(" Hide DIM Base");
    if (m_layout) {
        LOGI(" Delete Evas Base");
        evas_object_del(m_layout);
        m_layout = nullptr;
    }
}

} // namespace TesselUI
