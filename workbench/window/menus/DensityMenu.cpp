// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/menus/DensityMenu.h"

#include "workbench/window/density/DensityPane.h"
#include "workbench/window/menus/MenuEntries.h"

#include <QMainWindow>

DensityMenu::DensityMenu(QMainWindow& window, DensityPane& eye, DensityPane& iq, QMenu& masks)
    : QMenu(tr("De&nsity"), &window)
{
    QAction* density = menus::add(window, *this, tr("&Density or diagram"), Qt::Key_D);
    connect(density, &QAction::triggered, this, &DensityMenu::switchWanted);
    addAction(&eye.switching());
    addAction(&iq.switching());
    addSeparator();
    m_cursors = menus::add(window, *this, tr("&Cursors"), Qt::Key_C);
    m_cursors->setCheckable(true);
    addMenu(&masks);
    m_clear = menus::add(window, *this, tr("&Start counting anew"), Qt::Key_Delete);
    connect(m_clear, &QAction::triggered, this, &DensityMenu::restartWanted);
    addSeparator();
    m_next = menus::add(window, *this, tr("&Next that passed there"), QKeySequence::FindNext);
    m_previous =
        menus::add(window, *this, tr("&Previous that passed there"), QKeySequence::FindPrevious);
}

void DensityMenu::refresh(bool isOn, bool hasWay)
{
    m_clear->setEnabled(isOn);
    m_next->setEnabled(hasWay);
    m_previous->setEnabled(hasWay);
}
