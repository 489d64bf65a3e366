// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// The colours on their page of the properties dialog.
#include "platform/gui/ColorPage.h"
#include "platform/gui/ColorSet.h"

QWidget* ColorSet::GetPropertyPage(QWidget* parent, const char* name)
{
    m_pPage = new ColorPage(parent, name);
    return m_pPage;
}

void ColorSet::slotAcceptPropertyChanges()
{
    if (!m_pPage)
        return;
    for (const Scheme scheme : {Scheme::Dark, Scheme::Light}) {
        std::map<ECOLOR, QColor> colors = Colors(scheme);
        for (const auto& [number, color] : m_pPage->TakeEdits(scheme))
            colors[number] = color;
        SetColors(scheme, colors);
    }
    SetScheme(m_pPage->ShownScheme());
    Save();
}
